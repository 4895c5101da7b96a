#include "engines/pdf/fonts/Encodings.h"

#include "engines/pdf/fonts/EncodingsTables.h"
#include "text/Unicode.h"

#include <gtest/gtest.h>

namespace quillow::pdf {
namespace {

struct CodeCase {
    Encoding encoding;
    unsigned code;
    std::string_view name;
    std::u32string_view characters;
};

constexpr CodeCase kCodes[] = {
    // Annex D.2
    {Encoding::Standard, 0x20, "space", U" "},
    {Encoding::Standard, 0x27, "quoteright", U"\u2019"},
    {Encoding::Standard, 0x60, "quoteleft", U"\u2018"},
    {Encoding::Standard, 0xA4, "fraction", U"\u2044"},
    {Encoding::Standard, 0xAE, "fi", U"\uFB01"},
    {Encoding::Standard, 0xFB, "germandbls", U"\u00DF"},
    {Encoding::Standard, 0x80, "", U""},
    {Encoding::WinAnsi, 0x27, "quotesingle", U"'"},
    {Encoding::WinAnsi, 0x60, "grave", U"`"},
    {Encoding::WinAnsi, 0x80, "Euro", U"\u20AC"},
    {Encoding::WinAnsi, 0x81, "bullet", U"\u2022"},
    {Encoding::WinAnsi, 0x7F, "bullet", U"\u2022"},
    {Encoding::WinAnsi, 0x95, "bullet", U"\u2022"},
    {Encoding::WinAnsi, 0xA0, "space", U"\u00A0"},
    {Encoding::WinAnsi, 0xAD, "hyphen", U"-"},
    {Encoding::WinAnsi, 0xB5, "mu", U"\u00B5"},
    {Encoding::WinAnsi, 0xFF, "ydieresis", U"\u00FF"},
    {Encoding::WinAnsi, 0x1F, "", U""},
    {Encoding::MacRoman, 0x80, "Adieresis", U"\u00C4"},
    {Encoding::MacRoman, 0xCA, "space", U"\u00A0"},
    {Encoding::MacRoman, 0xDB, "currency", U"\u00A4"},
    {Encoding::MacRoman, 0xDE, "fi", U"\uFB01"},
    {Encoding::MacRoman, 0xAD, "", U""},
    {Encoding::MacRoman, 0xF0, "", U""},
    {Encoding::MacOs, 0xAD, "notequal", U"\u2260"},
    {Encoding::MacOs, 0xC6, "Delta", U"\u2206"},
    {Encoding::MacOs, 0xDB, "Euro", U"\u20AC"},
    {Encoding::MacOs, 0xF0, "apple", U""},
    // D.4 to D.6
    {Encoding::MacExpert, 0x21, "exclamsmall", U"!"},
    {Encoding::MacExpert, 0x30, "zerooldstyle", U"0"},
    {Encoding::MacExpert, 0x61, "Asmall", U"a"},
    {Encoding::MacExpert, 0xBE, "AEsmall", U"\u00E6"},
    {Encoding::Symbol, 0x22, "universal", U"\u2200"},
    {Encoding::Symbol, 0x44, "Delta", U"\u0394"},
    {Encoding::Symbol, 0x57, "Omega", U"\u03A9"},
    {Encoding::Symbol, 0x6D, "mu", U"\u03BC"},
    {Encoding::Symbol, 0xE6, "parenlefttp", U"\u239B"},
    {Encoding::Symbol, 0xA0, "Euro", U"\u20AC"},
    {Encoding::ZapfDingbats, 0x21, "a1", U"\u2701"},
    {Encoding::ZapfDingbats, 0x33, "a19", U"\u2713"},
    {Encoding::ZapfDingbats, 0x6C, "a71", U"\u25CF"},
    {Encoding::ZapfDingbats, 0xFE, "a191", U"\u27BE"},
    // TeX
    {Encoding::TexText, 0x00, "Gamma", U"\u0393"},
    {Encoding::TexText, 0x0B, "ff", U"\uFB00"},
    {Encoding::TexText, 0x0E, "ffi", U"\uFB03"},
    {Encoding::TexText, 0x11, "dotlessj", U"\u0237"},
    {Encoding::TexText, 0x22, "quotedblright", U"\u201D"},
    {Encoding::TexText, 0x24, "dollar", U"$"},
    {Encoding::TexText, 0x7B, "endash", U"\u2013"},
    {Encoding::TexItalic, 0x24, "sterling", U"\u00A3"},
    {Encoding::TexTypewriter, 0x0B, "arrowup", U"\u2191"},
    {Encoding::TexTypewriter, 0x7B, "braceleft", U"{"},
    {Encoding::TexSmallCaps, 0x0D, "quotesingle", U"'"},
    {Encoding::TexMathItalic, 0x0B, "alpha", U"\u03B1"},
    {Encoding::TexMathItalic, 0x30, "zerooldstyle", U"0"},
    {Encoding::TexMathItalic, 0x3B, "comma", U","},
    {Encoding::TexMathItalic, 0x60, "lscript", U"\u2113"},
    {Encoding::TexMathSymbols, 0x00, "minus", U"\u2212"},
    {Encoding::TexMathSymbols, 0x14, "lessequal", U"\u2264"},
    {Encoding::TexMathSymbols, 0x29, "arrowdblright", U"\u21D2"},
    {Encoding::TexMathSymbols, 0x68, "angbracketleft", U"\u27E8"},
    {Encoding::TexMathExtension, 0x00, "parenleftbig", U"("},
    {Encoding::TexMathExtension, 0x58, "summationdisplay", U"\u2211"},
    {Encoding::TexMathExtension, 0x70, "radicalbig", U"\u221A"},
    {Encoding::TexSymbolsA, 0x58, "check", U"\u2713"},
    {Encoding::TexSymbolsB, 0x0A, "notlessorslnteql", U"\u2A7D\u0338"},
    {Encoding::TexSymbolsB, 0x52, "R", U"R"},
    {Encoding::TexSymbolsB, 0x5F, "", U""},
    {Encoding::TexSymbolsB, 0x7E, "planckover2pi1", U"\u210F"},
    {Encoding::TexLatexSymbols, 0x32, "", U"\u25A1"},
    {Encoding::TexWasy, 0x0A, "bell", U"\U0001F514"},
    {Encoding::TexCork, 0x1B, "ff", U"\uFB00"},
    {Encoding::TexCork, 0xDF, "Germandbls", U"SS"},
    {Encoding::TexCork, 0xE9, "eacute", U"\u00E9"},
    {Encoding::TexCompanion, 0xBF, "Euro", U"\u20AC"},
};

TEST(Encodings, codesHaveTheNamesAndCharactersOfTheirTables) {
    for (const CodeCase& c : kCodes) {
        const auto code = static_cast<std::uint8_t>(c.code);
        EXPECT_EQ(glyphNameOf(c.encoding, code), c.name) << int(c.encoding) << ' ' << c.code;
        EXPECT_EQ(charactersOf(c.encoding, code), c.characters) << int(c.encoding) << ' ' << c.code;
    }
}

TEST(Encodings, everyCharacterIsInterchangeable) {
    for (std::size_t encoding = 0; encoding < kEncodingCount; ++encoding) {
        for (unsigned code = 0; code < 256; ++code) {
            for (const char32_t c : charactersOf(static_cast<Encoding>(encoding), static_cast<std::uint8_t>(code)))
                EXPECT_TRUE(text::isInterchangeable(c) && c >= 0x20) << encoding << ' ' << code;
        }
    }
}

TEST(Encodings, everyNamedGlyphHasCharacters) {
    for (std::size_t encoding = 0; encoding < kEncodingCount; ++encoding) {
        for (unsigned code = 0; code < 256; ++code) {
            const auto name = glyphNameOf(static_cast<Encoding>(encoding), static_cast<std::uint8_t>(code));
            if (name.empty() || name == "apple") continue;
            EXPECT_FALSE(charactersOf(static_cast<Encoding>(encoding), static_cast<std::uint8_t>(code)).empty())
                << name;
        }
    }
}

TEST(Encodings, namesAreSorted) {
    for (std::size_t i = 1; i < kEncodingNames.count; ++i)
        EXPECT_LT(kEncodingNames[i - 1], kEncodingNames[i]);
}

TEST(Encodings, filesNameThemWithAndWithoutTheirSuffix) {
    EXPECT_EQ(encodingOfName("WinAnsiEncoding"), Encoding::WinAnsi);
    EXPECT_EQ(encodingOfName("MacRomanEncoding"), Encoding::MacRoman);
    EXPECT_EQ(encodingOfName("MacExpertEncoding"), Encoding::MacExpert);
    EXPECT_EQ(encodingOfName("StandardEncoding"), Encoding::Standard);
    EXPECT_EQ(encodingOfName("AdobeStandardEncoding"), Encoding::Standard);
    EXPECT_EQ(encodingOfName("winansi"), Encoding::WinAnsi);
    EXPECT_EQ(encodingOfName("Identity-H"), std::nullopt);
    EXPECT_EQ(encodingOfName("PDFDocEncoding"), std::nullopt);
    EXPECT_EQ(encodingOfName(""), std::nullopt);
}

struct FamilyCase {
    std::string_view font;
    std::optional<Encoding> encoding;
};

TEST(Encodings, fontsOfTexAreKnownByTheirFamily) {
    constexpr FamilyCase kFamilies[] = {
        {"CMR10", Encoding::TexText},
        {"cmbx12", Encoding::TexText},
        {"CMBXTI10", Encoding::TexItalic},
        {"CMTT9", Encoding::TexTypewriter},
        {"CMCSC10", Encoding::TexSmallCaps},
        {"CMMI7", Encoding::TexMathItalic},
        {"CMMIB10", Encoding::TexMathItalic},
        {"CMSY10", Encoding::TexMathSymbols},
        {"CMEX10", Encoding::TexMathExtension},
        {"MSAM10", Encoding::TexSymbolsA},
        {"MSBM7", Encoding::TexSymbolsB},
        {"LASY10", Encoding::TexLatexSymbols},
        {"wasy10", Encoding::TexWasy},
        {"ecrm1095", Encoding::TexCork},
        {"SFBX1200", Encoding::TexCork},
        {"tcrm1000", Encoding::TexCompanion},
        {"CMR", std::nullopt},
        {"Courier10", std::nullopt},
        {"ecology1", std::nullopt},
        {"", std::nullopt},
    };
    for (const FamilyCase& c : kFamilies)
        EXPECT_EQ(texEncodingOfFont(c.font), c.encoding) << c.font;
}

} // namespace
} // namespace quillow::pdf
