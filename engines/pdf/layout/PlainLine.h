// The characters of a plain line: its letters are drawn from the left to the right, and none of them has to be moved,
// dropped, composed or turned. Nearly all lines are plain, so this is the part of layout that speed depends on.
#pragma once

#include "engines/pdf/layout/Spacing.h"
#include "engines/pdf/layout/Span.h"

#include <span>
#include <string>
#include <vector>

namespace quillow::pdf {

/// Writes what LineWriter writes for such lines. Keeps its memory from line to line.
class PlainLineWriter {
public:
    PlainLineWriter(const Page& page, const Orientation& orientation)
        : page_(page)
        , orientation_(orientation) {}

    /// Appends the text of a line with those spans, without a line end. Returns false, and appends nothing, if the line
    /// may not be plain.
    [[nodiscard]] bool append(std::span<const std::uint32_t> spans, std::u32string& out);

private:
    /// The letter before the next one; at first one that is far to the left.
    struct Pen {
        float left = 0; ///< of the last glyph, which may be a blank
        float right = 0;
        float letterRight = 0; ///< of the last letter that is no blank
        float letterSize = 0;
        char32_t letterEnd = 0; ///< its last character; 0 before the first letter
        bool isBehindBlank = false;
    };

    void makeRoom(std::span<const std::uint32_t> spans);
    [[nodiscard]] bool addSpan(const Span& span, Pen& pen);
    void appendWithBlanks(std::u32string& out);

    const Page& page_;
    const Orientation& orientation_;
    // The first ones of these vectors are those of the line.
    std::vector<char32_t> characters_; ///< with the drawn blanks
    std::size_t characterCount_ = 0;
    std::vector<Gap> gaps_;             ///< where no blank is drawn
    std::vector<std::uint32_t> places_; ///< for each gap, the index of the character behind it
    std::size_t gapCount_ = 0;
    float drawnBlank_ = 0; ///< the widest one, in ems
    bool mayHaveGaps_ = false; ///< whether one of the gaps is wide enough for a blank in some lines
};

} // namespace quillow::pdf
