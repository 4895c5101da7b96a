#include "engines/pdf/fonts/fontfiles/GlyphCharacters.h"

namespace quillow::pdf {
namespace {

constexpr bool isIn(char32_t character, char32_t first, char32_t last) {
    return character >= first && character <= last;
}

/// How much less a character says than a plain one. Fonts map control characters to the glyph of the blank, and
/// radicals (which come before the ideographs) to the glyph of the ideograph.
constexpr int obscurity(char32_t character) {
    if (isIn(character, 0xE000, 0xF8FF) || character >= 0xF0000) return 3; // private use
    if (character < 0x20 || isIn(character, 0x7F, 0x9F)) return 2;
    if (isIn(character, 0x2E80, 0x2FDF)) return 1;
    return 0;
}

constexpr bool isPlainer(char32_t a, char32_t b) {
    return obscurity(a) != obscurity(b) ? obscurity(a) < obscurity(b) : a < b;
}

} // namespace

void GlyphCharacters::add(GlyphIndex glyph, char32_t character) {
    char32_t& known = characters_[glyph];
    if (known == 0 || isPlainer(character, known)) known = character;
}

std::u32string_view GlyphCharacters::of(GlyphIndex glyph) const {
    if (glyph >= characters_.size() || characters_[glyph] == 0) return {};
    return {&characters_[glyph], 1};
}

} // namespace quillow::pdf
