// The words of lines with their places: what the search for tables looks at.
#pragma once

#include "engines/pdf/layout/Line.h"

#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace quillow::pdf {

[[nodiscard]] bool isDigitLike(char32_t c);
[[nodiscard]] bool isLetterLike(char32_t c);

/// Letters without a blank between them, or several such words with the gaps between them. What is counted says whether
/// it may be a cell.
struct Word {
    float left = 0;
    float right = 0;
    std::uint32_t characters = 0; ///< without blanks
    std::uint32_t digits = 0;
    std::uint32_t letters = 0;
    bool isAfterBlank = false; ///< a blank is drawn before it

    /// Makes this the word and the one to the right of it.
    void append(const Word& next);
    /// Numbers, amounts, percentages, dashes for missing values.
    [[nodiscard]] bool isNumeric() const;
    /// A number with several groups of digits: no blank is inside it.
    [[nodiscard]] bool isGrouped() const { return letters == 0 && digits > 3 && characters > digits; }
};

/// What is counted of a text.
[[nodiscard]] Word countsOf(std::u32string_view text);

/// Finds the words of single lines. Keeps its memory from line to line.
class LineWords {
public:
    LineWords(const Page& page, const Orientation& orientation, const Lines& found)
        : page_(page)
        , orientation_(orientation)
        , found_(found) {}

    /// From left to right. Valid until the next call.
    [[nodiscard]] std::span<const Word> of(std::uint32_t line);
    /// Appends the line's words. Words with the gap of ordinary text between them are joined to one piece. A gap
    /// without a blank is not ordinary on a page that draws blanks.
    void appendPieces(std::uint32_t line, std::vector<Word>& out);

private:
    [[nodiscard]] bool drawsBlanks();

    struct Letter {
        float left = 0;
        float right = 0;
        char32_t character = 0;
        bool isAfterBlank = false;
    };

    const Page& page_;
    const Orientation& orientation_;
    const Lines& found_;
    std::optional<bool> drawsBlanks_; ///< the page does, between words
    std::vector<Letter> letters_;
    std::vector<Word> words_;
    float pieceGap_ = 0; ///< pieces of the line are further apart
};

/// The parts of a line between the cuts, from left to right: a letter belongs to the part that its middle is in. Parts
/// without letters are left out. Adds spans to the orientation and to
/// `found`, but no lines.
[[nodiscard]] std::vector<Line> cutLine(const Page& page, Orientation& orientation, Lines& found, std::uint32_t line,
                                        std::span<const float> cuts);

} // namespace quillow::pdf
