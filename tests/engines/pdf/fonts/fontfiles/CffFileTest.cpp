#include "engines/pdf/fonts/fontfiles/CffFile.h"

#include "tests/engines/pdf/fonts/fontfiles/FontBuilders.h"

#include <gtest/gtest.h>

#include <ostream>

namespace quillow::pdf {
namespace {

using namespace build;
using namespace std::string_literals;

/// Four glyphs: ".notdef", "A", "B" and "own", by a charset of format 0.
Cff smallFont() {
    Cff font;
    font.strings = {"own"};
    font.charStrings = emptyCharStrings(4);
    font.charset = u8(0) + u16s({34, 35, 391});
    return font;
}

/// CIDs 0, 10, 11, 12 and 5 in two parts.
Cff cidFont() {
    Cff font;
    font.strings = {"Adobe", "Japan1"};
    font.charStrings = emptyCharStrings(5);
    font.isCidKeyed = true;
    font.charset = u8(2) + u16s({10, 2}) + u16s({5, 0});
    font.fontDicts = {"", ""};
    font.fontDictSelect = u8(3) + u16(2) + u16(0) + u8(0) + u16(3) + u8(1) + u16(5);
    return font;
}

std::vector<std::string> namesOf(const std::string& bytes) {
    CffFile font(bytes);
    std::vector<std::string> names;
    for (std::uint32_t glyph = 0; glyph < font.glyphCount(); ++glyph)
        names.emplace_back(font.nameOfGlyph(static_cast<GlyphIndex>(glyph)));
    return names;
}

struct CharsetCase {
    std::string_view name;
    std::string charset;
    std::uint32_t predefined;
    std::vector<std::string> names;
    friend void PrintTo(const CharsetCase& charsetCase, std::ostream* out) { *out << charsetCase.name; }
};

class PdfCffCharsets : public testing::TestWithParam<CharsetCase> {};

TEST_P(PdfCffCharsets, glyphsHaveTheirNames) {
    Cff font = smallFont();
    font.charset = GetParam().charset;
    font.predefinedCharset = GetParam().predefined;
    EXPECT_EQ(namesOf(cff(font)), GetParam().names) << GetParam().name;
}

using Names = std::vector<std::string>;
INSTANTIATE_TEST_SUITE_P(
    Formats, PdfCffCharsets,
    testing::Values(
        CharsetCase{"0", u8(0) + u16s({34, 391, 1}), 0, Names{".notdef", "A", "own", "space"}},
        CharsetCase{"1", u8(1) + u16(34) + u8(1) + u16(391) + u8(0), 0, Names{".notdef", "A", "B", "own"}},
        CharsetCase{"2", u8(2) + u16s({34, 1, 391, 0}), 0, Names{".notdef", "A", "B", "own"}},
        CharsetCase{"1 with more glyphs than the font", u8(1) + u16(34) + u8(255), 0, Names{".notdef", "A", "B", "C"}},
        CharsetCase{"unknown", u8(3) + u16s({34, 35, 36}), 0, Names{".notdef", "", "", ""}},
        CharsetCase{"strings that are not there", u8(0) + u16s({392, 0xFFFF, 34}), 0, Names{".notdef", "", "", "A"}},
        CharsetCase{"ISOAdobe", "", 0, Names{".notdef", "space", "exclam", "quotedbl"}},
        CharsetCase{"Expert", "", 1, Names{".notdef", "space", "exclamsmall", "Hungarumlautsmall"}},
        CharsetCase{"ExpertSubset", "", 2, Names{".notdef", "space", "dollaroldstyle", "dollarsuperior"}},
        CharsetCase{"beyond the end", "", 1000000, Names{".notdef", "", "", ""}}));

TEST(PdfCffFile, namesOfMoreThan127BytesAreNone) {
    Cff font = smallFont();
    font.strings = {std::string(128, 'a')};
    EXPECT_EQ(namesOf(cff(font)), (Names{".notdef", "A", "B", ""}));
}

TEST(PdfCffFile, onlyTheFirstGlyphIsNotdef) {
    Cff cffFont = smallFont();
    cffFont.strings = {".notdef"};
    cffFont.encoding = u8(0x80) + u8(1) + u8(5) + u8(1) + u8(7) + u16(391);
    const std::string bytes = cff(cffFont);
    EXPECT_EQ(namesOf(bytes), (Names{".notdef", "A", "B", ""}));
    EXPECT_EQ(CffFile(bytes).nameOfCode(7), "");
}

TEST(PdfCffFile, glyphsAreFoundByName) {
    const std::string bytes = cff(smallFont());
    CffFile font(bytes);
    EXPECT_EQ(font.glyphCount(), 4U);
    EXPECT_EQ(font.glyphOfName("own"), 3);
    EXPECT_EQ(font.glyphOfName("C"), 0);
    EXPECT_EQ(font.nameOfGlyph(4), "");
    EXPECT_FALSE(font.isCidKeyed());
}

TEST(PdfCffFile, cidOfAFontWithNamesIsTheGlyph) {
    const std::string bytes = cff(smallFont());
    CffFile font(bytes);
    EXPECT_EQ(font.glyphOfCid(3), 3);
    EXPECT_EQ(font.glyphOfCid(4), 0);
}

struct EncodingCase {
    std::string_view name;
    std::string encoding;
    std::uint32_t predefined;
    unsigned code;
    unsigned glyph;
    std::string_view glyphName;
    friend void PrintTo(const EncodingCase& encodingCase, std::ostream* out) { *out << encodingCase.name; }
};

class PdfCffEncodings : public testing::TestWithParam<EncodingCase> {};

TEST_P(PdfCffEncodings, codeHasItsGlyphAndName) {
    Cff cffFont = smallFont();
    cffFont.encoding = GetParam().encoding;
    cffFont.predefinedEncoding = GetParam().predefined;
    const std::string bytes = cff(cffFont);
    CffFile font(bytes);
    EXPECT_EQ(font.glyphOfCode(static_cast<std::uint8_t>(GetParam().code)), GetParam().glyph) << GetParam().name;
    EXPECT_EQ(font.nameOfCode(static_cast<std::uint8_t>(GetParam().code)), GetParam().glyphName) << GetParam().name;
}

const std::string kWithSupplement = u8(0x80) + u8(1) + u8(5) + u8(2) + u8(7) + u16(391) + u8(8) + u16(200);
INSTANTIATE_TEST_SUITE_P(
    Formats, PdfCffEncodings,
    testing::Values(EncodingCase{"standard", "", 0, 'B', 2, "B"},
                    EncodingCase{"standard, no such glyph", "", 0, 'C', 0, "C"},
                    EncodingCase{"standard, no such code", "", 0, 0, 0, ""},
                    EncodingCase{"expert", "", 1, 'b', 0, "Bsmall"},
                    EncodingCase{"0", u8(0) + u8(3) + "\7\0\1"s, 0, 0, 2, "B"},
                    EncodingCase{"0, code without glyph", u8(0) + u8(3) + "\7\0\1"s, 0, 2, 0, ""},
                    EncodingCase{"0, more codes than glyphs", u8(0) + u8(5) + "\1\2\3\4\5"s, 0, 4, 0, ""},
                    EncodingCase{"1", u8(1) + u8(2) + "\x41\1\x61\0"s, 0, 'a', 3, "own"},
                    EncodingCase{"1, beyond the last code", u8(1) + u8(1) + "\xFF\5"s, 0, 255, 1, "A"},
                    EncodingCase{"1, does not wrap around", u8(1) + u8(1) + "\xFF\5"s, 0, 0, 0, ""},
                    EncodingCase{"supplement", kWithSupplement, 0, 7, 3, "own"},
                    EncodingCase{"supplement without glyph", kWithSupplement, 0, 8, 0, ""},
                    EncodingCase{"besides the supplement", kWithSupplement, 0, 5, 1, "A"},
                    EncodingCase{"beyond the end", "", 1000000, 'A', 0, ""}));

TEST(PdfCffFile, cidKeyedFontHasCidsAndNoNames) {
    const std::string bytes = cff(cidFont());
    CffFile font(bytes);
    EXPECT_TRUE(font.isCidKeyed());
    EXPECT_EQ(font.ordering(), "Japan1");
    EXPECT_EQ(font.glyphOfCid(0), 0);
    EXPECT_EQ(font.glyphOfCid(1), 0);
    EXPECT_EQ(font.glyphOfCid(5), 4);
    EXPECT_EQ(font.glyphOfCid(12), 3);
    EXPECT_EQ(font.glyphOfCid(13), 0);
    EXPECT_EQ(font.glyphOfCid(0x1000C), 0);
    EXPECT_EQ(font.nameOfGlyph(1), "");
    EXPECT_EQ(font.glyphOfCode(65), 0);
    EXPECT_EQ(font.nameOfCode(65), "");
}

TEST(PdfCffFile, cidsAreTheGlyphsInAFontWithoutCharset) {
    Cff cffFont = cidFont();
    cffFont.charset.clear();
    const std::string bytes = cff(cffFont);
    CffFile font(bytes);
    EXPECT_EQ(font.glyphOfCid(3), 3);
    EXPECT_EQ(font.glyphOfCid(5), 0);
}

TEST(PdfCffFile, junkBeforeTheHeaderIsSkipped) {
    const std::string bytes = cff(smallFont());
    for (const std::string& junk : {std::string("\n"), std::string("\r\n\0", 3), std::string(16, '\1')}) {
        EXPECT_TRUE(CffFile::isOne(junk + bytes));
        EXPECT_EQ(namesOf(junk + bytes), (Names{".notdef", "A", "B", "own"}));
    }
    EXPECT_FALSE(CffFile::isOne(std::string(17, '\1') + bytes));
}

TEST(PdfCffFile, longerHeaderIsSkipped) {
    std::string bytes = cff(smallFont());
    bytes[2] = '\6';
    bytes.insert(4, "xx");
    // All offsets are two too small now; the names do not depend on them.
    EXPECT_FALSE(CffFile(bytes).isCidKeyed());
    EXPECT_TRUE(CffFile::isOne(bytes));
}

TEST(PdfCffFile, bytesWithoutGlyphsAreNoFont) {
    const std::string bytes = cff(smallFont());
    EXPECT_FALSE(CffFile::isOne(""));
    EXPECT_FALSE(CffFile::isOne("\2" + bytes.substr(1)));                // another version
    EXPECT_FALSE(CffFile::isOne(std::string_view(bytes).substr(0, 12))); // cut before the Top DICT
    EXPECT_EQ(CffFile("").glyphCount(), 0U);
    EXPECT_EQ(CffFile("").nameOfGlyph(0), "");
    EXPECT_EQ(CffFile("").glyphOfCid(0), 0);
    EXPECT_EQ(CffFile("").width(0), std::nullopt);
}

TEST(PdfCffFile, everyCutIsReadAsFarAsItGoes) {
    for (const std::string& bytes : {cff(smallFont()), cff(cidFont())})
        for (std::size_t size = 0; size < bytes.size(); ++size) {
            CffFile font(std::string_view(bytes).substr(0, size));
            EXPECT_LE(font.glyphCount(), 5U);
            EXPECT_LE(font.glyphOfCid(12), 4U);
            EXPECT_LE(font.glyphOfCode('A'), 4U);
            EXPECT_EQ(font.width(1).value_or(0), 0);
        }
}

TEST(PdfCffFile, boxGivesAscentAndDescent) {
    Cff font = smallFont();
    font.topDict = cffInteger(-10) + cffInteger(-200) + cffInteger(1000) + cffInteger(800) + "\5";
    const std::string bytes = cff(font);
    EXPECT_EQ(CffFile(bytes).ascent(), 0.8F);
    EXPECT_EQ(CffFile(bytes).descent(), -0.2F);
    font.topDict = cffInteger(0) + cffInteger(-100001) + cffInteger(0) + cffInteger(100001) + "\5"; // senseless
    const std::string far = cff(font);
    EXPECT_EQ(CffFile(far).ascent(), std::nullopt);
    EXPECT_EQ(CffFile(far).descent(), std::nullopt);
    const std::string none = cff(smallFont());
    EXPECT_EQ(CffFile(none).ascent(), std::nullopt);
}

} // namespace
} // namespace quillow::pdf
