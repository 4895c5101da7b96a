// Rules (ISO 32000-2, 8.5), clipping (8.5.4), inline images (8.9.7).
#include "engines/pdf/content/PathCollector.h"
#include "tests/engines/pdf/content/ContentDump.h"

#include <gtest/gtest.h>

namespace quillow::pdf::test {
namespace {

struct Case {
    const char* content;
    const char* dump;
};

void expectContents(const std::vector<Case>& cases) {
    for (const Case& c : cases)
        EXPECT_EQ(dumpOfContent(c.content), c.dump) << c.content;
}

TEST(PdfRules, straightLines) {
    expectContents({
        {"10 20 m 110 20 l S", "line 10,20 110,20\n"},
        {"10 20 m 10 90 l S", "line 10,20 10,90\n"},
        {"110 20 m 10 20.08 l S", "line 10,20.04 110,20.04\n"},
        {"10 20 m 110 40 l S", ""},
        {"10 20 m 110 20 l n", ""},
        {"10 20 m 110 20 l f", ""},
        {"10 20 m 11 20 l S", ""},
        {"10 20 m 110 20 l 10 30 m 110 30 l S", "line 10,20 110,20\nline 10,30 110,30\n"},
        {"2 0 0 2 5 5 cm 10 20 m 110 20 l S", "line 25,45 225,45\n"},
        {"0 1 -1 0 300 0 cm 10 20 m 110 20 l S", "line 280,10 280,110\n"},
        {".7 .7 -.7 .7 300 0 cm 10 20 m 110 20 l S", ""},
        {"10 20 m 50 20 l S 50 20 m 90 20 l S", "line 10,20 90,20\n"},
        {"10 20 m 50 20 l S 10 20 m 50 20 l S", "line 10,20 50,20\n"},
        {"10 20 m 50 20 l S 60 20 m 90 20 l S", "line 10,20 50,20\nline 60,20 90,20\n"},
        {"10 20 m 50 60 90 60 110 20 c 110 90 l S", "line 110,20 110,90\n"},
        {"-50 20 m 1000 20 l S", "line 0,20 612,20\n"},
        {"10 -20 m 100 -20 l S", ""},
        {"20 l 5 m S", ""},
        {"10 20 m 110 20 l 110 21 l n s", ""},
        {"10 20 l 110 20 l S", "line 10,20 110,20\n"},
        {"10 20 30 40 50 60 c 50 160 l S", "line 50,60 50,160\n"},
    });
}

TEST(PdfRules, uprightRectangles) {
    expectContents({
        {"10 20 100 50 re f", "rectangle 10,20 110,70\n"},
        {"10 20 100 50 re S", "rectangle 10,20 110,70\n"},
        {"10 20 100 50 re B", "rectangle 10,20 110,70\n"},
        {"10 20 100 50 re f*", "rectangle 10,20 110,70\n"},
        {"10 20 100 .5 re F", "rectangle 10,20 110,20.5\n"},
        {"110 70 -100 -50 re f", "rectangle 10,20 110,70\n"},
        {"10 20 100 50 re n", ""},
        {"10 20 1 1 re f", ""},
        {"10 20 m 110 20 l 110 70 l 10 70 l h f", "rectangle 10,20 110,70\n"},
        {"10 20 m 110 20 l 110 70 l 10 70 l 10 20 l f", "rectangle 10,20 110,70\n"},
        {"10 20 m 10 70 l 110 70 l 110 20 l b", "rectangle 10,20 110,70\n"},
        {"10 20 m 110 20 l 110 70 l 10 70 l s",
         "line 10,20 110,20\nline 110,20 110,70\nline 10,70 110,70\nline 10,20 10,70\n"},
        {"10 20 m 110 20 l 120 70 l 10 70 l f", ""},
        {"10 20 m 110 20 l 110 70 l 60 70 l 10 70 l f", ""},
        {"10 20 m 50 20 60 30 110 70 c 10 70 l 10 20 l f", ""},
        {".7 .7 -.7 .7 300 0 cm 10 20 100 50 re f", ""},
        {"0 1 -1 0 300 0 cm 10 20 100 50 re f", "rectangle 230,10 280,110\n"},
        {"10 20 100 re f", ""},
    });
}

TEST(PdfRules, areCutToTheClippingBox) {
    expectContents({
        {"50 0 100 100 re W n 10 20 100 50 re f", "rectangle 50,20 110,70\n"},
        {"50 0 100 100 re W n 10 20 20 50 re f", ""},
        {"q 50 0 100 100 re W* n Q 10 20 100 50 re f", "rectangle 10,20 110,70\n"},
    });
}

TEST(PdfRules, areLimited) {
    std::string content;
    for (std::size_t i = 0; i < kMaximumRules + 100; ++i)
        content += std::to_string(i % 600) + ' ' + std::to_string(i / 600) + " 5 5 re f\n";
    content += "1 0 0 1 0 0 cm ";
    for (std::size_t i = 0; i < kMaximumRules + 100; ++i)
        content += std::to_string(i % 600) + ' ' + std::to_string(i / 600) + " 5 5 re\n";
    const ReadPage read = readPage(onePagePdf(content + "f"));
    EXPECT_EQ(read.page.rules.size(), kMaximumRules);
    EXPECT_EQ(read.loss.partsSkipped, 0U); // rules are not text
}

TEST(PdfClipping, textThatNobodySeesIsLeftOut) {
    const std::string font = "/F 10 Tf ";
    struct ClipCase {
        const char* name;
        const char* content;
        const char* dump;
    };
    for (const ClipCase& c : {
             ClipCase{"outside the rectangle", "0 0 50 50 re W n 100 100 Td(a)Tj", ""},
             ClipCase{"inside", "0 0 500 500 re W n 100 100 Td(a)Tj", "100,100 f0 10 \"a\"\n"},
             ClipCase{"a part of it inside", "0 0 500 102 re W n 100 100 Td(a)Tj", "100,100 f0 10 \"a\"\n"},
             ClipCase{"some glyphs inside", "0 0 113 500 re W n 100 100 Td(abcd)Tj", "100,100 f0 10 \"abc\"\n"},
             ClipCase{"the first glyph outside", "113 0 500 500 re W n 100 100 Td(abcd)Tj", "112,100 f0 10 \"cd\"\n"},
             ClipCase{"after the clip is restored", "q 0 0 50 50 re W n Q 100 100 Td(a)Tj", "100,100 f0 10 \"a\"\n"},
             ClipCase{"two rectangles that do not meet", "0 0 50 50 re W n 90 90 50 50 re W n 100 100 Td(a)Tj", ""},
             ClipCase{"another path", "0 0 m 50 0 l 0 50 l W n 100 100 Td(a)Tj", "100,100 f0 10 \"a\"\n"},
             ClipCase{"two rectangles in one path", "0 0 50 50 re 0 90 9 9 re W n 100 100 Td(a)Tj",
                      "100,100 f0 10 \"a\"\n"},
             ClipCase{"a rectangle of lines", "0 0 m 50 0 l 50 50 l 0 50 l h W n 100 100 Td(a)Tj", ""},
             ClipCase{"no path", "W n 100 100 Td(a)Tj", "100,100 f0 10 \"a\"\n"},
             ClipCase{"W without painting", "0 0 50 50 re W 100 100 Td(a)Tj", "100,100 f0 10 \"a\"\n"},
             ClipCase{"painted too", "0 0 50 50 re W S 100 100 Td(a)Tj", "rectangle 0,0 50,50\n"},
         })
        EXPECT_EQ(dumpOfContent(font + c.content), c.dump) << c.name;
}

TEST(PdfClipping, actualTextMovesToTheFirstGlyphThatIsSeen) {
    EXPECT_EQ(dumpOfContent("/F 10 Tf 107 0 500 500 re W n 100 100 Td/S<</ActualText(xyz)>>BDC(abc)Tj EMC", "", {},
                            DumpDetail::glyphs),
              "106,100 f0 10 actual \"xyz\"\n    0 +6 \"xyz\"\n    6 +6 \"\"\n");
}

TEST(PdfInlineImage, isSkipped) {
    const std::string before = "/F 10 Tf 9 9 Td ";
    const std::string after = "(a)Tj";
    struct ImageCase {
        const char* name;
        std::string image;
    };
    for (const ImageCase& c : {
             ImageCase{"grey, by its length", "BI/W 4/H 1/BPC 8/CS/G ID EI Q EI "},
             ImageCase{"full names", "BI/Width 4/Height 1/BitsPerComponent 8/ColorSpace/DeviceRGB ID EI 5678 EI 2 EI "},
             ImageCase{"mask", "BI/W 9/H 2/IM true ID EI(\nEI "},
             ImageCase{"mask with bits", "BI/W 9/H 2/BPC 1/IM true ID EI(\nEI\n"},
             ImageCase{"length that is wrong", "BI/W 400/H 1/BPC 8/CS/G ID abcd(\nEI "},
             ImageCase{"filter", "BI/W 4/H 1/BPC 8/CS/G/F/Fl ID \x80(EI)\x01 EI\x99 \x01\n EI "},
             ImageCase{"EI before binary bytes", std::string("BI/W 4/F[/Fl]ID a EI \x01\x02\x03 b\nEI ")},
             ImageCase{"colour space of the resources", "BI/W 4/H 1/BPC 8/CS/C ID (((( EI "},
             ImageCase{"indexed colours", "BI/W 2/H 1/BPC 8/CS[/I/RGB 1 <000000ffffff>]ID (( EI "},
             ImageCase{"absurd sides", "BI/W 1e99/H -4/BPC 8/CS/G ID (( EI "},
             ImageCase{"no header", "BI ID (( EI "},
             ImageCase{"stray ID", "ID "},
         })
        EXPECT_EQ(dumpOfContent(before + c.image + after), "9,9 f0 10 \"a\"\n") << c.name;
}

TEST(PdfInlineImage, withoutAnEndTakesTheRest) {
    EXPECT_EQ(dumpOfContent("/F 10 Tf 9 9 Td(a)Tj BI/W 4/F/Fl ID (b)Tj"), "9,9 f0 10 \"a\"\n");
}

} // namespace
} // namespace quillow::pdf::test
