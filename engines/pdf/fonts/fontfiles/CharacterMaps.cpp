#include "engines/pdf/fonts/fontfiles/CharacterMaps.h"

#include "text/Bytes.h"

namespace quillow::pdf {
namespace {

using text::ByteCursor;

constexpr std::uint16_t kUnicode = 0;
constexpr std::uint16_t kMacintosh = 1;
constexpr std::uint16_t kWindows = 3;

/// Where symbol maps have the codes of a font, the usual place first.
constexpr std::array<std::uint32_t, 4> kSymbolBases{0xF000, 0, 0xF100, 0xF200};

GlyphIndex glyphOfSymbol(const CharacterMap& map, std::uint8_t code) {
    for (const std::uint32_t base : kSymbolBases)
        if (const GlyphIndex glyph = map.glyphOf(base + code); glyph != 0) return glyph;
    return 0;
}

} // namespace

CharacterMaps::CharacterMaps(std::string_view table) {
    ByteCursor cursor(table);
    cursor.skip(sizeof(std::uint16_t));
    const std::uint16_t count = cursor.u16();
    for (std::uint16_t i = 0; i < count && !cursor.atEnd(); ++i) {
        const std::uint16_t platform = cursor.u16();
        const std::uint16_t encoding = cursor.u16();
        const std::size_t offset = cursor.u32();
        if (!cursor.ok() || offset >= table.size()) continue;
        CharacterMap& map = mapFor(platform, encoding);
        if (map.isEmpty()) map = CharacterMap(table.substr(offset));
    }
}

CharacterMap& CharacterMaps::mapFor(std::uint16_t platform, std::uint16_t encoding) {
    if (platform == kWindows && encoding == 0) return symbol_;
    if (platform == kWindows && encoding == 1) return unicode_[windowsBasic];
    if (platform == kWindows && encoding == 10) return unicode_[windowsFull];
    if (platform == kUnicode) return unicode_[encoding == 4 || encoding == 6 ? unicodeFull : unicodeBasic];
    if (platform == kMacintosh && encoding == 0) return macintosh_;
    return other_;
}

GlyphIndex CharacterMaps::glyphOfCode(std::uint8_t code) const {
    if (const GlyphIndex glyph = glyphOfSymbol(symbol_, code); glyph != 0) return glyph;
    if (const GlyphIndex glyph = macintosh_.glyphOf(code); glyph != 0) return glyph;
    if (const GlyphIndex glyph = glyphOfUnicode(code); glyph != 0) return glyph;
    // Symbol fonts whose map claims to be Unicode.
    if (const GlyphIndex glyph = glyphOfUnicode(kSymbolBases[0] + code); glyph != 0) return glyph;
    return other_.glyphOf(code);
}

GlyphIndex CharacterMaps::glyphOfUnicode(char32_t character) const {
    for (const CharacterMap& map : unicode_)
        if (const GlyphIndex glyph = map.glyphOf(character); glyph != 0) return glyph;
    return 0;
}

void CharacterMaps::addCharacters(GlyphCharacters& characters, std::uint32_t glyphCount) const {
    for (const CharacterMap& map : unicode_)
        map.forEach(glyphCount, [&](GlyphIndex glyph, char32_t code) { characters.add(glyph, code); });
}

} // namespace quillow::pdf
