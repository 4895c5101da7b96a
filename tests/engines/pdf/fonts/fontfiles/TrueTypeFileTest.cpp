#include "engines/pdf/fonts/fontfiles/TrueTypeFile.h"

#include "tests/engines/pdf/fonts/fontfiles/FontBuilders.h"

#include <gtest/gtest.h>

#include <ostream>

namespace quillow::pdf {
namespace {

using namespace build;

std::string fontWithMaps(const std::vector<Subtable>& subtables, std::uint16_t glyphCount = 100) {
    return trueType({{"cmap", cmap(subtables)}, {"head", head(1000)}, {"maxp", maxp(glyphCount)}});
}

TEST(PdfTrueTypeFile, codeHasTheGlyphOfTheSymbolMapThenOfTheMacintoshMapThenOfUnicode) {
    const std::string bytes = fontWithMaps({{1, 0, format6(65, {11, 12, 13, 0})},
                                            {3, 0, format4({{0xF041, 0xF041, 1}, {0xF143, 0xF143, 3}})},
                                            {3, 1, format4({{65, 68, 21}})}});
    TrueTypeFile font(bytes);
    EXPECT_EQ(font.glyphOfCode(65), 1);  // F041
    EXPECT_EQ(font.glyphOfCode(66), 12); // (1,0)
    EXPECT_EQ(font.glyphOfCode(67), 3);  // F143
    EXPECT_EQ(font.glyphOfCode(68), 24); // (3,1)
    EXPECT_EQ(font.glyphOfCode(69), 0);
}

class PdfTrueTypeFileSymbols : public testing::TestWithParam<std::uint32_t> {};

TEST_P(PdfTrueTypeFileSymbols, symbolMapMayHaveItsCodesInFourPlaces) {
    const std::uint32_t code = GetParam() + 65;
    const std::string bytes = fontWithMaps({{3, 0, format4({{code, code, 7}})}});
    EXPECT_EQ(TrueTypeFile(bytes).glyphOfCode(65), 7);
    EXPECT_EQ(TrueTypeFile(bytes).glyphOfCode(66), 0);
}

INSTANTIATE_TEST_SUITE_P(Places, PdfTrueTypeFileSymbols, testing::Values(0U, 0xF000U, 0xF100U, 0xF200U));

TEST(PdfTrueTypeFile, symbolCodesInAUnicodeMapAreFound) {
    const std::string bytes = fontWithMaps({{3, 1, format4({{0xF041, 0xF041, 7}})}});
    EXPECT_EQ(TrueTypeFile(bytes).glyphOfCode(65), 7);
}

TEST(PdfTrueTypeFile, mapOfAnotherEncodingIsTheLastResort) {
    const std::string bytes = fontWithMaps({{3, 2, format6(65, {5})}});
    TrueTypeFile font(bytes);
    EXPECT_EQ(font.glyphOfCode(65), 5);
    EXPECT_EQ(font.glyphOfUnicode(65), 0);
    EXPECT_EQ(font.charactersOfGlyph(5), U"");
}

TEST(PdfTrueTypeFile, characterHasTheGlyphOfTheFullestMap) {
    const std::string bytes = fontWithMaps(
        {{0, 3, format4({{65, 66, 1}})}, {3, 1, format4({{65, 65, 11}})}, {3, 10, format12({{0x1F600, 0x1F600, 21}})}});
    TrueTypeFile font(bytes);
    EXPECT_EQ(font.glyphOfUnicode(0x1F600), 21);
    EXPECT_EQ(font.glyphOfUnicode(65), 11);
    EXPECT_EQ(font.glyphOfUnicode(66), 2);
    EXPECT_EQ(font.glyphOfUnicode(67), 0);
    EXPECT_EQ(font.glyphOfUnicode(0xFFFFFFFF), 0);
}

struct CharacterCase {
    std::string_view name;
    CodeRanges codes; ///< of glyph 1
    std::u32string_view characters;
    friend void PrintTo(const CharacterCase& characterCase, std::ostream* out) { *out << characterCase.name; }
};

class PdfTrueTypeFileCharacters : public testing::TestWithParam<CharacterCase> {};

TEST_P(PdfTrueTypeFileCharacters, glyphShowsThePlainestThenTheLowestCharacter) {
    const std::string bytes = fontWithMaps({{3, 10, format12(GetParam().codes)}});
    EXPECT_EQ(TrueTypeFile(bytes).charactersOfGlyph(1), GetParam().characters) << GetParam().name;
}

INSTANTIATE_TEST_SUITE_P(
    Preferences, PdfTrueTypeFileCharacters,
    testing::Values(CharacterCase{"one", {{65, 65, 1}}, U"A"}, CharacterCase{"none", {{65, 65, 2}}, U""},
                    CharacterCase{"blank, no-break space", {{0x20, 0x20, 1}, {0xA0, 0xA0, 1}}, U" "},
                    CharacterCase{"carriage return, blank", {{0xD, 0xD, 1}, {0x20, 0x20, 1}}, U" "},
                    CharacterCase{"radical, ideograph", {{0x2F00, 0x2F00, 1}, {0x4E00, 0x4E00, 1}}, U"\u4E00"},
                    CharacterCase{"only a radical", {{0x2F00, 0x2F00, 1}}, U"\u2F00"},
                    CharacterCase{"private use, ligature", {{0xE000, 0xE000, 1}, {0xFB01, 0xFB01, 1}}, U"\uFB01"},
                    CharacterCase{"only private use", {{0xE001, 0xE001, 1}}, U"\uE001"}));

TEST(PdfTrueTypeFile, charactersOfGlyphComeFromAllUnicodeMaps) {
    const std::string bytes = fontWithMaps({{0, 3, format4({{65, 65, 1}})},
                                            {0, 4, format12({{66, 66, 2}})},
                                            {0, 5, u16(14) + u32(10) + u32(0)},
                                            {3, 1, format4({{67, 67, 3}})},
                                            {3, 10, format12({{68, 68, 4}})}});
    TrueTypeFile font(bytes);
    EXPECT_EQ(font.charactersOfGlyph(1), U"A");
    EXPECT_EQ(font.charactersOfGlyph(2), U"B");
    EXPECT_EQ(font.charactersOfGlyph(3), U"C");
    EXPECT_EQ(font.charactersOfGlyph(4), U"D");
    EXPECT_EQ(font.charactersOfGlyph(5), U"");
    EXPECT_EQ(font.charactersOfGlyph(0xFFFF), U"");
}

TEST(PdfTrueTypeFile, glyphOfCidIsTheCidIfTheFontHasSuchAGlyph) {
    const std::string bytes = fontWithMaps({}, 3);
    TrueTypeFile font(bytes);
    EXPECT_EQ(font.glyphCount(), 3U);
    EXPECT_EQ(font.glyphOfCid(2), 2);
    EXPECT_EQ(font.glyphOfCid(3), 0);
    EXPECT_EQ(font.glyphOfCid(0x10001), 0);
}

TEST(PdfTrueTypeFile, hasNoMoreGlyphsThanBytes) {
    EXPECT_EQ(TrueTypeFile(trueType({{"maxp", maxp(0xFFFF)}})).glyphCount(), 12 + 16 + 6U);
    EXPECT_EQ(TrueTypeFile(trueType({{"maxp", ""}})).glyphCount(), 12 + 16U); // the number is missing
    EXPECT_EQ(TrueTypeFile(trueType({{"junk", std::string(100000, ' ')}})).glyphCount(), 0xFFFFU);
}

TEST(PdfTrueTypeFile, namesComeFromPost) {
    const std::string bytes = fontWithMaps({{1, 0, format6(65, {1, 2})}});
    std::string named = trueType({{"cmap", cmap({{1, 0, format6(65, {1, 2})}})},
                                  {"maxp", maxp(3)},
                                  {"post", post2({0, 36, 258}, {"Abreve.sc"})}});
    TrueTypeFile font(named);
    EXPECT_EQ(font.nameOfGlyph(0), ".notdef");
    EXPECT_EQ(font.nameOfGlyph(1), "A");
    EXPECT_EQ(font.nameOfCode(66), "Abreve.sc");
    EXPECT_EQ(font.nameOfCode(67), "");
    EXPECT_EQ(font.glyphOfName("Abreve.sc"), 2);
    EXPECT_EQ(font.glyphOfName("B"), 0);
    EXPECT_EQ(font.glyphOfName(""), 0);
    EXPECT_EQ(TrueTypeFile(bytes).nameOfCode(65), "");
}

TEST(PdfTrueTypeFile, lastWidthIsThatOfAllFurtherGlyphs) {
    const std::string bytes =
        trueType({{"head", head(2000)}, {"hhea", hhea(1600, -400, 2)}, {"hmtx", hmtx({1000, 500})}, {"maxp", maxp(4)}});
    TrueTypeFile font(bytes);
    EXPECT_EQ(font.width(0), 0.5F);
    EXPECT_EQ(font.width(1), 0.25F);
    EXPECT_EQ(font.width(3), 0.25F);
    EXPECT_EQ(font.width(4), std::nullopt);
    EXPECT_EQ(font.ascent(), 0.8F);
    EXPECT_EQ(font.descent(), -0.2F);
}

TEST(PdfTrueTypeFile, lineMetricsComeFromWindowsIfTheHeaderHasNone) {
    const std::string metrics = std::string(68, '\0') + u16s({900, 0xFFFFFF9C});
    const std::string bytes = trueType({{"OS/2", metrics}, {"head", head(1000)}, {"hhea", hhea(0, 0, 0)}});
    EXPECT_EQ(TrueTypeFile(bytes).ascent(), 0.9F);
    EXPECT_EQ(TrueTypeFile(bytes).descent(), -0.1F);
}

TEST(PdfTrueTypeFile, saysNothingOfLengthsThatItDoesNotKnow) {
    const std::string noUnits = trueType({{"hhea", hhea(800, -200, 1)}, {"hmtx", hmtx({500})}, {"maxp", maxp(1)}});
    EXPECT_EQ(TrueTypeFile(noUnits).width(0), std::nullopt);
    EXPECT_EQ(TrueTypeFile(noUnits).ascent(), std::nullopt);
    const std::string noMetrics = trueType({{"head", head(1000)}, {"maxp", maxp(1)}});
    EXPECT_EQ(TrueTypeFile(noMetrics).width(0), std::nullopt);
    EXPECT_EQ(TrueTypeFile(noMetrics).descent(), std::nullopt);
}

TEST(PdfTrueTypeFile, collectionGivesItsFirstFont) {
    const std::string bytes = collection({{{"maxp", maxp(7)}}, {{"maxp", maxp(9)}}});
    EXPECT_EQ(TrueTypeFile(bytes).glyphCount(), 7U);
}

TEST(PdfTrueTypeFile, tableThatEndsBeyondTheFileIsReadAsFarAsItGoes) {
    const std::string bytes = fontWithMaps({{3, 1, format4WithArray(65, {5, 6})}});
    // Cut inside "cmap", whose bytes come first: the last glyph is missing, and all other tables.
    const std::size_t end = 12 + 3 * 16 + 12 + 34;
    TrueTypeFile font(std::string_view(bytes).substr(0, end));
    EXPECT_EQ(font.glyphOfCode(65), 5);
    EXPECT_EQ(font.glyphOfCode(66), 0);
    EXPECT_EQ(font.width(5), std::nullopt);
}

TEST(PdfTrueTypeFile, directoryMayClaimMoreTablesThanItHas) {
    std::string bytes = trueType({{"maxp", maxp(9)}});
    bytes.replace(4, 2, u16(0xFFFF));
    EXPECT_EQ(TrueTypeFile(bytes).glyphCount(), 9U);
}

TEST(PdfTrueTypeFile, tableWithAnOffsetBeyondTheFileIsMissing) {
    std::string bytes = trueType({{"maxp", maxp(9)}, {"head", head(10)}});
    bytes.replace(12 + 8, 4, u32(0xFFFFFFF0));
    EXPECT_EQ(TrueTypeFile(bytes).glyphCount(), bytes.size());
}

TEST(PdfTrueTypeFile, readsNoMoreTablesThanItsLimit) {
    constexpr std::size_t kMostTables = 256;
    Tables tables(kMostTables, {"junk", ""});
    tables.back() = {"maxp", maxp(9)};
    EXPECT_EQ(TrueTypeFile(trueType(tables)).glyphCount(), 9U);
    tables.insert(tables.begin(), {"junk", ""});
    EXPECT_NE(TrueTypeFile(trueType(tables)).glyphCount(), 9U);
}

TEST(PdfTrueTypeFile, compactFontInsideGivesNamesAndCodes) {
    Cff inside;
    inside.strings = {"Aogonek.sc"};
    inside.charStrings = emptyCharStrings(3);
    inside.charset = u8(0) + u16(34) + u16(391);
    inside.encoding = u8(0) + u8(2) + u8(65) + u8(1);
    const std::string bytes = trueType({{"CFF ", cff(inside)},
                                        {"cmap", cmap({{3, 1, format4({{66, 66, 2}})}})},
                                        {"head", head(1000)},
                                        {"hhea", hhea(0, 0, 1)},
                                        {"hmtx", hmtx({600})}},
                                       "OTTO");
    TrueTypeFile font(bytes);
    EXPECT_EQ(font.glyphCount(), 3U);
    EXPECT_EQ(font.nameOfGlyph(1), "A");
    EXPECT_EQ(font.nameOfCode(1), "Aogonek.sc");
    EXPECT_EQ(font.nameOfCode(66), "Aogonek.sc"); // by the character map
    EXPECT_EQ(font.glyphOfCode(65), 1);
    EXPECT_EQ(font.glyphOfName("Aogonek.sc"), 2);
    EXPECT_EQ(font.charactersOfGlyph(2), U"B");
    EXPECT_EQ(font.width(2), 0.6F);
    EXPECT_FALSE(font.isCidKeyed());
}

TEST(PdfTrueTypeFile, compactFontInsideGivesCidsAndWidths) {
    Cff inside;
    inside.strings = {"Adobe", "Japan1"};
    inside.charStrings = emptyCharStrings(2);
    inside.isCidKeyed = true;
    inside.charset = u8(0) + u16(843);
    inside.fontDicts = {""};
    inside.fontDictSelect = u8(0) + u8(0) + u8(0);
    inside.privateDict = cffInteger(700) + "\x14";
    const std::string bytes = trueType({{"CFF ", cff(inside)}}, "OTTO");
    TrueTypeFile font(bytes);
    EXPECT_TRUE(font.isCidKeyed());
    EXPECT_EQ(font.ordering(), "Japan1");
    EXPECT_EQ(font.glyphOfCid(843), 1);
    EXPECT_EQ(font.glyphOfCid(1), 0);
    EXPECT_EQ(font.width(1), 0.7F);
}

} // namespace
} // namespace quillow::pdf
