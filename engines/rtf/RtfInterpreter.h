// The reader proper: walks the document once, keeps the state of the open groups and writes the text. Its member functions
// stand in three files: RtfInterpreter.cpp (the walk, control words, paragraphs), RtfGroups.cpp (groups and destinations)
// and RtfCharacters.cpp (bytes, code points, list labels).
#pragma once

#include "engines/Extract.h"
#include "engines/rtf/RtfFields.h"
#include "engines/rtf/RtfFonts.h"
#include "engines/rtf/RtfHeader.h"
#include "engines/rtf/RtfLists.h"
#include "engines/rtf/RtfOutput.h"
#include "engines/rtf/RtfScanner.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quillow::rtf {

inline constexpr std::size_t kMaxDepth = 4096; ///< groups nested deeper share one state; their text is still taken
inline constexpr std::size_t kMaxFrames = 64; ///< notes, boxes, fields within one another; deeper ones are plain groups
inline constexpr int kMaxRecoveries = 8;      ///< unclosed groups of data out of which the body is found again
inline constexpr std::size_t kLabelBytesPerInputByte = 4; ///< computed list labels stop beyond this

class Interpreter {
public:
    Interpreter(const Source& source, const Options& options);

    /// Walks the whole document and its appended ones.
    void run();

    /// Call once, after run(). A non-empty text ends with exactly one LF.
    [[nodiscard]] std::string takeText();
    [[nodiscard]] const LossAccount& loss() const { return loss_; }
    /// True when the file ends inside the text or inside a group that it needs.
    [[nodiscard]] bool isTruncated() const { return truncated_; }
    /// Tokens taken and bytes passed over so far: a measure of work that does not depend on the machine.
    [[nodiscard]] std::uint64_t work() const { return work_; }

private:
    /// What the closing brace of a group still has to do.
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
        std::size_t start = 0;    ///< while the output ends here, nothing of the paragraph but its list text is written
        std::size_t cellEnd = 0;  ///< where the row's latest cell ended, 0 outside a row
        std::size_t listText = 0; ///< where its list text begins, which ends at its start
        bool labelled = false;    ///< its label stands in the file
        bool keepsOldNumbers = false; ///< it has old-style numbering, so the next one that has it counts on
        std::string boxes;            ///< text boxes anchored in it, each ending with LF
    };

    /// An open group that has more to remember than its state. Diverted text is written behind the text that it interrupts
    /// and cut off when the group closes.
    struct Frame {
        Closing kind = Closing::nothing;
        std::size_t mark = 0;
        std::uint8_t pending = 0;
        Paragraph paragraph;
        std::uint32_t noteNumber = 0;
        bool hasText = false;     ///< of a shape: its text box has been read
        bool partsText = false;   ///< of a shape: no text stands beside it
        bool skipsResult = false; ///< of a field: its text came from the instruction
        std::string target;       ///< of a field: where it links to
    };

    // RtfInterpreter.cpp
    void takeOther(char c);
    void handleWord(ControlWord word);
    void takeSymbol();
    void skipBinary(std::int32_t length);
    void setFlag(Flag flag, bool on);
    void setCharset(const Charset* charset);
    void endParagraph(char mark = '\n');
    void endLine();
    void endCell();
    void endRow();
    void startParagraph();
    void writeTab();
    void finishAtEnd();
    [[nodiscard]] bool endsAtBoundary() const;

    // RtfGroups.cpp
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
    [[nodiscard]] std::size_t countUnmatchedCloses() const;

    // RtfCharacters.cpp
    void takePlainText();
    void takeBytes();
    void takeUsualHex();
    void takeUsualUnicode();
    void takeUnusualByte(std::uint8_t byte, bool isRaw, const char* next);
    void takePair(const text::CodePage& pairs, std::uint8_t lead, bool isRaw, const char* next);
    void takeUtf8Sequence(std::uint8_t lead, const char* next);
    void takeRawUtf8();
    void takeUnicode(std::int32_t number);
    void skipFallback();
    [[nodiscard]] bool prepareText();
    /// Call where a paragraph ends.
    void settle() {
        if (pending_ != 0) settlePending();
    }
    void settlePending();
    void writeCodePoint(char32_t c);
    void writeSurrogate(char32_t c);
    void writeReplacement();
    void writeLabel();
    /// A label is due where a paragraph in a list has no text yet.
    void armLabel() {
        if (state_.listOverride == 0 && !state_.hasOldNumbering) return;
        if (output_.size() == paragraph_.start) pending_ |= kLabel;
    }
    [[nodiscard]] bool rawIsUtf8();
    [[nodiscard]] const text::CodePage* rawPairs();

    const Options& options_;
    Scanner scanner_;
    bool isFragment_;
    const char* lastBrace_; ///< behind the last closing brace of the file; of a fragment it closes no document
    CharsetPool pool_;
    FontTable fonts_;
    Lists lists_;
    Output output_;
    LossAccount loss_;

    GroupState state_;
    std::vector<GroupState> stack_;
    std::size_t overflow_ = 0; ///< open groups over kMaxDepth
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

    enum class Answer : std::uint8_t { unknown, no, yes };
    Answer rawIsUtf8_ = Answer::unknown;
    bool straysCounted_ = false;
    std::size_t strays_ = 0;
    int recoveries_ = 0;
    int pairPasses_ = 0;
    bool truncated_ = false;
    std::uint64_t work_ = 0;
};

} // namespace quillow::rtf
