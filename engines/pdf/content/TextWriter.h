// Writes what the text operators show into the runs of a page (ISO 32000-2, 9.4).
//
// A run goes on as long as font, size, direction and marks stay and each string begins where a reader's eye expects it:
// on the line, and at most kForwardJump ahead of the end of the string before or kBackwardJump behind it. So blanks,
// kerning and justified words are inside a run; a column, a tab, an overprinted word begin a new one. An ActualText has
// runs of its own.
#pragma once

#include "engines/pdf/content/MarkedContent.h"
#include "engines/pdf/content/Operands.h"
#include "engines/pdf/content/TextFrame.h"
#include "text/ByteBuffer.h"

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

namespace quillow::pdf {

/// Ems by which a string may begin off the end of the one before, along the line and beside it.
inline constexpr double kForwardJump = 1;
inline constexpr double kBackwardJump = 0.2;
inline constexpr double kSideJump = 0.02;
/// Glyphs of a page. Pages of the densest real tables have a hundred thousand.
inline constexpr std::size_t kMaximumGlyphs = 1'000'000;
/// Characters of a page: an ActualText may be shown again and again.
inline constexpr std::size_t kMaximumCharacters = 4'000'000;

/// Whether glyphs that the content clips away are left out.
enum class Clipping : bool { off, on };

class TextWriter {
public:
    /// `page` is empty but for its crop box.
    void beginPage(Page& page);
    /// Ends the run that is being written. Must be called after the last one.
    void endRun();

    /// Flags for everything that is shown from now on, beside those of the marks, and whether it is clipped.
    void setFlags(std::uint8_t flags, Clipping clipping = Clipping::on);

    /// BT, Tm and Td. Positions are in text space.
    void beginObject() { setMatrix({}); }
    void setMatrix(const Matrix& matrix);
    void moveLine(double x, double y);

    /// Must be called after a change of the transformation matrix, of the text state but spacing and leading, and of
    /// the marks.
    void stateChanged() { frameIsCurrent_ = false; }

    /// Shows the strings and numbers of one Tj or TJ.
    void show(const GraphicsState& state, MarkedContent& marks, std::span<const Operand> items);

    /// The place in the text object, for a form that interrupts it.
    struct Place {
        Matrix line;
        Vector moved;
    };
    [[nodiscard]] Place place() const { return {line_, moved_}; }
    void setPlace(const Place& place);

    /// Whether something was left out for kMaximumGlyphs or kMaximumCharacters.
    [[nodiscard]] bool isFull() const { return isFull_; }

private:
    [[nodiscard]] bool beginShow(const GraphicsState& state, MarkedContent& marks);
    void endShow();
    template <bool isVertical, Font::Codes codes>
    void showItems(std::span<const Operand> items);
    template <bool isVertical, Font::Codes codes>
    void showString(std::string_view bytes);
    void updateFrame();
    [[nodiscard]] bool isOnOpenLine(Vector start) const;
    [[nodiscard]] bool goesOn() const;
    [[nodiscard]] bool hasRoom(std::size_t codes);
    void openRun();
    void flush();
    [[nodiscard]] std::string_view decoded(const Operand& string);
    void countPage();
    void addCharacters(std::u32string_view text);

    /// Where the next glyph is written. What each glyph changes is in it, so that it can be in registers.
    struct Pen {
        double along = 0;
        double stringEnd = 0;
        std::size_t glyph = 0; ///< its place in the batch
        std::size_t character = 0;
        std::size_t limit = 0; ///< up to which glyphs may be added without a look at anything else
    };
    [[nodiscard]] Pen takePen() const;
    void putPen(Pen pen);
    [[nodiscard]] Pen withCharacters(Pen pen, std::u32string_view text);

    template <bool isVertical, Font::Codes codes>
    const char* writeGlyphs(Font& font, const char* p, const char* stop, const char* end, Pen& pen);
    template <bool isVertical, Font::Codes codes>
    void showGlyphs(std::string_view bytes);
    template <bool isVertical, Font::Codes codes>
    void showActualText(std::string_view bytes);

    Page* page_ = nullptr;
    std::uint8_t flags_ = 0;
    Clipping clipping_ = Clipping::on;
    bool isFull_ = false;

    Matrix line_;  ///< text line matrix
    Vector moved_; ///< from its origin, by what has been shown

    // What the operators before `show` have set; the frame is valid if frameIsCurrent_.
    bool frameIsCurrent_ = false;
    const GraphicsState* state_ = nullptr;
    MarkedContent* marks_ = nullptr;
    Matrix textToPage_;
    TextFrame frame_;

    // The line of the strings that are being shown. Lengths along it count from lineOrigin_.
    Vector lineOrigin_;
    double along_ = 0;     ///< the pen
    double showStart_ = 0; ///< the pen before the strings
    double stringEnd_ = 0; ///< the pen behind the last string
    double characterStep_ = 0;
    double wordStep_ = 0;
    double forwardJump_ = 0;
    double backwardJump_ = 0;
    text::ByteBuffer string_; ///< that had to be decoded

    // The last glyphs of the run and their characters, on their way to the page. There is room for a character for each
    // glyph, and for those by which ligatures exceed that.
    static constexpr std::size_t kBatch = 128;
    static constexpr std::size_t kMoreCharacters = 64;
    std::array<Glyph, kBatch> glyphs_;
    std::size_t glyphCount_ = 0;
    std::array<char32_t, kBatch + kMoreCharacters> characters_{};
    std::size_t characterCount_ = 0;
    std::size_t glyphsOfPage_ = 0; ///< before them
    std::size_t charactersOfPage_ = 0;

    // The run that is being written; its glyphs are the last ones of the page.
    bool isOpen_ = false;
    Run run_;
    TextFrame runFrame_;
    Font* runFont_ = nullptr;
    Marks runMarks_;
    Box runClip_;
    double runStart_ = 0; ///< where it begins on the line
};

} // namespace quillow::pdf
