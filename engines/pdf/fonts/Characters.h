// Which characters that a document or a font program claims for a code may be part of a text.
#pragma once

#include "engines/pdf/fonts/FontGlyph.h"
#include "text/SymbolFonts.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace quillow::pdf {

/// What one source says of a code.
enum class CharacterEvidence : std::uint8_t {
    none,  ///< nothing that a text may contain
    blank, ///< a tab or a line end: the code shows a gap if it shows anything
    characters
};

/// Removes from `text` what says nothing: U+0000, U+FFFD, U+FEFF, controls, private use, surrogates, noncharacters.
/// Before that, known private use becomes what it means (U+F020 to U+F0FF the signs of the font of `symbols`, if that
/// is not null), and CJK radicals become ideographs.
[[nodiscard]] CharacterEvidence keepUsable(std::u32string& text, text::SymbolFontDecoder symbols);

/// Completes a glyph, whose width is set, with what was found of its characters. The glyph refers to `text`. A tab or a
/// line end that is as wide as a gap becomes a space, because it separates words as one; without width it is nothing.
void setCharacters(CharacterEvidence evidence, std::u32string& text, FontGlyph& glyph);

/// No glyph of a text font shows more characters. Some producers give one glyph those of a whole line.
inline constexpr std::size_t kMostCharactersOfSoundGlyph = 8;

/// Tab, line feed, vertical tab, form feed, carriage return, next line; and the separators of lines and paragraphs.
[[nodiscard]] constexpr bool isBlankControl(char32_t c) {
    return (c >= 0x09 && c <= 0x0D) || c == 0x85 || c == 0x2028 || c == 0x2029;
}

} // namespace quillow::pdf
