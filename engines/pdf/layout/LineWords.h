// The words of lines with their places: what the search for tables looks at.
#pragma once

#include "engines/pdf/layout/Line.h"

#include <span>
#include <vector>

namespace quillow::pdf {

/// Letters without a blank between them, or several such words with the gaps between them. What is counted says whether
/// it may be a cell.
struct Word {
    float left = 0;
    float right = 0;
    std::uint32_t characters = 0; ///< without blanks
    std::uint32_t digits = 0;
    std::uint32_t letters = 0;
    char32_t last = 0;

    /// Makes this the word and the one to the right of it.
    void append(const Word& next);
    /// Numbers, amounts, percentages, dashes for missing values.
    [[nodiscard]] bool isNumeric() const;
    /// Bullets and numbers of lists.
    [[nodiscard]] bool isListLabel() const;
};

class LineWords {
public:
    LineWords(const Page& page, const Orientation& orientation, const Lines& found);

    /// From left to right.
    [[nodiscard]] std::span<const Word> of(std::uint32_t line) const {
        return std::span<const Word>(words_).subspan(ends_[line], ends_[line + 1] - ends_[line]);
    }
    /// The line's words, joined where the gap between them is no wider than that between words of a text may be.
    void appendPieces(std::uint32_t line, std::vector<Word>& out) const;

private:
    struct Letter {
        float left = 0;
        float right = 0;
        char32_t character = 0;
    };

    void add(const Page& page, const Orientation& orientation, std::span<const std::uint32_t> spans, float size);

    std::vector<Letter> letters_;
    std::vector<Word> words_;
    std::vector<std::uint32_t> ends_{0}; ///< of a line's words, one further on
    std::vector<float> pieceGaps_;
};

/// The parts of a line between the cuts, from left to right: a letter belongs to the part that its middle is in. Parts
/// without letters are left out. Adds spans to the orientation and to
/// `found`, but no lines.
[[nodiscard]] std::vector<Line> cutLine(const Page& page, Orientation& orientation, Lines& found, std::uint32_t line,
                                        std::span<const float> cuts);

} // namespace quillow::pdf
