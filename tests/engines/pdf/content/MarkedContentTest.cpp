// Marked content (ISO 32000-2, 14.6), ActualText (14.9.4), artifacts (14.8.2.2).
#include "engines/pdf/content/MarkedContent.h"

#include "tests/engines/pdf/content/ContentDump.h"

#include <gtest/gtest.h>

namespace quillow::pdf::test {
namespace {

TEST(PdfMarkedContent, marksBelongToTheTextInThem) {
    expectDumps({
        {"MCID", "/P<</MCID 7>>BDC(a)Tj EMC(b)Tj", "100,700 f0 10 #7 \"a\"\n106,700 f0 10 \"b\"\n"},
        {"innermost MCID", "/P<</MCID 7>>BDC/S<</MCID 8>>BDC(a)Tj EMC(b)Tj EMC",
         "100,700 f0 10 #8 \"a\"\n106,700 f0 10 #7 \"b\"\n"},
        {"no MCID inside one", "/P<</MCID 7>>BDC/S BMC(a)Tj EMC EMC", "100,700 f0 10 #7 \"a\"\n"},
        {"senseless MCID", "/P<</MCID -7>>BDC(a)Tj EMC/P<</MCID 99999999999>>BDC(b)Tj EMC/P<</MCID/A>>BDC(c)Tj EMC",
         "100,700 f0 10 \"abc\"\n"},
        {"running head", "/Artifact<</Type/Pagination/Subtype/Header>>BDC(a)Tj EMC(b)Tj",
         "100,700 f0 10 running \"a\"\n106,700 f0 10 \"b\"\n"},
        {"running foot", "/Artifact<</Subtype /Footer>>BDC(a)Tj EMC", "100,700 f0 10 running \"a\"\n"},
        {"page number", "/Artifact<</Subtype/PageNum>>BDC(a)Tj EMC", "100,700 f0 10 running \"a\"\n"},
        {"number of a page in court", "/Artifact<</Subtype/Bates>>BDC(a)Tj EMC", "100,700 f0 10 running \"a\"\n"},
        {"marks inside a head", "/Artifact<</Subtype/Header>>BDC/P<</MCID 1>>BDC(a)Tj EMC EMC",
         "100,700 f0 10 #1 running \"a\"\n"},
        {"other artifacts", "/Artifact BMC(a)Tj EMC/Artifact<</Subtype/LineNum>>BDC(b)Tj EMC",
         "100,700 f0 10 \"ab\"\n"},
        {"senseless subtype", "/Artifact<</Subtype(Header)>>BDC(a)Tj EMC/Artifact<</Subtype>>BDC(b)Tj EMC",
         "100,700 f0 10 \"ab\"\n"},
        {"no artifact", "/P<</Subtype/Header>>BDC(a)Tj EMC", "100,700 f0 10 \"a\"\n"},
        {"EMC too many", "EMC EMC(a)Tj/P<</MCID 1>>BDC EMC EMC(b)Tj", "100,700 f0 10 \"ab\"\n"},
        {"BDC without operands", "BDC(a)Tj EMC BMC(b)Tj EMC", "100,700 f0 10 \"ab\"\n"},
        {"ReversedChars", "/ReversedChars BMC(a)Tj EMC", "100,700 f0 10 \"a\"\n"},
    });
}

TEST(PdfMarkedContent, actualTextReplacesTheGlyphsCharacters) {
    expectDumps({
        {"one string", "/S<</ActualText(xyz)>>BDC(a)Tj EMC(b)Tj",
         "100,700 f0 10 actual \"xyz\"\n106,700 f0 10 \"b\"\n"},
        {"UTF-16", "/S<</ActualText<FEFF0915093F>>>BDC(a)Tj EMC", "100,700 f0 10 actual \"\u0915\u093F\"\n"},
        {"escapes", "/S<</ActualText(x\\)\\051)>>BDC(a)Tj EMC", "100,700 f0 10 actual \"x))\"\n"},
        {"empty", "(x)Tj/S<</ActualText()>>BDC(-)Tj EMC(y)Tj",
         "100,700 f0 10 \"x\"\n106,700 f0 10 actual \"\"\n112,700 f0 10 \"y\"\n"},
        {"outer one counts", "/S<</ActualText(x)>>BDC/S<</ActualText(y)>>BDC(a)Tj EMC(b)Tj EMC",
         "100,700 f0 10 actual \"x\"\n"},
        {"several lines", "/S<</ActualText(xy)>>BDC(a)Tj 0 -12 Td(b)Tj EMC",
         "100,700 f0 10 actual \"xy\"\n100,688 f0 10 actual \"\"\n"},
        {"each span has its runs", "/S<</ActualText(x)>>BDC(a)Tj EMC/S<</ActualText(y)>>BDC(b)Tj EMC",
         "100,700 f0 10 actual \"x\"\n106,700 f0 10 actual \"y\"\n"},
        {"without glyphs", "/S<</ActualText(x)>>BDC EMC(a)Tj", "100,700 f0 10 \"a\"\n"},
        {"with an MCID", "/S<</MCID 3/ActualText(x)>>BDC(a)Tj EMC", "100,700 f0 10 #3 actual \"x\"\n"},
        {"not a string", "/S<</ActualText/x>>BDC(a)Tj EMC/S<</ActualText>>BDC(b)Tj EMC", "100,700 f0 10 \"ab\"\n"},
        {"in an inner dictionary", "/S<</A<</ActualText(x)>>>>BDC(a)Tj EMC", "100,700 f0 10 \"a\"\n"},
    });
}

TEST(PdfMarkedContent, firstGlyphHasTheActualText) {
    EXPECT_EQ(dumpOfContent("/F 10 Tf 9 9 Td/S<</ActualText(xyz)>>BDC(a)Tj(b)Tj EMC", "", {}, DumpDetail::glyphs),
              "9,9 f0 10 actual \"xyz\"\n    0 +6 \"xyz\"\n    6 +6 \"\"\n");
}

TEST(PdfMarkedContent, propertiesMayBeAResource) {
    EXPECT_EQ(dumpOfContent("/F 10 Tf 9 9 Td/S/M BDC(a)Tj EMC/S/N BDC(b)Tj EMC", "/Properties<</M 5 0 R>>",
                            {"<</MCID 4/ActualText<FEFF00E4>>>"}),
              "9,9 f0 10 #4 actual \"ä\"\n15,9 f0 10 \"b\"\n");
}

TEST(PdfMarkedContent, subtypeOfAnArtifactMayBeAResource) {
    EXPECT_EQ(dumpOfContent("/F 10 Tf 9 9 Td/Artifact/M BDC(a)Tj EMC", "/Properties<</M<</Subtype/Footer>>>>"),
              "9,9 f0 10 running \"a\"\n");
}

TEST(PdfMarkedContent, deepNestingIsOnlyCounted) {
    std::string content = "/F 10 Tf 9 9 Td ";
    const std::size_t depth = MarkedContent::kMaximumDepth + 100;
    for (std::size_t i = 0; i < depth; ++i)
        content += "/P<</MCID " + std::to_string(i) + ">>BDC ";
    content += "(a)Tj ";
    for (std::size_t i = 0; i < depth; ++i)
        content += "EMC ";
    EXPECT_EQ(dumpOfContent(content + "(b)Tj"),
              "9,9 f0 10 #" + std::to_string(MarkedContent::kMaximumDepth - 1) + " \"a\"\n15,9 f0 10 \"b\"\n");
}

TEST(PdfMarkedContent, charactersOfActualTextsAreLimited) {
    std::string content = "/F .1 Tf 9 9 Td ";
    const std::string text(100'000, 'x');
    for (int i = 0; i < 50; ++i)
        content += "/S<</ActualText(" + text + ")>>BDC(a)Tj EMC\n";
    const ReadPage read = readPage(onePagePdf(content, resourcesWith("")));
    EXPECT_LE(read.page.text.size(), 4'100'000U);
    EXPECT_EQ(read.loss.partsSkipped, 1U);
}

} // namespace
} // namespace quillow::pdf::test
