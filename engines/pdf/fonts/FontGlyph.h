// What a code of a font shows.
#pragma once

#include <string_view>

namespace quillow::pdf {

/// Lengths are for a font size of 1.
struct FontGlyph {
    std::u32string_view text;   ///< one character or several (a ligature); U+FFFD if nothing says which; may be empty
    float width = 0;            ///< advance in horizontal writing
    float verticalAdvance = -1; ///< advance in vertical writing, downwards negative (9.7.4.3)
    float verticalX = 0;        ///< from the vertical writing's origin to the horizontal one
    float verticalY = 0;
    bool isWordSpace = false; ///< word spacing applies: a one-byte code 32 (9.3.3)
    bool isKnown = true;      ///< false if `text` is U+FFFD for want of evidence
};

} // namespace quillow::pdf
