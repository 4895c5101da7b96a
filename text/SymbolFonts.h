// Fonts whose bytes are signs instead of letters: the code point of each sign, or U+FFFD if Unicode has none.
#pragma once

#include <cstdint>
#include <string_view>

namespace quillow::text {

/// Adobe's Symbol encoding, as in the Windows and Macintosh fonts "Symbol".
[[nodiscard]] char32_t symbolToUnicode(std::uint8_t byte);

/// Unicode's own mappings for these four fonts (L2/12-368). Unicode 7 added the signs that were missing.
[[nodiscard]] char32_t wingdingsToUnicode(std::uint8_t byte);
[[nodiscard]] char32_t wingdings2ToUnicode(std::uint8_t byte);
[[nodiscard]] char32_t wingdings3ToUnicode(std::uint8_t byte);
[[nodiscard]] char32_t webdingsToUnicode(std::uint8_t byte);

/// The encoding of ITC Zapf Dingbats (ISO 32000-1, annex D.6), which Monotype Sorts shares.
[[nodiscard]] char32_t zapfDingbatsToUnicode(std::uint8_t byte);

using SymbolFontDecoder = char32_t (*)(std::uint8_t byte);

/// Whether a code point is a byte of a symbol font plus U+F000, as word processors write it.
[[nodiscard]] constexpr bool isSymbolSign(char32_t c) {
    return c >= 0xF020 && c <= 0xF0FF;
}

/// The function above for a font of that name (case does not matter), or nullptr for any other font.
[[nodiscard]] SymbolFontDecoder symbolFontDecoder(std::string_view fontName);

} // namespace quillow::text
