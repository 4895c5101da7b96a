// The table 'cmap': which of its character maps serves which purpose (OpenType 1.9, "cmap"; ISO 32000-2, 9.6.5.4).
#pragma once

#include "engines/pdf/fonts/fontfiles/CharacterMap.h"
#include "engines/pdf/fonts/fontfiles/EmbeddedFont.h"
#include "engines/pdf/fonts/fontfiles/GlyphCharacters.h"

#include <array>
#include <cstdint>
#include <string_view>

namespace quillow::pdf {

class CharacterMaps {
public:
    explicit CharacterMaps(std::string_view table);

    /// See EmbeddedFont.
    [[nodiscard]] GlyphIndex glyphOfCode(std::uint8_t code) const;
    [[nodiscard]] GlyphIndex glyphOfUnicode(char32_t character) const;
    /// Adds every character of the Unicode maps with a glyph below `glyphCount`.
    void addCharacters(GlyphCharacters& characters, std::uint32_t glyphCount) const;

private:
    /// The Unicode maps, the best first; fonts have no more kinds.
    enum UnicodeMap : std::uint8_t { windowsFull, windowsBasic, unicodeFull, unicodeBasic, kUnicodeMaps };

    CharacterMap& mapFor(std::uint16_t platform, std::uint16_t encoding);

    CharacterMap symbol_;
    CharacterMap macintosh_;
    CharacterMap other_;
    std::array<CharacterMap, kUnicodeMaps> unicode_;
};

} // namespace quillow::pdf
