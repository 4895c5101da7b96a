// How the text space lies on the displayed page (ISO 32000-2, 9.4.4): what all glyphs of a run have in common.
#pragma once

#include "engines/pdf/content/GraphicsState.h"

namespace quillow::pdf {

/// Lengths "along" are on the page, in the direction of writing.
struct TextFrame {
    Vector direction{1, 0};
    double advance = 0;    ///< length along of a glyph's advance of 1
    double adjustment = 0; ///< length along of the number 1 of a TJ
    double spacing = 0;    ///< length along of character or word spacing of 1
    double toText = 0;     ///< displacement in text space of a length of 1 along; 0 where the matrix has no inverse
    double fontSize = 0;
    double ascent = 0;
    double descent = 0;
    bool isVertical = false;

    /// Whether glyphs of both frames may be in one run: the same up to rounding.
    [[nodiscard]] bool continues(const TextFrame& other) const;
};

/// `textToPage` is the text matrix times the transformation matrix. `text` must have a font.
[[nodiscard]] TextFrame frameOf(const TextState& text, const Matrix& textToPage);

} // namespace quillow::pdf
