// Each text operator (ISO 32000-2, 9.3, 9.4) by what it does to the page. Glyphs are 0.6 of the font size wide.
#include "engines/pdf/content/Interpreter.h"
#include "engines/pdf/content/TextWriter.h"
#include "tests/engines/pdf/content/ContentDump.h"

#include <gtest/gtest.h>

namespace quillow::pdf::test {
namespace {

TEST(PdfTextOperators, moveAndShow) {
    expectDumps({
        {"Tj", "(Hello)Tj", "100,700 f0 10 \"Hello\"\n"},
        {"hexadecimal Tj", "<48 65 6c6C7>Tj", "100,700 f0 10 \"Hellp\"\n"},
        {"escapes", "(\\101\\(\\)\\\\\\\nB)Tj", "100,700 f0 10 \"A()\\{5C}B\"\n"},
        {"TJ", "[(He)(l)0(lo)]TJ", "100,700 f0 10 \"Hello\"\n"},
        {"TJ with a string", "(Hello)TJ", "100,700 f0 10 \"Hello\"\n"},
        {"empty strings", "()Tj[]TJ[()]TJ", ""},
        {"a number for a string", "5 Tj", ""},
        {"Td", "5 -12 Td(a)Tj 1 -12 Td(b)Tj", "105,688 f0 10 \"a\"\n106,676 f0 10 \"b\"\n"},
        {"Td counts from the line's start", "(abc)Tj 0 -12 Td(d)Tj", "100,700 f0 10 \"abc\"\n100,688 f0 10 \"d\"\n"},
        {"Td is in text space", "2 0 0 2 100 700 Tm 5 -10 Td(a)Tj", "110,680 f0 20 \"a\"\n"},
        {"TD and T*", "0 -14 TD(a)Tj T*(b)Tj", "100,686 f0 10 \"a\"\n100,672 f0 10 \"b\"\n"},
        {"TL and T*", "20 TL T*(a)Tj", "100,680 f0 10 \"a\"\n"},
        {"apostrophe", "20 TL(a)' (b)'", "100,680 f0 10 \"a\"\n100,660 f0 10 \"b\"\n"},
        {"BT resets the matrix", "ET BT 50 60 Td(a)Tj", "50,60 f0 10 \"a\"\n"},
        {"BT keeps the state", "ET BT 1 0 0 1 9 9 Tm(a)Tj ET BT 1 0 0 1 9 50 Tm(b)Tj",
         "9,9 f0 10 \"a\"\n9,50 f0 10 \"b\"\n"},
        {"operands that are missing", "Td 5 Td Tm 1 2 3 Tm Tf Tc (a)Tj", "100,700 f0 10 \"a\"\n"},
        {"operands too many", "7 8 9 (a)Tj 99 0 -12 Td (b)Tj", "100,700 f0 10 \"a\"\n100,688 f0 10 \"b\"\n"},
        {"operands of other kinds", "/A /B Td (x) Tw /F /F Tf (a)Tj", "100,700 f0 10 \"a\"\n"},
        {"unknown operators", "1 2 xyz 3 abcdefg BX EX (a)Tj", "100,700 f0 10 \"a\"\n"},
    });
}

TEST(PdfTextOperators, textIsShownWithoutATextObject) {
    EXPECT_EQ(dumpOfContent("/F 10 Tf 5 5 Td (a)Tj"), "5,5 f0 10 \"a\"\n");
}

TEST(PdfTextOperators, textWithoutAFontIsNotShown) {
    EXPECT_EQ(dumpOfContent("BT 5 5 Td (a)Tj ET"), "");
}

TEST(PdfTextOperators, unknownFontHasTheStandardEncoding) {
    EXPECT_EQ(dumpOfContent("BT /G 10 Tf 5 5 Td (a)Tj ET"), "5,5 f0 10 \"a\"\n");
}

TEST(PdfTextOperators, fontWithoutANameIsThePresentOneOrUnknown) {
    EXPECT_EQ(dumpOfContent("BT 10 Tf 5 5 Td (a)Tj ET"), "5,5 f0 10 \"a\"\n");
    EXPECT_EQ(dumpOfContent("BT /F 9 Tf (b)Tj 10 Tf 0 5 Td (a)Tj ET"), "0,0 f0 9 \"b\"\n0,5 f0 10 \"a\"\n");
    EXPECT_EQ(dumpOfContent("BT /F Tf 5 5 Td (a)Tj ET"), "") << "no size";
}

TEST(PdfTextOperators, fontNamesMayBeEscaped) {
    EXPECT_EQ(dumpOfContent("BT /#46 10 Tf 5 5 Td (a)Tj ET"), "5,5 f0 10 \"a\"\n");
}

TEST(PdfTextOperators, fontComesFromTheStateParametersToo) {
    EXPECT_EQ(dumpOfContent("/G gs BT 5 5 Td (a)Tj ET", "/ExtGState<</G<</Font[5 0 R 8]>>>>", {std::string(kCourier)}),
              "5,5 f0 8 \"a\"\n");
    EXPECT_EQ(dumpOfContent("/F 9 Tf /G gs /X gs BT 5 5 Td (a)Tj ET", "/ExtGState<</G<</LW 1>>>>"), "5,5 f0 9 \"a\"\n");
}

std::string glyphsOf(const char* content) {
    return dumpOfContent(std::string("/F 10 Tf 1 0 0 1 100 700 Tm ") + content, "", {}, DumpDetail::glyphs);
}

TEST(PdfTextOperators, glyphsHaveTheirOwnPlacesAndWidths) {
    EXPECT_EQ(glyphsOf("(ab)Tj"), "100,700 f0 10 \"ab\"\n    0 +6 \"a\"\n    6 +6 \"b\"\n");
    EXPECT_EQ(glyphsOf("2 Tc(ab)Tj(c)Tj"), "100,700 f0 10 \"abc\"\n    0 +6 \"a\"\n    8 +6 \"b\"\n    16 +6 \"c\"\n");
    EXPECT_EQ(glyphsOf("3 Tw(a b)Tj"), "100,700 f0 10 \"a b\"\n    0 +6 \"a\"\n    6 +6 \" \"\n    15 +6 \"b\"\n");
    EXPECT_EQ(glyphsOf("50 Tz(ab)Tj"), "100,700 f0 10 \"ab\"\n    0 +3 \"a\"\n    3 +3 \"b\"\n");
    EXPECT_EQ(glyphsOf("50 Tz 2 Tc(ab)Tj"), "100,700 f0 10 \"ab\"\n    0 +3 \"a\"\n    4 +3 \"b\"\n");
    EXPECT_EQ(glyphsOf("[(a)-250(b)]TJ"), "100,700 f0 10 \"ab\"\n    0 +6 \"a\"\n    8.5 +6 \"b\"\n");
    EXPECT_EQ(glyphsOf("50 Tz[(a)-250(b)]TJ"), "100,700 f0 10 \"ab\"\n    0 +3 \"a\"\n    4.25 +3 \"b\"\n");
    EXPECT_EQ(glyphsOf("[-500(a)]TJ"), "105,700 f0 10 \"a\"\n    0 +6 \"a\"\n");
    EXPECT_EQ(glyphsOf("10 TL 1 2(a b)\""), "100,690 f0 10 \"a b\"\n    0 +6 \"a\"\n    8 +6 \" \"\n    17 +6 \"b\"\n");
}

TEST(PdfTextOperators, adjustmentsMoveWhatFollowsTheArray) {
    EXPECT_EQ(glyphsOf("[(a)-100]TJ(b)Tj"), "100,700 f0 10 \"ab\"\n    0 +6 \"a\"\n    7 +6 \"b\"\n");
}

TEST(PdfTextOperators, matricesTurnAndScale) {
    expectDumps({
        {"cm", "2 0 0 2 -100 -700 cm(a)Tj", "100,700 f0 20 \"a\"\n"},
        {"cm moves what was shown before", "(a)Tj 1 0 0 1 0 50 cm(b)Tj", "100,700 f0 10 \"a\"\n106,750 f0 10 \"b\"\n"},
        {"upwards", "0 1 -1 0 100 200 Tm(ab)Tj", "100,200 up f0 10 \"ab\"\n"},
        {"downwards", "0 -1 1 0 100 200 Tm(ab)Tj", "100,200 down f0 10 \"ab\"\n"},
        {"upside down", "-1 0 0 -1 100 200 Tm(ab)Tj", "100,200 left f0 10 \"ab\"\n"},
        {"slanted", "1 0 .3 1 100 200 Tm(ab)Tj", "100,200 f0 10 \"ab\"\n"},
        {"aslant", ".6 .8 -.8 .6 100 200 Tm(ab)Tj", "100,200 towards 0.6,0.8 f0 10 \"ab\"\n"},
        {"size from the matrix", "/F 1 Tf 9 0 0 9 100 200 Tm(ab)Tj", "100,200 f0 9 \"ab\"\n"},
        {"y axis downwards", "1 0 0 -1 0 792 cm 1 0 0 -1 100 92 Tm(ab)Tj", "100,700 f0 10 \"ab\"\n"},
        {"negative size", "/F -10 Tf -1 0 0 -1 100 200 Tm(ab)Tj", "100,200 f0 10 \"ab\"\n"},
        {"negative scale", "-100 Tz -1 0 0 1 100 200 Tm(ab)Tj", "100,200 f0 10 \"ab\"\n"},
        {"rise", "(a)Tj 4 Ts(b)Tj 0 Ts(c)Tj", "100,700 f0 10 \"a\"\n106,704 f0 10 \"b\"\n112,700 f0 10 \"c\"\n"},
        {"matrix without an inverse", "0 0 0 0 100 200 Tm(ab)Tj(c)Tj", "100,200 f0 0 \"abc\"\n"},
        {"size zero", "/F 0 Tf(ab)Tj", "100,700 f0 0 \"ab\"\n"},
    });
}

TEST(PdfTextOperators, mirroredTextReachesToItsOtherSide) {
    const Page upright = readPage(onePagePdf("/F 10 Tf 1 0 0 1 300 200 Tm(ab)Tj", resourcesWith(""))).page;
    const Page mirrored = readPage(onePagePdf("/F 10 Tf -1 0 0 1 300 200 Tm(ab)Tj", resourcesWith(""))).page;
    ASSERT_EQ(upright.runs.size(), 1U);
    ASSERT_EQ(mirrored.runs.size(), 1U);
    EXPECT_EQ(mirrored.runs[0].direction, (Point{-1, 0}));
    EXPECT_EQ(mirrored.runs[0].ascent, upright.runs[0].descent);
    EXPECT_EQ(mirrored.runs[0].descent, upright.runs[0].ascent);
    EXPECT_EQ(boundsOf(mirrored, mirrored.runs[0]).top, boundsOf(upright, upright.runs[0]).top);
}

TEST(PdfTextOperators, absurdNumbersLeaveTextOut) {
    expectDumps({
        {"far away", "1 0 0 1 9999999999999999999999 0 Tm(a)Tj 99999999999999999999999999 0 Td(b)Tj", ""},
        {"endless size", "/F 99999999999999999999999999999 Tf(a)Tj", ""},
        {"overflow",
         "99999999999999999999 0 0 99999999999999999999 0 0 cm "
         "99999999999999999999 0 0 99999999999999999999 0 0 cm "
         "99999999999999999999 0 0 99999999999999999999 0 0 cm(a)Tj",
         ""},
    });
}

TEST(PdfTextOperators, renderingModes) {
    expectDumps({
        {"invisible", "3 Tr(a)Tj 0 Tr(b)Tj", "100,700 f0 10 invisible \"a\"\n106,700 f0 10 \"b\"\n"},
        {"outlined, clipping", "1 Tr(a)Tj 7 Tr(b)Tj", "100,700 f0 10 \"ab\"\n"},
        {"unknown", "99 Tr(a)Tj -1 Tr(b)Tj", "100,700 f0 10 \"ab\"\n"},
    });
}

/// Moves text inside as many saved states, and restores the innermost one.
std::string statesDeep(std::size_t depth) {
    std::string content = "/F 10 Tf 9 9 Td ";
    for (std::size_t i = 0; i < depth; ++i)
        content += "q ";
    return content + "1 0 0 1 0 100 cm Q (a)Tj";
}

TEST(PdfTextOperators, savedStatesAreRestored) {
    expectDumps({
        {"font and size", "q /F 20 Tf(a)Tj Q(b)Tj", "100,700 f0 20 \"a\"\n112,700 f0 10 \"b\"\n"},
        {"matrix", "q 1 0 0 1 0 9 cm Q(b)Tj", "100,700 f0 10 \"b\"\n"},
        {"Q without q", "Q Q(b)Tj", "100,700 f0 10 \"b\"\n"},
        {"q without Q", "q q q(b)Tj", "100,700 f0 10 \"b\"\n"},
    });
    const std::string font = "/F 10 Tf 9 9 Td ";
    std::string deep = font;
    for (int i = 0; i < 3000; ++i)
        deep += "q ";
    deep += "1 0 0 1 0 100 cm ";
    for (int i = 0; i < 3000; ++i)
        deep += "Q ";
    EXPECT_EQ(dumpOfContent(deep + "(a)Tj"), "9,9 f0 10 \"a\"\n");
    EXPECT_EQ(dumpOfContent(statesDeep(kMaximumSavedStates)), "9,9 f0 10 \"a\"\n");
    EXPECT_EQ(dumpOfContent(statesDeep(kMaximumSavedStates + 1)), "9,109 f0 10 \"a\"\n");
}

TEST(PdfTextOperators, verticalWritingGoesDownwards) {
    const std::string font = "<</Type/Font/Subtype/Type0/BaseFont/A/Encoding/UniJIS-UTF16-V/DescendantFonts[<</Type/"
                             "Font/Subtype/CIDFontType0"
                             "/BaseFont/A/CIDSystemInfo<</Registry(Adobe)/Ordering(Japan1)/Supplement 6>>>>]>>";
    EXPECT_EQ(dumpOfContent("/V 10 Tf 300 500 Td <4E004E8C> Tj 0 -40 Td 2 Tc -100 Tw [<4E00> 500 <4E8C>] TJ",
                            "/Font<</V 5 0 R>>", {font}, DumpDetail::glyphs),
              "300,500 down f0 10 vertical \"一二\"\n    0 +10 \"一\"\n    10 +10 \"二\"\n"
              "300,460 down f0 10 vertical \"一二\"\n    0 +10 \"一\"\n    13 +10 \"二\"\n");
    const Page page = readPage(onePagePdf("/V 10 Tf 300 500 Td <4E00> Tj", "<</Font<</V 5 0 R>>>>", {font})).page;
    ASSERT_EQ(page.runs.size(), 1U);
    EXPECT_EQ(boundsOf(page, page.runs[0]), (Box{295, 490, 305, 500}));
}

TEST(PdfTextOperators, glyphsOfAPageAreLimited) {
    std::string content = "/F .1 Tf 9 9 Td ";
    const std::string line = "(" + std::string(999, 'a') + ")Tj 0 .1 TD\n";
    for (int i = 0; i < 1100; ++i)
        content += line;
    const ReadPage read = readPage(onePagePdf(content, resourcesWith("")));
    EXPECT_LE(read.page.glyphs.size(), kMaximumGlyphs);
    EXPECT_GT(read.page.glyphs.size(), kMaximumGlyphs - 1000);
    EXPECT_EQ(read.loss.partsSkipped, 1U);
}

} // namespace
} // namespace quillow::pdf::test
