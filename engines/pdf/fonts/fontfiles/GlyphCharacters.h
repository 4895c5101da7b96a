// Which characters the glyphs of a font show: character maps read backwards.
#pragma once

#include "engines/pdf/fonts/fontfiles/EmbeddedFont.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace quillow::pdf {

class GlyphCharacters {
public:
    explicit GlyphCharacters(std::uint32_t glyphCount)
        : characters_(glyphCount) {}

    /// A character that the font shows with this glyph. Of several it keeps the plainest, then the lowest. The glyph
    /// must be one of the font's.
    void add(GlyphIndex glyph, char32_t character);

    [[nodiscard]] std::u32string_view of(GlyphIndex glyph) const;

private:
    std::vector<char32_t> characters_; ///< by glyph; 0 if none is known
};

} // namespace quillow::pdf
