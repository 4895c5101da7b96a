#include "engines/pdf/fonts/fontfiles/StandardNames.h"

#include <gtest/gtest.h>

namespace quillow::pdf {
namespace {

TEST(PdfStandardNames, macintoshOrderHasItsNames) {
    EXPECT_EQ(macintoshGlyphName(0), ".notdef");
    EXPECT_EQ(macintoshGlyphName(2), "nonmarkingreturn");
    EXPECT_EQ(macintoshGlyphName(36), "A");
    EXPECT_EQ(macintoshGlyphName(210), "apple");
    EXPECT_EQ(macintoshGlyphName(257), "dcroat");
    EXPECT_EQ(macintoshGlyphName(258), "");
}

TEST(PdfStandardNames, compactFontStringsHaveTheirNumbers) {
    EXPECT_EQ(cffStandardString(0), ".notdef");
    EXPECT_EQ(cffStandardString(1), "space");
    EXPECT_EQ(cffStandardString(109), "fi");
    EXPECT_EQ(cffStandardString(228), "zcaron");
    EXPECT_EQ(cffStandardString(229), "exclamsmall");
    EXPECT_EQ(cffStandardString(378), "Ydieresissmall");
    EXPECT_EQ(cffStandardString(390), "Semibold");
    EXPECT_EQ(cffStandardString(391), "");
}

struct ListCase {
    std::span<const StringIdRun> list;
    std::size_t code;
    std::string_view name;
};

TEST(PdfStandardNames, encodingsAndCharsetsNameTheirCodesAndGlyphs) {
    const ListCase cases[] = {
        {kCffStandardEncoding, 'A', "A"},
        {kCffStandardEncoding, 39, "quoteright"},
        {kCffStandardEncoding, 174, "fi"},
        {kCffStandardEncoding, 251, "germandbls"},
        {kCffStandardEncoding, 252, ".notdef"},
        {kCffStandardEncoding, 31, ".notdef"},
        {kCffExpertEncoding, 47, "fraction"},
        {kCffExpertEncoding, 87, "fi"},
        {kCffExpertEncoding, 112, "Psmall"},
        {kCffExpertEncoding, 201, "onesuperior"},
        {kCffExpertEncoding, 255, "Ydieresissmall"},
        {kCffExpertEncoding, 35, ".notdef"},
        {kCffIsoAdobeCharset, 228, "zcaron"},
        {kCffIsoAdobeCharset, 229, ".notdef"},
        {kCffExpertCharset, 1, "space"},
        {kCffExpertCharset, 15, "fraction"},
        {kCffExpertCharset, 165, "Ydieresissmall"},
        {kCffExpertCharset, 166, ".notdef"},
        {kCffExpertSubsetCharset, 2, "dollaroldstyle"},
        {kCffExpertSubsetCharset, 86, "commainferior"},
        {kCffExpertSubsetCharset, 87, ".notdef"},
    };
    for (const ListCase& test : cases)
        EXPECT_EQ(cffStandardString(stringIdOf(test.list, test.code)), test.name) << test.code;
}

} // namespace
} // namespace quillow::pdf
