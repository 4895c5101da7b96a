// The glyphs of a page in the frame of their own writing direction, where text runs to the right and lines follow one
// another downwards, whatever way it is turned on the page.
#pragma once

#include "engines/pdf/content/Page.h"
#include "engines/pdf/layout/GlyphScan.h"

#include <cstdint>
#include <vector>

namespace quillow::pdf {

/// The axes of a writing direction. Vertical writing has the frame of text that is turned by 90 degrees: glyphs follow
/// one another downwards, lines from right to left.
struct Frame {
    Point along{1, 0};

    [[nodiscard]] float alongOf(Point p) const { return p.x * along.x + p.y * along.y; }
    [[nodiscard]] float upOf(Point p) const { return p.y * along.x - p.x * along.y; }
};

/// Glyphs of one run without a wide gap between them. Numbers are those of the frame.
struct Span {
    std::uint32_t run = 0;
    std::uint32_t firstGlyph = 0;
    std::uint32_t glyphCount = 0;
    float start = 0; ///< where the run's offsets count from
    float left = 0;
    float right = 0;
    float baseline = 0;
    float bottom = 0; ///< of the letters: a descent below the baseline
    float top = 0;    ///< of the letters: about the height of a capital
    float size = 0;
    LetterFacts letters;

    [[nodiscard]] float height() const { return top - bottom; }
};

/// The text of one writing direction.
struct Orientation {
    Frame frame;
    bool isVertical = false; ///< vertical writing (ISO 32000-2, 9.2.4)
    std::size_t glyphCount = 0;
    std::vector<Span> spans; ///< in content order
};

/// The spans of a page, those of the direction with the most glyphs first.
[[nodiscard]] std::vector<Orientation> orientationsOf(const Page& page);

} // namespace quillow::pdf
