// What the codes of simple fonts mean: the encodings of the standard and the built-in ones of well-known fonts.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace quillow::pdf {

/// PDFDocEncoding is not for fonts: see syntax/TextString.h.
enum class Encoding : std::uint8_t {
    Standard,     ///< ISO 32000-2, annex D.2
    WinAnsi,      ///< D.2; codes without a character are bullets
    MacRoman,     ///< D.2
    MacExpert,    ///< D.4
    Symbol,       ///< D.5, built into the font of that name
    ZapfDingbats, ///< D.6
    MacOs,        ///< D.2 with the additions of 9.6.5.4, for (1,0) subtables of TrueType fonts
    // Built into TeX's fonts. They matter for fonts without names of glyphs (Type 3, damaged Type 1).
    TexText,          ///< OT1: cmr, cmbx, cmss...
    TexItalic,        ///< OT1 of cmti and its like: a sterling for the dollar
    TexTypewriter,    ///< OT1 of cmtt: no ligatures
    TexSmallCaps,     ///< OT1 of cmcsc
    TexMathItalic,    ///< OML: cmmi
    TexMathSymbols,   ///< OMS: cmsy
    TexMathExtension, ///< OMX: cmex
    TexSymbolsA,      ///< msam
    TexSymbolsB,      ///< msbm
    TexLatexSymbols,  ///< lasy
    TexWasy,          ///< wasy
    TexCork,          ///< T1: ecrm, sfrm, lmr...-t1
    TexCompanion,     ///< TS1: tcrm
};
inline constexpr std::size_t kEncodingCount = 20;

/// The name of a code's glyph, empty if there is none.
[[nodiscard]] std::string_view glyphNameOf(Encoding encoding, std::uint8_t code);

/// The characters of a code, empty if there are none. Always interchangeable. WinAnsi: 0xA0 is U+00A0 and 0xAD a
/// hyphen, although their glyphs are `space` and `hyphen`.
[[nodiscard]] std::u32string_view charactersOf(Encoding encoding, std::uint8_t code);

/// By the names that PDF files use: StandardEncoding, WinAnsiEncoding, MacRomanEncoding, MacExpertEncoding (also
/// SymbolEncoding, ZapfDingbatsEncoding and the names without "Encoding", which some producers write).
[[nodiscard]] std::optional<Encoding> encodingOfName(std::string_view name);

/// The encoding built into TeX's font of this name (in any case, without a subset's prefix): "CMMI10", "cmbx12".
[[nodiscard]] std::optional<Encoding> texEncodingOfFont(std::string_view fontName);

} // namespace quillow::pdf
