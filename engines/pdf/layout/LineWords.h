// The words of lines with their places: what the search for tables looks at.
#pragma once

#include "engines/pdf/layout/Line.h"

#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace quillow::pdf {

constexpr bool isDigitLike(char32_t c) {
    return (c >= '0' && c <= '9') || (c >= 0x0660 && c <= 0x0669) || (c >= 0x06F0 && c <= 0x06F9);
}

constexpr bool isLetterLike(char32_t c) {
    if (c < 0x80) return (c | 0x20U) >= 'a' && (c | 0x20U) <= 'z';
    return (c >= 0xAA && c != 0xB7 && c != 0xD7 && c != 0xF7 && c < 0x2000) || c >= 0x2E80;
}

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
    /// without a blank is not ordinary on a page that draws blanks. The pieces are remembered.
    void appendPieces(std::uint32_t line, std::vector<Word>& out);

private:
    struct Letter {
        float left = 0;
        float right = 0;
        char32_t character = 0;
        bool isAfterBlank = false;
    };

    /// Letters from left to right become words.
    class Builder;

    /// The pieces of a line, in `pieces_`.
    struct Pieces {
        static constexpr std::uint32_t kUnknown = 0xFFFFFFFF;
        std::uint32_t begin = kUnknown;
        std::uint32_t end = 0;
    };

    [[nodiscard]] bool drawsBlanks();
    template <class Use>
    void forEachLetter(std::uint32_t line, Use use) const;
    [[nodiscard]] bool addLetters(std::uint32_t line);
    void addSortedLetters(std::uint32_t line);
    void findPieces(std::uint32_t line);

    const Page& page_;
    const Orientation& orientation_;
    const Lines& found_;
    std::optional<bool> drawsBlanks_; ///< the page does, between words
    std::vector<Letter> letters_;
    std::vector<Word> words_;
    float pieceGap_ = 0; ///< pieces of the line are further apart
    std::vector<Word> pieces_;
    std::vector<Pieces> piecesOf_; ///< for each line, as far as they are known
};

/// The parts of a line between the cuts, from left to right: a letter belongs to the part that its middle is in. Parts
/// without letters are left out. Adds spans to the orientation and to
/// `found`, but no lines.
[[nodiscard]] std::vector<Line> cutLine(const Page& page, Orientation& orientation, Lines& found, std::uint32_t line,
                                        std::span<const float> cuts);

} // namespace quillow::pdf
