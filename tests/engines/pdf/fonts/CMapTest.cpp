#include "engines/pdf/fonts/CMap.h"

#include "engines/pdf/fonts/Characters.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace quillow::pdf {
namespace {

std::u32string charactersOf(const CMap& map, std::uint32_t code) {
    std::u32string characters;
    map.charactersOf(code, characters);
    return characters;
}

struct CharacterCase {
    const char* name;
    const char* map;
    std::uint32_t code;
    std::u32string characters;
    friend void PrintTo(const CharacterCase& characterCase, std::ostream* out) { *out << characterCase.name; }
};

class CMapCharacters : public testing::TestWithParam<CharacterCase> {};

TEST_P(CMapCharacters, areThoseOfTheCode) {
    const CMap map = CMap::parse(GetParam().map);
    EXPECT_EQ(charactersOf(map, GetParam().code), GetParam().characters);
}

const CharacterCase kCharacterCases[] = {
    {"single", "1 beginbfchar <41> <0061> endbfchar", 0x41, U"a"},
    {"codeThatIsNotThere", "1 beginbfchar <41> <0061> endbfchar", 0x42, U""},
    {"codeOfTwoBytes", "1 beginbfchar <0041> <0061> endbfchar", 0x41, U"a"},
    {"ligature", "1 beginbfchar <01> <006600660069> endbfchar", 1, U"ffi"},
    {"surrogatePair", "1 beginbfchar <01> <D835DC00> endbfchar", 1, U"\U0001D400"},
    {"loneHighSurrogate", "1 beginbfchar <01> <D8350041> endbfchar", 1, U"A"},
    {"loneLowSurrogate", "1 beginbfchar <01> <0041DC00> endbfchar", 1, U"A"},
    {"onlyAHalfOfAPair", "1 beginbfchar <01> <D835> <02> <0041> endbfchar", 1, U""},
    {"destinationOfOneByte", "1 beginbfchar <01> <41> endbfchar", 1, U"A"},
    {"destinationOfOneDigit", "1 beginbfchar <01> <9> endbfchar", 1, U"\t"},
    {"destinationOfThreeDigits", "1 beginbfchar <01> <3B1> endbfchar", 1, U"\u03B1"},
    {"destinationOfFiveDigits", "1 beginbfchar <01> <1D400> endbfchar", 1, U"\U0001D400"},
    {"destinationOfUtf32", "1 beginbfchar <01> <0001D400> endbfchar", 1, U"\U0001D400"},
    {"destinationOfUtf32InThePlane0", "1 beginbfchar <01> <00000041> endbfchar", 1, U"A"},
    {"codeOfOddDigits", "1 beginbfchar <141> <0061> endbfchar", 0x141, U"a"},
    {"whiteSpaceInDigits", "1 beginbfchar <0 1> <00 66\n00 69> endbfchar", 1, U"fi"},
    {"emptyDestination", "2 beginbfchar <01> <> <02> <0041> endbfchar", 2, U"A"},
    {"missingBracket", "2 beginbfchar <01 <0041> <02> <0042> endbfchar", 1, U"A"},
    {"missingDestination", "2 beginbfchar <01> endbfchar 1 beginbfchar <02> <0042> endbfchar", 2, U"B"},
    {"missingEnd", "1 beginbfchar <01> <0041> 1 beginbfrange <02> <03> <0042>", 3, U"C"},
    {"missingEverythingElse", "beginbfchar <01> <0041>", 1, U"A"},
    {"wrongCount", "100 beginbfchar <01> <0041> <02> <0042> endbfchar", 2, U"B"},
    {"comment", "1 beginbfchar % <01> <0041>\n<01> <0042> endbfchar", 1, U"B"},
    {"nameOfAGlyph", "1 beginbfchar <01> /eacute endbfchar", 1, U"\u00E9"},
    {"numberOfACharacter", "1 beginbfchar <01> 65 endbfchar", 1, U"A"},
    {"lastDefinitionCounts", "2 beginbfchar <01> <0041> <01> <0042> endbfchar", 1, U"B"},
    {"lastDefinitionCountsInARange", "beginbfrange <00> <FF> <0100> endbfrange beginbfchar <41> <0391> endbfchar", 0x41,
     U"\u0391"},
    {"codeBehindACodeInARange", "beginbfrange <00> <FF> <0100> endbfrange beginbfchar <41> <0391> endbfchar", 0x42,
     U"\u0142"},
    {"range", "1 beginbfrange <20> <7E> <0020> endbfrange", 0x41, U"A"},
    {"rangeAcrossALowByte", "1 beginbfrange <00F0> <0110> <00F0> endbfrange", 0x0105, U"\u0105"},
    {"rangeOfPairs", "1 beginbfrange <01> <1A> <D835DC00> endbfrange", 3, U"\U0001D402"},
    {"rangeOfSeveral", "1 beginbfrange <01> <03> <00660069> endbfrange", 3, U"fk"},
    {"rangeBackwards", "1 beginbfrange <05> <01> <0041> endbfrange", 3, U""},
    {"rangeOfOneByteInTwo", "1 beginbfrange <20> <7E> <20> endbfrange", 0x0041, U"A"},
    {"array", "1 beginbfrange <01> <03> [<0041> <00660069> <0043>] endbfrange", 2, U"fi"},
    {"arrayIsShorter", "2 beginbfrange <01> <09> [<0041>] <0A> <0B> <0061> endbfrange", 0x0B, U"b"},
    {"arrayIsLonger", "2 beginbfrange <01> <01> [<0041> <0042>] <02> <02> <0061> endbfrange", 2, U"a"},
    {"arrayOfNames", "1 beginbfrange <01> <02> [/alpha /beta] endbfrange", 2, U"\u03B2"},
    {"arrayWithoutEnd", "1 beginbfrange <01> <02> [<0041> <0042> endbfrange 1 beginbfchar <03> <0043> endbfchar", 3,
     U"C"},
    {"arrayInAnArray", "1 beginbfrange <01> <FFFFFFFF> [[<0041>] (x) <0042>] endbfrange", 1, U"A"},
    {"rangeUpToTheLastCharacter", "1 beginbfrange <00000000> <FFFFFFFF> <DBFFDFFF> endbfrange", 1, U""},
    {"hugeRange", "1 beginbfrange <00000000> <FFFFFFFF> <0000> endbfrange", 0x41, U"A"},
    {"hugeRangeOfSeveral", "1 beginbfrange <0000> <FFFF> <00660000> endbfrange", 0x69, U"fi"},
    {"notACMap", "<< /Type /Font >> stream", 0x41, U""},
    {"dictionaryAround",
     "/CIDInit /ProcSet findresource begin 12 dict begin begincmap /CIDSystemInfo << /Registry (Adobe) "
     "/Ordering (UCS) /Supplement 0 >> def 1 begincodespacerange <00> <FF> endcodespacerange "
     "1 beginbfchar <01> <0041> endbfchar endcmap",
     1, U"A"},
};

INSTANTIATE_TEST_SUITE_P(Pdf, CMapCharacters, testing::ValuesIn(kCharacterCases),
                         [](const auto& test) { return std::string(test.param.name); });

struct UsableCase {
    const char* name;
    std::u32string characters;
    std::u32string usable;
    CharacterEvidence evidence;
    friend void PrintTo(const UsableCase& usableCase, std::ostream* out) { *out << usableCase.name; }
};

class UsableCharacters : public testing::TestWithParam<UsableCase> {};

TEST_P(UsableCharacters, areKept) {
    std::u32string characters = GetParam().characters;
    EXPECT_EQ(keepUsable(characters, nullptr), GetParam().evidence);
    EXPECT_EQ(characters, GetParam().usable);
}

const UsableCase kUsableCases[] = {
    {"letters", U"fi", U"fi", CharacterEvidence::characters},
    {"softHyphen", U"\u00AD", U"\u00AD", CharacterEvidence::characters},
    {"noBreakSpace", U"\u00A0", U"\u00A0", CharacterEvidence::characters},
    {"presentationForm", U"\uFB01", U"\uFB01", CharacterEvidence::characters},
    {"nothing", U"", U"", CharacterEvidence::none},
    {"nul", std::u32string(1, 0), U"", CharacterEvidence::none},
    {"replacementCharacter", U"\uFFFD", U"", CharacterEvidence::none},
    {"pieceOfALargeSign", U"\uF8EB", U"\u239B", CharacterEvidence::characters},
    {"lastPieceOfALargeSign", U"\uF8FE", U"\u23AD", CharacterEvidence::characters},
    {"oldStyleFigure", U"\uF739", U"9", CharacterEvidence::characters},
    {"smallCapital", U"\uF761", U"a", CharacterEvidence::characters},
    {"smallCapitalWithAccent", U"\uF7E9", U"\u00E9", CharacterEvidence::characters},
    {"signOfAnUnknownFont", U"\uF0B7", U"", CharacterEvidence::none},
    {"kangxiRadical", U"\u2F08", U"\u4EBA", CharacterEvidence::characters},
    {"radicalOfTheSupplement", U"\u2EA0", U"\u6C11", CharacterEvidence::characters},
    {"radicalWithoutIdeograph", U"\u2E80", U"\u2E80", CharacterEvidence::characters},
    {"privateUse", U"\uE001", U"", CharacterEvidence::none},
    {"privateUsePlane", U"\U000F0001", U"", CharacterEvidence::none},
    {"noncharacter", U"\uFFFF", U"", CharacterEvidence::none},
    {"surrogate", std::u32string(1, 0xD800), U"", CharacterEvidence::none},
    {"control", U"\u0003", U"", CharacterEvidence::none},
    {"controlOfTheSecondSet", U"\u0093", U"", CharacterEvidence::none},
    {"beyondUnicode", std::u32string(1, 0x110000), U"", CharacterEvidence::none},
    {"byteOrderMark", U"\uFEFF", U"", CharacterEvidence::none},
    {"byteOrderMarkBeforeALetter", U"\uFEFFA", U"A", CharacterEvidence::characters},
    {"letterAndPrivateUse", U"f\uE001", U"f", CharacterEvidence::characters},
    {"tab", U"\t", U"", CharacterEvidence::blank},
    {"lineEnd", U"\r\n", U"", CharacterEvidence::blank},
    {"lineSeparator", U"\u2028", U"", CharacterEvidence::blank},
    {"letterAndLineEnd", U"A\n", U"A", CharacterEvidence::characters},
};

INSTANTIATE_TEST_SUITE_P(Pdf, UsableCharacters, testing::ValuesIn(kUsableCases),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(PdfCharacters, signsOfASymbolFontComeFromItsTable) {
    std::u32string bullet = U"\uF0B7";
    EXPECT_EQ(keepUsable(bullet, text::symbolToUnicode), CharacterEvidence::characters);
    EXPECT_EQ(bullet, U"\u2022");
}

TEST(CMapJudgement, valueOfNearlyAllCodesIsNotBelieved) {
    const CMap map = CMap::parse("beginbfchar <01> <0020> <02> <0020> <03> <0020> <04> <0020> <05> <0041> endbfchar");
    EXPECT_EQ(charactersOf(map, 1), U"");
    EXPECT_EQ(charactersOf(map, 5), U"A");
}

TEST(CMapJudgement, valueOfSomeCodesIsBelieved) {
    const CMap map = CMap::parse("beginbfchar <01> <0020> <02> <0020> <03> <0020> <04> <0042> <05> <0041> endbfchar");
    EXPECT_EQ(charactersOf(map, 1), U" ");
}

TEST(CMapJudgement, fewCodesMayShowTheSame) {
    const CMap map = CMap::parse("beginbfchar <01> <0020> <02> <0020> <03> <0020> endbfchar");
    EXPECT_EQ(charactersOf(map, 3), U" ");
}

TEST(CMapJudgement, fewCodesAmongEmptyOnesAreBelieved) {
    const CMap map = CMap::parse("beginbfchar <01> <D83D> <02> <0020> <03> <D83C> <04> <D83D> endbfchar");
    EXPECT_EQ(charactersOf(map, 2), U" ");
}

TEST(CMapJudgement, mapOfControlsIsNotBelieved) {
    const CMap map = CMap::parse("beginbfrange <01> <08> <0001> endbfrange beginbfchar <41> <0061> endbfchar");
    EXPECT_EQ(charactersOf(map, 0x41), U"");
}

TEST(CMapJudgement, someControlsDoNotSpoilTheOtherCodes) {
    const CMap map = CMap::parse("beginbfrange <01> <02> <0001> <41> <49> <0061> endbfrange");
    EXPECT_EQ(charactersOf(map, 0x41), U"a");
}

TEST(CMapJudgement, identityIsDoubtful) {
    EXPECT_TRUE(CMap::parse("beginbfrange <0000> <FFFF> <0000> endbfrange").isDoubtful());
    EXPECT_TRUE(CMap::parse("beginbfrange <20> <7E> <0020> endbfrange beginbfchar <80> <20AC> endbfchar").isDoubtful());
    EXPECT_FALSE(CMap::parse("beginbfrange <20> <7E> <0021> endbfrange").isDoubtful());
    EXPECT_FALSE(CMap::parse("beginbfchar <41> <0041> endbfchar").isDoubtful()); // too few to judge
    EXPECT_FALSE(CMap::parse("").isDoubtful());
}

TEST(CMapJudgement, mapWithManyEmptyDestinationsIsDoubtful) {
    const std::string sound = "<05> <0061> <06> <0065> <07> <0069> <08> <006F> ";
    EXPECT_TRUE(CMap::parse("beginbfchar " + sound + "<01> <> <02> <> <03> <> <04> <>").isDoubtful());
    EXPECT_TRUE(CMap::parse("beginbfchar <01> <0061> <02> <> <03> <> <04> <>").isDoubtful());
    EXPECT_FALSE(CMap::parse("beginbfchar " + sound + "<01> <>").isDoubtful());
}

TEST(CMap, selectsCids) {
    const CMap map = CMap::parse("1 begincidrange <8140> <817E> 633 endcidrange 1 begincidchar <80> 97 endcidchar");
    EXPECT_EQ(map.cidOf(0x8141), 634U);
    EXPECT_EQ(map.cidOf(0x80), 97U);
    EXPECT_EQ(map.cidOf(0x817F), std::nullopt);
    EXPECT_TRUE(map.hasCids());
    EXPECT_FALSE(map.hasCharacters());
}

TEST(CMap, hasTheCodespaceOfItsFile) {
    const CMap map = CMap::parse("2 begincodespacerange <00> <80> <8140> <FEFE> endcodespacerange");
    ASSERT_EQ(map.codespace().size(), 2U);
    EXPECT_EQ(map.codespace()[0].bytes, 1);
    EXPECT_EQ(map.codespace()[1].bytes, 2);
    EXPECT_EQ(map.codespace()[1].first, 0x8140U);
    EXPECT_EQ(map.codespace()[1].last, 0xFEFEU);
}

TEST(CMap, isVerticalIfItSaysSo) {
    EXPECT_TRUE(CMap::parse("/WMode 1 def").isVertical());
    EXPECT_FALSE(CMap::parse("/WMode 0 def").isVertical());
    EXPECT_FALSE(CMap::parse("").isVertical());
}

TEST(CMap, namesTheCMapOnWhichItIsBased) {
    EXPECT_EQ(CMap::parse("/CMapName /Own def /90ms-RKSJ-H usecmap").base(), "90ms-RKSJ-H");
    EXPECT_EQ(CMap::parse("/CMapName /Own def").base(), "");
}

std::string characterLines(std::size_t count, const char* destination) {
    std::string lines = "beginbfchar ";
    for (std::size_t i = 0; i < count; ++i)
        lines += "<" + std::to_string(10'000'000 + 3 * i) + "> <" + destination + "> ";
    return lines + "endbfchar";
}

TEST(CMapLimits, characterSequencesOverTheLimitAreLeftOut) {
    std::string sequence;
    for (int i = 0; i < 1023; ++i)
        sequence += "0041";
    const CMap map = CMap::parse(characterLines(CMap::kMaximumSeveral / 1024 + 1, sequence.c_str()));
    EXPECT_EQ(charactersOf(map, 0x10000000).size(), 1023U);
    EXPECT_EQ(charactersOf(map, 0x10003072).size(), 0U);
}

TEST(CMapLimits, rangesOfSequencesEndAtTheLimit) {
    const CMap map = CMap::parse("beginbfrange <0000> <FFFF> <00410000> endbfrange");
    EXPECT_EQ(charactersOf(map, 0xFF).size(), 2U);
    EXPECT_EQ(charactersOf(map, 0x100).size(), 0U);
}

TEST(CMapLimits, codespaceRangesOverTheLimitAreLeftOut) {
    std::string ranges = "begincodespacerange ";
    for (std::size_t i = 0; i <= CMap::kMaximumCodespaceRanges; ++i)
        ranges += "<00> <80> ";
    EXPECT_EQ(CMap::parse(ranges).codespace().size(), CMap::kMaximumCodespaceRanges);
}

} // namespace
} // namespace quillow::pdf
