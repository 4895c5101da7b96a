// The core of the RTF engine: walks the document once, keeps the state of the open groups and writes the text. Its
// member functions are in three files: Interpreter.cpp (the walk and control words), Groups.cpp (groups and
// destinations) and Paragraphs.cpp (the text of paragraphs and the marks that end them).
#pragma once

#include "engines/Extraction.h"
#include "engines/rtf/CharacterDecoder.h"
#include "engines/rtf/Fields.h"
#include "engines/rtf/Fonts.h"
#include "engines/rtf/Header.h"
#include "engines/rtf/Lists.h"
#include "engines/rtf/Output.h"
#include "engines/rtf/Recovery.h"
#include "engines/rtf/Scanner.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quillow::rtf {

inline constexpr std::size_t kMaxDepth = 4096; ///< groups nested deeper share one state; their text is still read
inline constexpr std::size_t kMaxFrames = 64;  ///< nested notes, boxes and fields; deeper ones are plain groups
inline constexpr std::size_t kLabelBytesPerInputByte = 4; ///< computed list labels beyond this are not written

class Interpreter {
public:
    Interpreter(const Source& source, const Options& options);

    /// Walks the whole document and any documents appended to it.
    void run();

    /// Call once, after run(). A non-empty text ends with exactly one LF.
    [[nodiscard]] std::string takeText();
    [[nodiscard]] const LossAccount& loss() const { return loss_; }
    /// True if a part is missing: the file ends inside the text or inside a group, or a group lacks its closing brace.
    [[nodiscard]] bool isTruncated() const { return truncated_; }
    /// Tokens read and bytes skipped so far: a measure of work that does not depend on the machine.
    [[nodiscard]] std::uint64_t work() const { return work_ + decoder_.work() + recovery_.work(); }

private:
    /// What happens at the closing brace of a group.
    enum class Closing : std::uint8_t {
        nothing,
        listText,
        note,
        header,
        footer,
        textBox,
        shape,
        field,
        fieldInstruction,
        fieldResult
    };

    enum Flag : std::uint8_t { kHidden = 1, kDeleted = 2, kSuppressed = kHidden | kDeleted, kSymbolFont = 4 };
    enum Pending : std::uint8_t { kSurrogate = 1, kLabel = 2 };

    struct GroupState {
        const Charset* charset = nullptr;
        std::int32_t listOverride = 0;
        std::uint16_t unicodeSkip = 1;
        std::uint8_t listLevel = 0;
        std::uint8_t flags = 0;
        Closing closing = Closing::nothing;
        bool hasOldNumbering = false;
    };

    /// The paragraph being written. Each diverted text has its own.
    struct Paragraph {
        std::size_t start = 0;        ///< offset of its text, after its list text; an empty paragraph ends here
        std::size_t cellEnd = 0;      ///< offset of the end of the row's latest cell; 0 outside a row
        std::size_t listText = 0;     ///< offset of its list text, which ends at `start`
        bool labelled = false;        ///< the file has its label
        bool keepsOldNumbers = false; ///< it has old-style numbering, so the next paragraph that has it counts on
        std::string boxes;            ///< text boxes anchored in it, each ending with LF
    };

    /// An open group that needs more than a GroupState. Diverted text is written after the text that it interrupts
    /// and is cut off when the group closes.
    struct Frame {
        Closing kind = Closing::nothing;
        std::size_t mark = 0;
        std::uint8_t pending = 0;
        char32_t highSurrogate = 0; ///< the interrupted text's, if it is pending
        Paragraph paragraph;
        std::uint32_t noteNumber = 0;
        bool hasText = false;     ///< shape: its text box has been read
        bool partsText = false;   ///< shape: there is no text beside it (\shpwr1)
        bool skipsResult = false; ///< field: its text came from the instruction
        std::string target;       ///< field: the target of its link
    };

    // Interpreter.cpp
    void takeOther(char c);
    void handleWord(ControlWord word);
    void takeSymbol();
    void skipBinary(std::int32_t length);
    void setFlag(Flag flag, bool on);
    void setCharset(const Charset* charset);
    void finishAtEnd();
    [[nodiscard]] bool endsAtBoundary() const;

    // Groups.cpp
    void openGroup();
    void leaveGroup();
    void endDocument();
    void startDocument();
    void skipRestOfGroup();
    void leaveData(const char* start, Scanner::Completeness completeness);
    void readFontTable();
    [[nodiscard]] bool mayHoldPairs(std::string_view table);
    Scanner::Completeness skipTable();
    void leaveTable(const char* start, Scanner::Completeness completeness);
    void leaveSwallowed(std::string_view swallowed, Scanner::Completeness completeness, std::size_t body);
    [[nodiscard]] bool lacksBrace(Scanner::Completeness completeness) const;
    void openDestination(Destination destination);
    void finishDestination(Closing closing);
    [[nodiscard]] bool pushFrame(Closing kind);
    void divert(Frame& frame);
    [[nodiscard]] std::string endDiversion(Frame& frame);
    [[nodiscard]] Frame* innermost(Closing kind);
    void partButtonFromField();
    void finishInstruction(Frame& frame);
    void skipAnsiHalf();
    void skipAttachment();
    void skipStrayEntry();

    // Paragraphs.cpp
    void takePlainText();
    void takeBytes();
    void takeUnicode(std::int32_t number);
    [[nodiscard]] bool prepareText();
    /// Call at the end of a paragraph: writes what is pending.
    void settle() {
        if (pending_ != 0) settlePending();
    }
    void settlePending();
    void writeCodePoint(char32_t c);
    void writeSurrogate(char32_t c);
    void writeReplacement();
    void writeTab();
    void writeLabel();
    /// Makes a label pending if the paragraph is in a list and has no text yet.
    void armLabel() {
        if (state_.listOverride == 0 && !state_.hasOldNumbering) return;
        if (output_.size() == paragraph_.start) pending_ |= kLabel;
    }
    void startParagraph();
    void endParagraph(char mark = '\n');
    void endLine();
    void endCell();
    void endRow();

    const Options& options_;
    Scanner scanner_;
    bool isFragment_;
    CharsetPool pool_;
    FontTable fonts_;
    Lists lists_;
    CharacterDecoder decoder_;
    Recovery recovery_;
    Output output_;
    LossAccount loss_;

    GroupState state_;
    std::vector<GroupState> stack_;
    std::size_t overflow_ = 0; ///< open groups beyond kMaxDepth
    std::vector<Frame> frames_;
    Paragraph paragraph_;
    std::uint8_t pending_ = 0;
    char32_t highSurrogate_ = 0;
    OldNumbering oldNumbering_;
    bool countsOldNumbers_ = false;
    char cellMark_;

    std::string notes_;
    std::string footers_;
    std::uint32_t noteCount_ = 0;
    std::size_t labelBudget_;

    bool truncated_ = false;
    std::uint64_t work_ = 0;
};

} // namespace quillow::rtf
