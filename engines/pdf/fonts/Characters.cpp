#include "engines/pdf/fonts/Characters.h"

#include "engines/pdf/fonts/AdobePrivateUse.h"
#include "engines/pdf/fonts/CjkRadicals.h"
#include "text/Unicode.h"
#include "text/Utf8.h"

#include <algorithm>

namespace quillow::pdf {

namespace {

constexpr bool isControl(char32_t c) {
    return c < 0x20 || (c >= 0x7F && c < 0xA0);
}

/// U+FEFF is the mark at the start of a UTF-16 string, which some producers write before each string.
constexpr bool isUsable(char32_t c) {
    return text::isInterchangeable(c) && !isControl(c) && !isBlankControl(c) && c != text::kReplacementCharacter &&
           c != 0xFEFF;
}

char32_t withKnownMeaning(char32_t c, text::SymbolFontDecoder symbols) {
    if (c < kFirstRadical) return c;
    if (symbols != nullptr && text::isSymbolSign(c)) return symbols(static_cast<std::uint8_t>(c & 0xFF));
    return withoutAdobePrivateUse(withoutRadical(c));
}

} // namespace

CharacterEvidence keepUsable(std::u32string& text, text::SymbolFontDecoder symbols) {
    for (char32_t& c : text)
        c = withKnownMeaning(c, symbols);
    const bool hasBlank = std::any_of(text.begin(), text.end(), isBlankControl);
    std::erase_if(text, [](char32_t c) { return !isUsable(c); });
    if (!text.empty()) return CharacterEvidence::characters;
    return hasBlank ? CharacterEvidence::blank : CharacterEvidence::none;
}

void setCharacters(CharacterEvidence evidence, std::u32string& text, FontGlyph& glyph) {
    if (evidence == CharacterEvidence::blank) text.assign(glyph.width > 0 ? 1 : 0, U' ');
    if (evidence == CharacterEvidence::none) text.assign(1, text::kReplacementCharacter);
    glyph.isKnown = evidence != CharacterEvidence::none;
    glyph.text = text;
}

} // namespace quillow::pdf
