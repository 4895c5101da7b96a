#include "tests/engines/pdf/fonts/TestFonts.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

namespace quillow::pdf::test {
namespace {

std::string type1(const std::string& entries) {
    return "<</Type/Font/Subtype/Type1/BaseFont/Unheard" + entries + ">>";
}

std::string trueType(const std::string& entries) {
    return "<</Type/Font/Subtype/TrueType/BaseFont/Unheard" + entries + ">>";
}

std::string type3(const std::string& entries) {
    return "<</Type/Font/Subtype/Type3/FontMatrix[.001 0 0 .001 0 0]/CharProcs<<>>" + entries + ">>";
}

struct CharacterCase {
    const char* name;
    std::vector<std::string> objects;
    std::string codes;
    std::u32string characters;
    friend void PrintTo(const CharacterCase& characterCase, std::ostream* out) { *out << characterCase.name; }
};

class SimpleFontCharacters : public testing::TestWithParam<CharacterCase> {};

TEST_P(SimpleFontCharacters, comeFromTheBestEvidence) {
    FontDocument document(GetParam().objects);
    EXPECT_EQ(textOf(document.font(), GetParam().codes), GetParam().characters);
}

const std::string kToUnicode = "/ToUnicode 6 0 R";
const std::string kNames = "/Encoding<</Differences[65/alpha/beta/gamma/delta]>>";

const CharacterCase kCharacterCases[] = {
    {"toUnicodeBeforeNames",
     {type1(kToUnicode + kNames), streamBody("beginbfchar <41> <0058> endbfchar")},
     "AB",
     U"X\u03B2"},
    {"toUnicodeOfCodesOfTwoBytes",
     {type1(kToUnicode),
      streamBody("begincodespacerange <0000> <FFFF> endcodespacerange beginbfchar <0041> <0058> endbfchar")},
     "A",
     U"X"},
    {"emptyToUnicode", {type1(kToUnicode + kNames), streamBody("")}, "AB", U"\u03B1\u03B2"},
    {"toUnicodeThatIsNoStream", {type1("/ToUnicode 77 0 R" + kNames)}, "AB", U"\u03B1\u03B2"},
    {"toUnicodeToNothing",
     {type1(kToUnicode + kNames), streamBody("beginbfchar <41> <0000> <42> <FFFD> <43> <E001> <44> <0003> endbfchar")},
     "ABCD",
     U"\u03B1\u03B2\u03B3\u03B4"},
    {"toUnicodeToSpacesOnly",
     {type1(kToUnicode + kNames), streamBody("beginbfchar <41> <0020> <42> <0020> <43> <0020> <44> <0020> endbfchar")},
     "ABCD",
     U"\u03B1\u03B2\u03B3\u03B4"},
    {"identityInToUnicodeAgainstNames",
     {type1(kToUnicode + kNames), streamBody("beginbfrange <00> <FF> <0000> endbfrange")},
     "ABE",
     U"\u03B1\u03B2E"},
    {"identityInToUnicodeWithoutNames",
     {type3(kToUnicode), streamBody("beginbfrange <20> <7E> <0020> endbfrange")},
     "AB",
     U"AB"},
    {"winAnsi", {type1("/Encoding/WinAnsiEncoding")}, "A\x80\x95", U"A\u20AC\u2022"},
    {"macRoman", {type1("/Encoding/MacRomanEncoding")}, "A\x8A", U"A\u00E4"},
    {"baseEncodingUnderDifferences",
     {type1("/Encoding<</BaseEncoding/MacRomanEncoding/Differences[65/alpha]>>")},
     "A\x8A",
     U"\u03B1\u00E4"},
    {"standardWithoutEncoding", {type1("")}, "A\xAE", U"A\uFB01"},
    {"winAnsiOfTrueTypeWithoutEncoding", {trueType("")}, "A\x93", U"A\u201C"},
    {"symbolOfItsName", {"<</Subtype/Type1/BaseFont/Symbol>>"}, "a\xB7", U"\u03B1\u2022"},
    {"zapfDingbatsOfItsName", {"<</Subtype/Type1/BaseFont/ZapfDingbats>>"}, "4", U"\u2714"},
    {"namesOfZapfDingbats",
     {"<</Subtype/Type1/BaseFont/ABCDEF+ZapfDingbats/Encoding<</Differences[65/a20]>>>>"},
     "A",
     U"\u2714"},
    {"signsInsteadOfLetters",
     {"<</Subtype/TrueType/BaseFont/Wingdings-Regular/Encoding/WinAnsiEncoding>>"},
     "\xFC",
     U"\u2713"},
    {"signsInPrivateUse",
     {"<</Subtype/TrueType/BaseFont/SymbolMT/ToUnicode 6 0 R>>", streamBody("beginbfchar <01> <F0B7> endbfchar")},
     "\x01",
     U"\u2022"},
    {"texByItsName", {"<</Subtype/Type1/BaseFont/ABCDEF+CMMI10>>"}, "\x0B", U"\u03B1"},
    {"differencesInReferences",
     {type1("/Encoding 6 0 R"), "<</Differences 7 0 R>>", "[8 0 R/alpha 9 0 R]", "65", "/beta"},
     "AB",
     U"\u03B1\u03B2"},
    {"differencesOutOfRange",
     {type1("/Encoding<</Differences[-1/alpha/A 255/beta/gamma 999999/delta]>>")},
     std::string(1, '\0') + "\xFF",
     U"A\u03B2"},
    {"encodingThatIsNonsense", {type1("/Encoding 17")}, "A", U"A"},
    {"namesThatAreUnicode",
     {type1("/Encoding<</Differences[65/uni0416/u1D400/f_f_i/A.sc]>>")},
     "ABCD",
     U"\u0416\U0001D400ffiA"},
    {"namesThatAreCodes", {type3("/Encoding<</Differences[65/a72/a105]>>")}, "AB", U"Hi"},
    {"namesThatAreCodesOfTexLigatures", {type3("/Encoding<</Differences[11/a11/a12]>>")}, "\x0B", U"\uFB00"},
    {"codeNamesAmongOthers", {type3("/Encoding<</Differences[65/a72/weird]>>")}, "A", U"\uFFFD"},
    {"names", {type3(kNames)}, "A", U"\u03B1"},
    {"nothingKnown", {type3("")}, "A", U"\uFFFD"},
    {"namesThatAreCodesOfTexAccents",
     {type3("/Encoding<</Differences[192/a192 27/a27]>>")},
     "\xC0\x1B",
     U"\u00C0\uFB00"},
    {"namesThatAreHexadecimalCodes", {type3("/Encoding<</Differences[44/C2c 75/C4b]>>")}, ",K", U",K"},
    {"notDefined", {type1("/Encoding<</Differences[65/.notdef]>>")}, "AB", U"B"},
    {"blankThatIsNotDefined", {type1("/FirstChar 32/Widths[250]/Encoding<</Differences[32/.notdef]>>")}, " ", U" "},
    {"codeWithoutGlyphInAFontThatIsNotEmbedded",
     {type1("/Encoding/WinAnsiEncoding")},
     "\x01"
     "A",
     U"A"},
    {"fewCodeNamesOfASymbolicFont",
     {type1("/Encoding<</Differences[2/C223]>>/FontDescriptor<</Flags 4>>")},
     "\x02",
     U"\uFFFD"},
    {"manyCodeNamesOfASymbolicFont",
     {type1("/Encoding<</Differences[2/C65/C66/C67/C68/C69/C70/C71/C72]>>/FontDescriptor<</Flags 4>>")},
     "\x02",
     U"A"},
    {"wholeLineInToUnicode",
     {type1(kToUnicode + kNames), streamBody("beginbfchar <41> <00610062006300640065006600670068 0069> endbfchar")},
     "A",
     U"\u03B1"},
    {"longLigatureInToUnicode",
     {type3(kToUnicode), streamBody("beginbfchar <41> <00610062006300640065006600670068 0069> endbfchar")},
     "A",
     U"abcdefghi"},
    {"piecesOfDrawings",
     {"<</Subtype/Type1/BaseFont/ABCDEF+XYBTIP-Medium/Encoding<</Differences[65/weird]>>>>"},
     "A",
     U""},
    {"noFontAtAll", {"[1 2]"}, "A", U"A"},
    {"noObjectAtAll", {}, "A", U"A"},
    {"noBreakSpace", {type1("/Encoding/WinAnsiEncoding")}, "\xA0", U"\u00A0"},
    {"softHyphen", {type1(kToUnicode), streamBody("beginbfchar <2D> <00AD> endbfchar")}, "-", U"\u00AD"},
};

INSTANTIATE_TEST_SUITE_P(Pdf, SimpleFontCharacters, testing::ValuesIn(kCharacterCases),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(SimpleFont, glyphWithoutEvidenceIsNotKnown) {
    FontDocument document({type3("/Encoding<</Differences[65/alpha/weird]>>")});
    EXPECT_TRUE(glyphOf(document.font(), "A").isKnown);
    EXPECT_FALSE(glyphOf(document.font(), "B").isKnown);
}

TEST(SimpleFont, blankControlIsASpaceIfItIsAsWideAsAGap) {
    FontDocument document({type1("/FirstChar 9/Widths[250 0]/ToUnicode 6 0 R"),
                           streamBody("beginbfchar <09> <0009> <0A> <000A> endbfchar")});
    EXPECT_EQ(glyphOf(document.font(), "\t").text, U" ");
    EXPECT_EQ(glyphOf(document.font(), "\n").text, U"");
    EXPECT_TRUE(glyphOf(document.font(), "\n").isKnown);
}

TEST(SimpleFont, glyphStaysInItsPlace) {
    FontDocument document({type1("")});
    const FontGlyph& first = glyphOf(document.font(), "A");
    for (int code = 0; code < 256; ++code)
        (void)glyphOf(document.font(), std::string(1, static_cast<char>(code)));
    EXPECT_EQ(&glyphOf(document.font(), "A"), &first);
    EXPECT_EQ(first.text, U"A");
}

TEST(SimpleFont, wordSpaceIsCode32) {
    FontDocument document({type1("")});
    EXPECT_TRUE(glyphOf(document.font(), " ").isWordSpace);
    EXPECT_FALSE(glyphOf(document.font(), "A").isWordSpace);
}

struct WidthCase {
    const char* name;
    std::string font;
    std::string code;
    float width;
    friend void PrintTo(const WidthCase& widthCase, std::ostream* out) { *out << widthCase.name; }
};

class SimpleFontWidth : public testing::TestWithParam<WidthCase> {};

TEST_P(SimpleFontWidth, isThatOfTheDocument) {
    FontDocument document({GetParam().font, "333"});
    EXPECT_FLOAT_EQ(glyphOf(document.font(), GetParam().code).width, GetParam().width);
}

const WidthCase kWidthCases[] = {
    {"first", type1("/FirstChar 65/LastChar 67/Widths[500 600 6 0 R]"), "A", 0.5F},
    {"reference", type1("/FirstChar 65/LastChar 67/Widths[500 600 6 0 R]"), "C", 0.333F},
    {"zero", type1("/FirstChar 65/Widths[0]"), "A", 0},
    {"negative", type1("/FirstChar 65/Widths[-250]"), "A", -0.25F},
    {"absurd", type1("/FirstChar 65/Widths[99999999999]"), "A", 1000},
    {"belowTheFirst", type1("/FirstChar 65/Widths[500]"), "@", 0},
    {"aboveTheLast", type1("/FirstChar 65/Widths[500]/FontDescriptor<</MissingWidth 250>>"), "B", 0.25F},
    {"firstCharIsMissing", type1("/Widths[111]"), std::string(1, '\0'), 0.111F},
    {"standardFont", "<</Subtype/Type1/BaseFont/Helvetica>>", "A", 0.667F},
    {"standardFontByAnotherName", "<</Subtype/TrueType/BaseFont/CourierNew,Bold>>", "A", 0.6F},
    {"standardFontWithNames", "<</Subtype/Type1/BaseFont/Helvetica/Encoding<</Differences[65/i]>>>>", "A", 0.222F},
    {"symbol", "<</Subtype/Type1/BaseFont/Symbol>>", "a", 0.631F},
    {"likeAStandardFont", type1("/FontDescriptor<</Flags 33>>"), "A", 0.6F},
    {"type3", "<</Subtype/Type3/FontMatrix[.01 0 0 .01 0 0]/CharProcs<<>>/FirstChar 65/Widths[50]>>", "A", 0.5F},
    {"type3WithoutWidths", type3(""), "A", 0},
};

INSTANTIATE_TEST_SUITE_P(Pdf, SimpleFontWidth, testing::ValuesIn(kWidthCases),
                         [](const auto& test) { return std::string(test.param.name); });

struct ExtentCase {
    const char* name;
    std::string font;
    float ascent;
    float descent;
    friend void PrintTo(const ExtentCase& extentCase, std::ostream* out) { *out << extentCase.name; }
};

class FontExtent : public testing::TestWithParam<ExtentCase> {};

TEST_P(FontExtent, isSane) {
    FontDocument document({GetParam().font});
    EXPECT_FLOAT_EQ(document.font().ascent(), GetParam().ascent);
    EXPECT_FLOAT_EQ(document.font().descent(), GetParam().descent);
}

std::string described(const std::string& entries) {
    return type1("/FontDescriptor<<" + entries + ">>");
}

const ExtentCase kExtentCases[] = {
    {"ofTheDescriptor", described("/Ascent 800/Descent -200"), 0.8F, 0.2F},
    {"wrongSigns", described("/Ascent -800/Descent 200"), 0.8F, 0.2F},
    {"zeroes", described("/Ascent 0/Descent 0/FontBBox[-10 -210 1000 900]"), 0.9F, 0.21F},
    {"huge", described("/Ascent 32767/Descent -32768/FontBBox[0 -210 1000 900]"), 0.9F, 0.21F},
    {"hugeBoxToo", described("/Ascent 9999/FontBBox[0 -9000 1000 9000]"), 0.75F, 0.25F},
    {"shortBox", described("/FontBBox[0 -210]"), 0.75F, 0.25F},
    {"none", type1(""), 0.75F, 0.25F},
    {"standardFont", "<</Subtype/Type1/BaseFont/Helvetica>>", 0.718F, 0.207F},
    {"type3", "<</Subtype/Type3/FontMatrix[.01 0 0 .01 0 0]/FontBBox[0 -20 50 70]/CharProcs<<>>>>", 0.7F, 0.2F},
    {"type3UpsideDown", "<</Subtype/Type3/FontMatrix[.01 0 0 -.01 0 0]/FontBBox[0 -70 50 20]/CharProcs<<>>>>", 0.7F,
     0.2F},
    {"type3WithoutBox", "<</Subtype/Type3/FontMatrix[.01204 0 0 .01204 0 0]/FontBBox[0 0 0 0]/CharProcs<<>>>>", 0.75F,
     0.25F},
    {"composite", "<</Subtype/Type0/DescendantFonts[<</FontDescriptor<</Ascent 880/Descent -120>>>>]>>", 0.88F, 0.12F},
};

INSTANTIATE_TEST_SUITE_P(Pdf, FontExtent, testing::ValuesIn(kExtentCases),
                         [](const auto& test) { return std::string(test.param.name); });

} // namespace
} // namespace quillow::pdf::test
