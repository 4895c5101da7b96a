#include "tests/engines/pdf/fonts/TestFonts.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

using namespace std::string_literals;

namespace quillow::pdf::test {
namespace {

std::string type0(const std::string& entries, const std::string& descendant) {
    return "<</Type/Font/Subtype/Type0/BaseFont/Unheard" + entries + "/DescendantFonts[<</Subtype/CIDFontType2" +
           descendant + ">>]>>";
}

const std::string kJapan = "/CIDSystemInfo<</Registry(Adobe)/Ordering(Japan1)/Supplement 2>>";
const std::string kOwn = "/CIDSystemInfo<</Registry(Adobe)/Ordering(Identity)/Supplement 0>>";

struct CharacterCase {
    const char* name;
    std::vector<std::string> objects;
    std::string codes;
    std::u32string characters;
    friend void PrintTo(const CharacterCase& characterCase, std::ostream* out) { *out << characterCase.name; }
};

class CompositeFontCharacters : public testing::TestWithParam<CharacterCase> {};

TEST_P(CompositeFontCharacters, comeFromTheBestEvidence) {
    FontDocument document(GetParam().objects);
    EXPECT_EQ(textOf(document.font(), GetParam().codes), GetParam().characters);
}

const std::string kIdentity = "/Encoding/Identity-H";
const std::string kToUnicode = "/ToUnicode 6 0 R";

const CharacterCase kCharacterCases[] = {
    {"toUnicode",
     {type0(kIdentity + kToUnicode, kOwn), streamBody("beginbfchar <0003> <00660069> endbfchar")},
     "\0\3\0\4"s,
     U"fi\uFFFD"},
    {"toUnicodeOfCodesOfOneByte",
     {type0(kIdentity + kToUnicode, kOwn),
      streamBody("begincodespacerange <00> <FF> endcodespacerange beginbfchar <03> <0041> endbfchar")},
     "\0\3"s,
     U"A"},
    {"collectionWithoutToUnicode", {type0(kIdentity, kJapan)}, "\0\x22"s, U"A"},
    {"collectionBeforeIdentityInToUnicode",
     {type0(kIdentity + kToUnicode, kJapan), streamBody("beginbfrange <0000> <FFFF> <0000> endbfrange")},
     "\0\x22"s,
     U"A"},
    {"identityInToUnicodeIfNothingElseIsKnown",
     {type0(kIdentity + kToUnicode, kOwn), streamBody("beginbfrange <0000> <FFFF> <0000> endbfrange")},
     "\0A"s,
     U"A"},
    {"wholeLineInToUnicode",
     {type0(kIdentity + kToUnicode, kJapan),
      streamBody("beginbfchar <0022> <00610062006300640065006600670068 0069> endbfchar")},
     "\0\x22"s,
     U"A"},
    {"toUnicodeThatIsAName", {type0(kIdentity + "/ToUnicode/Identity-H", kOwn)}, "\0A"s, U"A"},
    {"toUnicodeOfACollection",
     {type0(kIdentity + kToUnicode, kOwn), streamBody("/Adobe-Japan1-UCS2 usecmap")},
     "\0\x22"s,
     U"A"},
    {"orderOfGlyphsInAWellKnownFont",
     {"<</Subtype/Type0/BaseFont/ABCDEF+TimesNewRomanPSMT/Encoding/Identity-H/DescendantFonts[<<" + kOwn + ">>]>>"},
     "\0\3\0\x24\0\x61\0\x62"s,
     U" A~\uFFFD"},
    {"predefinedLegacy", {type0("/Encoding/90ms-RKSJ-H", kJapan)}, "A\x88\x9F", U"A\u4E9C"},
    {"predefinedVertical", {type0("/Encoding/90ms-RKSJ-V", kJapan)}, "\x88\x9F", U"\u4E9C"},
    {"predefinedUnicode", {type0("/Encoding/UniJIS-UTF16-H", kJapan)}, "\x4E\x9C"s, U"\u4E9C"},
    {"predefinedUnicodePair", {type0("/Encoding/UniJIS-UTF16-H", kJapan)}, "\xD8\x40\xDC\x0B"s, U"\U0002000B"},
    {"embeddedCMap",
     {type0("/Encoding 6 0 R", kJapan),
      streamBody("1 begincodespacerange <00> <FF> endcodespacerange begincidrange <41> <5A> 34 endcidrange")},
     "AB",
     U"AB"},
    {"embeddedCMapOverAPredefinedOne",
     {type0("/Encoding 6 0 R", kJapan), streamBody("/90ms-RKSJ-H usecmap begincidchar <41> 35 endcidchar")},
     "AC\x88\x9F",
     U"BC\u4E9C"},
    {"embeddedCMapOverAnEmbeddedOne",
     {type0("/Encoding 6 0 R", kJapan), streamBody("begincidchar <0001> 34 endcidchar", "/UseCMap 7 0 R"),
      streamBody("begincidchar <0001> 50 <0002> 35 endcidchar")},
     "\0\1\0\2"s,
     U"AB"},
    {"embeddedCMapsInACycle",
     {type0("/Encoding 6 0 R", kJapan), streamBody("begincidchar <0001> 34 endcidchar", "/UseCMap 6 0 R")},
     "\0\1"s,
     U"A"},
    {"encodingIsMissing", {type0("", kJapan)}, "\0\x22"s, U"A"},
    {"encodingIsUnknown", {type0("/Encoding/Nonsense", kJapan)}, "\0\x22"s, U"A"},
    {"encodingIsEmpty", {type0("/Encoding 6 0 R", kJapan), streamBody("")}, "\0\x22"s, U"A"},
    {"descendantWithoutArray", {"<</Subtype/Type0/DescendantFonts 6 0 R>>", "<<" + kJapan + ">>"}, "\0\x22"s, U"A"},
    {"descendantInReferences",
     {"<</Subtype/Type0/DescendantFonts 6 0 R>>", "[7 0 R]", "<<" + kJapan + ">>"},
     "\0\x22"s,
     U"A"},
    {"descendantIsMissing", {"<</Subtype/Type0/Encoding/Identity-H>>"}, "\0\x22"s, U"\uFFFD"},
    {"lastByteAlone", {type0(kIdentity, kJapan)}, "\0\x22\0"s, U"A\uFFFD"},
};

INSTANTIATE_TEST_SUITE_P(Pdf, CompositeFontCharacters, testing::ValuesIn(kCharacterCases),
                         [](const auto& test) { return std::string(test.param.name); });

struct WidthCase {
    const char* name;
    std::string descendant;
    std::string code;
    float width;
    friend void PrintTo(const WidthCase& widthCase, std::ostream* out) { *out << widthCase.name; }
};

class CompositeFontWidth : public testing::TestWithParam<WidthCase> {};

TEST_P(CompositeFontWidth, isThatOfTheDocument) {
    FontDocument document({type0(kIdentity, GetParam().descendant), "[300 400]", "77"});
    EXPECT_FLOAT_EQ(glyphOf(document.font(), GetParam().code).width, GetParam().width);
}

const WidthCase kWidthCases[] = {
    {"defaultOfTheStandard", "", "\0\1"s, 1},
    {"defaultOfTheFont", "/DW 600", "\0\1"s, 0.6F},
    {"list", "/W[1[500 250]]", "\0\2"s, 0.25F},
    {"behindTheList", "/W[1[500 250]]/DW 100", "\0\3"s, 0.1F},
    {"listInAReference", "/W[1 6 0 R]", "\0\2"s, 0.4F},
    {"range", "/W[1 5 500]", "\0\5"s, 0.5F},
    {"rangeInReferences", "/W[1 7 0 R 500]", "\0\x4D"s, 0.5F},
    {"behindTheRange", "/W[1 5 500]", "\0\6"s, 1},
    {"unsorted", "/W[9[900] 1[100] 5 6 500]", "\0\6"s, 0.5F},
    {"nonsenseBefore", "/W[/A null 1[100]]", "\0\1"s, 0.1F},
    {"cutAtTheEnd", "/W[1[100] 2 3]", "\0\1"s, 0.1F},
    {"emptyList", "/W[1[] 1 1 300]", "\0\1"s, 0.3F},
    {"cidOutOfRange", "/W[-1[100] 70000[200]]", "\0\1"s, 1},
    {"rangeUpToTheLastCid", "/W[0 99999 300]", "\xFF\xFF"s, 0.3F},
    {"absurd", "/W[1[99999999999]]", "\0\1"s, 1000},
};

INSTANTIATE_TEST_SUITE_P(Pdf, CompositeFontWidth, testing::ValuesIn(kWidthCases),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(CompositeFont, verticalMetricsHaveTheDefaultsOfTheStandard) {
    FontDocument document({type0("/Encoding/Identity-V", "/DW 600")});
    EXPECT_TRUE(document.font().isVertical());
    const FontGlyph& glyph = glyphOf(document.font(), "\0\1"s);
    EXPECT_FLOAT_EQ(glyph.verticalAdvance, -1);
    EXPECT_FLOAT_EQ(glyph.verticalX, -0.3F);
    EXPECT_FLOAT_EQ(glyph.verticalY, -0.88F);
}

TEST(CompositeFont, verticalMetricsAreThoseOfTheFont) {
    FontDocument document({type0("/Encoding/Identity-V", "/DW2[800 -900]/W2[1[-500 250 700] 5 6 -400 200 600]")});
    const FontGlyph& list = glyphOf(document.font(), "\0\1"s);
    EXPECT_FLOAT_EQ(list.verticalAdvance, -0.5F);
    EXPECT_FLOAT_EQ(list.verticalX, -0.25F);
    EXPECT_FLOAT_EQ(list.verticalY, -0.7F);
    const FontGlyph& range = glyphOf(document.font(), "\0\6"s);
    EXPECT_FLOAT_EQ(range.verticalAdvance, -0.4F);
    const FontGlyph& other = glyphOf(document.font(), "\0\2"s);
    EXPECT_FLOAT_EQ(other.verticalAdvance, -0.9F);
    EXPECT_FLOAT_EQ(other.verticalY, -0.8F);
}

TEST(CompositeFont, isVerticalByItsCMap) {
    const auto isVertical = [](const std::string& encoding, const std::string& stream = "null") {
        return FontDocument({type0("/Encoding" + encoding, ""), stream}).font().isVertical();
    };
    EXPECT_FALSE(isVertical("/Identity-H"));
    EXPECT_TRUE(isVertical("/UniJIS-UTF16-V"));
    EXPECT_TRUE(isVertical(" 6 0 R", streamBody("/WMode 1 def")));
    EXPECT_TRUE(isVertical(" 6 0 R", streamBody("", "/WMode 1")));
    EXPECT_FALSE(isVertical(" 6 0 R", streamBody("")));
}

TEST(CompositeFont, cmapsAreFollowedAsFarAsAllowed) {
    constexpr std::uint32_t kMaximumChain = 8;
    const auto isVerticalAfter = [](std::uint32_t maps) {
        std::vector<std::string> objects = {type0("/Encoding 6 0 R", "")};
        for (std::uint32_t i = 1; i < maps; ++i)
            objects.push_back(streamBody("", "/UseCMap " + std::to_string(6 + i) + " 0 R"));
        objects.push_back(streamBody("/WMode 1 def"));
        return FontDocument(objects).font().isVertical();
    };
    EXPECT_TRUE(isVerticalAfter(kMaximumChain));
    EXPECT_FALSE(isVerticalAfter(kMaximumChain + 1));
    FontDocument cycle({type0("/Encoding 6 0 R", ""), streamBody("", "/UseCMap 6 0 R")});
    EXPECT_FALSE(cycle.font().isVertical());
}

TEST(CompositeFont, wordSpaceIsACodeOfOneByte) {
    FontDocument two({type0(kIdentity, kJapan)});
    EXPECT_FALSE(glyphOf(two.font(), "\0 "s).isWordSpace);
    FontDocument mixed({type0("/Encoding/90ms-RKSJ-H", kJapan)});
    EXPECT_TRUE(glyphOf(mixed.font(), " ").isWordSpace);
}

} // namespace
} // namespace quillow::pdf::test
