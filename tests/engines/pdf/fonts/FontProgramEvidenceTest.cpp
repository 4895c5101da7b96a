// What fonts take from the font programs that are embedded in a document, and when.
#include "engines/pdf/Limits.h"
#include "tests/engines/pdf/fonts/TestFonts.h"
#include "tests/engines/pdf/fonts/fontfiles/FontBuilders.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

using namespace std::string_literals;

namespace quillow::pdf::test {
namespace {

/// Glyph 5 is alpha, glyph 6 is a sign of private use; glyphs 5 to 7 are 300, 400, 500 wide. Code 65 selects glyph 5.
std::string trueTypeProgram() {
    using namespace build;
    return trueType(
        {{"cmap", cmap({{1, 0, format6(65, {5, 6, 7})}, {3, 1, format4({{0x3B1, 0x3B1, 5}, {0xF0B7, 0xF0B7, 6}})}})},
         {"head", head(1000)},
         {"hhea", hhea(800, -200, 8)},
         {"hmtx", hmtx({0, 0, 0, 0, 0, 300, 400, 500})},
         {"maxp", maxp(8)}});
}

std::string type1Program() {
    return build::type1(
        "/Encoding 256 array 0 1 255 {1 index exch /.notdef put} for dup 65 /beta put dup 66 /odd put readonly def",
        {{".notdef", ""}, {"beta", ""}, {"odd", ""}});
}

/// The CIDs 0, 10, 11 and 12 of Adobe-Japan1.
std::string cidKeyedProgram() {
    build::Cff font;
    font.strings = {"Adobe", "Japan1"};
    font.charStrings = build::emptyCharStrings(4);
    font.isCidKeyed = true;
    font.charset = build::u8(2) + build::u16s({10, 2});
    font.fontDicts = {""};
    font.fontDictSelect = build::u8(3) + build::u16(1) + build::u16(0) + build::u8(0) + build::u16(4);
    return build::cff(font);
}

std::string simple(const std::string& subtype, const std::string& key, const std::string& entries, int flags = 4) {
    return "<</Type/Font/Subtype/" + subtype + "/BaseFont/Unheard" + entries + "/FontDescriptor<</Flags " +
           std::to_string(flags) + "/" + key + " 6 0 R>>>>";
}

std::string composite(const std::string& key, const std::string& entries, const std::string& descendant = "") {
    return "<</Type/Font/Subtype/Type0/BaseFont/Unheard/Encoding/Identity-H" + entries +
           "/DescendantFonts[<</Subtype/CIDFontType2/CIDSystemInfo<</Registry(Adobe)/Ordering(Identity)>>/"
           "FontDescriptor<</" +
           key + " 6 0 R>>" + descendant + ">>]>>";
}

struct Case {
    const char* name;
    std::vector<std::string> objects;
    std::string codes;
    std::u32string characters;
    friend void PrintTo(const Case& one, std::ostream* out) { *out << one.name; }
};

class FontProgramEvidence : public testing::TestWithParam<Case> {};

TEST_P(FontProgramEvidence, isUsedWhereTheDocumentSaysNothing) {
    FontDocument document(GetParam().objects);
    EXPECT_EQ(textOf(document.font(), GetParam().codes), GetParam().characters);
}

const std::string kIdentityMap = "beginbfrange <0000> <FFFF> <0000> endbfrange";

const Case kCases[] = {
    {"trueTypeOfASimpleFont",
     {simple("TrueType", "FontFile2", ""), streamBody(trueTypeProgram())},
     "AB",
     U"\u03B1\uFFFD"},
    {"namesBeforeTrueType",
     {simple("TrueType", "FontFile2", "/Encoding<</Differences[65/gamma]>>"), streamBody(trueTypeProgram())},
     "A",
     U"\u03B3"},
    {"nameThatIsAGlyphIndex",
     {simple("TrueType", "FontFile2", "/Encoding<</Differences[1/g5/cid6]>>"), streamBody(trueTypeProgram())},
     "\x01\x02",
     U"\u03B1\uFFFD"},
    {"codesOfTextInASymbolicTrueTypeFont",
     {simple("TrueType", "FontFile2", "/FirstChar 32"), streamBody(trueTypeProgram())},
     "CD",
     U"C\uFFFD"},
    {"numberedCodesInASymbolicTrueTypeFont",
     {simple("TrueType", "FontFile2", "/FirstChar 33"), streamBody(trueTypeProgram())},
     "C",
     U"\uFFFD"},
    {"builtInEncodingOfType1",
     {simple("Type1", "FontFile", ""), streamBody(type1Program())},
     "ABC",
     U"\u03B2\uFFFD\uFFFD"},
    {"builtInEncodingUnderDifferences",
     {simple("Type1", "FontFile", "/Encoding<</Differences[66/gamma]>>"), streamBody(type1Program())},
     "AB",
     U"\u03B2\u03B3"},
    {"standardEncodingUnderTheBuiltInOne",
     {simple("Type1", "FontFile", "", 32), streamBody(type1Program())},
     "AC",
     U"\u03B2"
     U"C"},
    {"programThatIsNone", {simple("Type1", "FontFile", ""), streamBody("nonsense")}, "A", U"A"},
    {"trueTypeOfACompositeFont",
     {composite("FontFile2", ""), streamBody(trueTypeProgram())},
     "\0\5\0\6\0\7"s,
     U"\u03B1\uFFFD\uFFFD"},
    {"glyphsByCidToGidMap",
     {composite("FontFile2", "", "/CIDToGIDMap 7 0 R"), streamBody(trueTypeProgram()), streamBody("\0\0\0\5"s)},
     "\0\1\0\5"s,
     U"\u03B1\uFFFD"},
    {"trueTypeBeforeIdentityInToUnicode",
     {composite("FontFile2", "/ToUnicode 7 0 R"), streamBody(trueTypeProgram()), streamBody(kIdentityMap)},
     "\0\5\0A"s,
     U"\u03B1"
     U"A"},
    {"collectionOfACidKeyedProgram", {composite("FontFile3", ""), streamBody(cidKeyedProgram())}, "\0\x22"s, U"A"},
};

INSTANTIATE_TEST_SUITE_P(Pdf, FontProgramEvidence, testing::ValuesIn(kCases),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(FontProgramWidths, areUsedIfTheDocumentHasNone) {
    FontDocument simpleFont({simple("TrueType", "FontFile2", ""), streamBody(trueTypeProgram())});
    EXPECT_FLOAT_EQ(glyphOf(simpleFont.font(), "A").width, 0.3F);
    FontDocument compositeFont({composite("FontFile2", ""), streamBody(trueTypeProgram())});
    EXPECT_FLOAT_EQ(glyphOf(compositeFont.font(), "\0\5"s).width, 0.3F);
    FontDocument declared({composite("FontFile2", "", "/DW 700"), streamBody(trueTypeProgram())});
    EXPECT_FLOAT_EQ(glyphOf(declared.font(), "\0\5"s).width, 0.7F);
}

constexpr std::size_t kLargeStream = std::size_t{4} << 20; ///< so large that decoding it shows in the share of limits

/// Blanks: neither a font file nor a CMap.
std::string largeStream() {
    std::string encoded;
    for (std::size_t i = 0; i < kLargeStream / 128; ++i)
        encoded += "\x81 ";
    return streamBody(encoded, "/Filter/RL");
}

/// How often the large stream was decoded.
int readings(FontDocument& document) {
    const double share = static_cast<double>(kLargeStream) / static_cast<double>(kMaximumDecodedTotal);
    return static_cast<int>(document.document().usedShare() / share + 0.5);
}

TEST(FontProgramEvidence, programIsNotReadIfTheDocumentKnowsTheCode) {
    FontDocument document(
        {simple("TrueType", "FontFile2", "/Encoding/WinAnsiEncoding/FirstChar 65/Widths[500]"), largeStream()});
    EXPECT_EQ(textOf(document.font(), "A"), U"A");
    EXPECT_EQ(readings(document), 0);
    (void)textOf(document.font(), "\x01");
    EXPECT_EQ(readings(document), 1);
}

TEST(FontProgramEvidence, fontsThatShareAStreamReadItOnce) {
    const std::string font = "<</Subtype/Type1/BaseFont/Unheard/ToUnicode 6 0 R>>";
    FontDocument document({font, largeStream(), font});
    (void)textOf(document.font(5), "A");
    (void)textOf(document.font(7), "AB");
    EXPECT_EQ(readings(document), 1);
}

TEST(FontProgramEvidence, fontReadsNoStreamBeforeACodeNeedsIt) {
    FontDocument document({"<</Subtype/Type1/BaseFont/Unheard/ToUnicode 6 0 R>>", largeStream()});
    (void)document.font(5);
    EXPECT_EQ(readings(document), 0);
    (void)textOf(document.font(5), "A");
    EXPECT_EQ(readings(document), 1);
}

} // namespace
} // namespace quillow::pdf::test
