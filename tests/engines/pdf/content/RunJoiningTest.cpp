// Where a run ends (see TextWriter.h). Font size 10: a forward jump is over 10 points, a backward one over 2, a side
// one over 0.2.
#include "tests/engines/pdf/content/ContentDump.h"

#include <gtest/gtest.h>

namespace quillow::pdf::test {
namespace {

TEST(PdfRunJoining, runGoesOnWhereTheProducerDoesNotJump) {
    expectDumps({
        {"Tj after Tj", "(ab)Tj(cd)Tj", "100,700 f0 10 \"abcd\"\n"},
        {"kerning", "[(A)80(V)-20(A)]TJ", "100,700 f0 10 \"AVA\"\n"},
        {"blanks of gaps", "[(one)-333(two)]TJ", "100,700 f0 10 \"onetwo\"\n"},
        {"words placed by Td", "(ab)Tj 15 0 Td(cd)Tj", "100,700 f0 10 \"abcd\"\n"},
        {"words placed by Tm", "(ab)Tj 1 0 0 1 115 700 Tm(cd)Tj", "100,700 f0 10 \"abcd\"\n"},
        {"rounded baselines", "(ab)Tj 1 0 0 1 112 700.1 Tm(cd)Tj", "100,700 f0 10 \"abcd\"\n"},
        {"words in text objects of their own", "(ab)Tj ET BT 112 700 Td(cd)Tj", "100,700 f0 10 \"abcd\"\n"},
        {"words in saved states of their own", "(ab)Tj q 1 0 0 1 9 0 cm(cd)Tj Q", "100,700 f0 10 \"abcd\"\n"},
        {"spacing changes", "(ab)Tj 1 Tc 2 Tw(cd)Tj", "100,700 f0 10 \"abcd\"\n"},
        {"font of the same name", "(ab)Tj /F 10 Tf(cd)Tj", "100,700 f0 10 \"abcd\"\n"},
        {"wide letter spacing", "25 Tc(ab)Tj(cd)Tj", "100,700 f0 10 \"abcd\"\n"},
    });
}

TEST(PdfRunJoining, runEndsAtAJump) {
    expectDumps({
        {"column in a TJ", "[(ab)-1100(cd)]TJ", "100,700 f0 10 \"ab\"\n123,700 f0 10 \"cd\"\n"},
        {"column after a TJ", "[(ab)-1100]TJ(cd)Tj", "100,700 f0 10 \"ab\"\n123,700 f0 10 \"cd\"\n"},
        {"column by Td", "(ab)Tj 50 0 Td(cd)Tj", "100,700 f0 10 \"ab\"\n150,700 f0 10 \"cd\"\n"},
        {"drawn twice", "(ab)Tj 0.3 0 Td(ab)Tj", "100,700 f0 10 \"ab\"\n100.3,700 f0 10 \"ab\"\n"},
        {"back in a TJ", "[(a)600(b)]TJ", "100,700 f0 10 \"a\"\n100,700 f0 10 \"b\"\n"},
        {"superscript by Td", "(ab)Tj 12 3 Td(2)Tj", "100,700 f0 10 \"ab\"\n112,703 f0 10 \"2\"\n"},
        {"next line", "(ab)Tj 0 -12 Td(cd)Tj", "100,700 f0 10 \"ab\"\n100,688 f0 10 \"cd\"\n"},
        {"another size", "(ab)Tj /F 12 Tf(cd)Tj", "100,700 f0 10 \"ab\"\n112,700 f0 12 \"cd\"\n"},
        {"another width", "(ab)Tj 90 Tz(cd)Tj", "100,700 f0 10 \"ab\"\n112,700 f0 10 \"cd\"\n"},
        {"another direction", "(ab)Tj 0 1 -1 0 112 700 Tm(cd)Tj", "100,700 f0 10 \"ab\"\n112,700 up f0 10 \"cd\"\n"},
        {"another mark", "/P<</MCID 1>>BDC(ab)Tj EMC/P<</MCID 2>>BDC(cd)Tj EMC",
         "100,700 f0 10 #1 \"ab\"\n112,700 f0 10 #2 \"cd\"\n"},
    });
}

TEST(PdfRunJoining, anotherFontBeginsARun) {
    EXPECT_EQ(
        dumpOfContent("/F 10 Tf 9 9 Td(a)Tj/G 10 Tf(b)Tj",
                      "/Font<</G<</Type/Font/Subtype/Type1/BaseFont/Courier-Bold>>/F" + std::string(kCourier) + ">>"),
        "9,9 f0 10 \"a\"\n15,9 f1 10 \"b\"\n");
}

} // namespace
} // namespace quillow::pdf::test
