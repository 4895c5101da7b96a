#include "engines/pdf/layout/PageText.h"

#include "tests/engines/pdf/layout/PageTextOf.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace quillow::pdf {
namespace {

TEST(PdfPageText, anEmptyPageHasNoText) {
    EXPECT_EQ(textOf(PageBuilder()), "");
    EXPECT_EQ(textOf(PageBuilder().text(10, 700, U"   ")), "");
}

TEST(PdfPageText, aGapIsABlank) {
    EXPECT_EQ(textOf(PageBuilder().text(10, 700, U"one").text(28, 700, U"two")), "one two\n");
    EXPECT_EQ(textOf(PageBuilder().text(10, 700, U"one").text(25.5F, 700, U"two")), "onetwo\n");
}

TEST(PdfPageText, aDrawnBlankIsNotDoubledByItsGap) {
    EXPECT_EQ(textOf(PageBuilder().text(10, 700, U"one ").text(33, 700, U"two")), "one two\n");
}

TEST(PdfPageText, blanksWithoutWidthBetweenLettersAreNone) {
    PageBuilder builder;
    float x = 10;
    for (const char32_t c : std::u32string_view(U"word")) {
        builder.text(x, 700, std::u32string_view(&c, 1)).text(x + 5, 700, U" ");
        x += 5;
    }
    EXPECT_EQ(textOf(builder), "word\n");
}

TEST(PdfPageText, letterSpacedHeadingsKeepTheirWords) {
    PageBuilder builder;
    builder.text(10, 700, U"SPACED", 0.3F).text(65, 700, U"OUT", 0.3F);
    EXPECT_EQ(textOf(builder), "SPACED OUT\n");
}

TEST(PdfPageText, noBlankBetweenIdeographs) {
    EXPECT_EQ(textOf(PageBuilder().text(10, 700, U"漢").text(18, 700, U"字")), "漢字\n");
}

TEST(PdfPageText, superscriptsStayInTheirLine) {
    EXPECT_EQ(textOf(PageBuilder().text(10, 700, U"x").size(6).text(15, 704, U"2").size(10).text(18, 700, U"=")),
              "x2=\n");
}

TEST(PdfPageText, lettersDrawnTwiceAreOne) {
    EXPECT_EQ(textOf(PageBuilder().text(10, 700, U"Bold").text(10.3F, 700, U"Bold")), "Bold\n");
    EXPECT_EQ(textOf(PageBuilder().text(10, 700, U"....").text(30, 700, U"....")), "........\n");
}

TEST(PdfPageText, linesBelowOneAnotherAreLines) {
    EXPECT_EQ(textOf(PageBuilder().lines(10, 700, {U"one", U"two"})), "one\ntwo\n");
}

TEST(PdfPageText, widerSpacingBeginsAParagraph) {
    PageBuilder builder;
    builder.lines(10, 700, {U"first line", U"second line", U"third line"}).lines(10, 655, {U"fourth", U"fifth"});
    EXPECT_EQ(textOf(builder), "first line\nsecond line\nthird line\n\nfourth\nfifth\n");
}

TEST(PdfPageText, anIndentBeginsAParagraph) {
    PageBuilder builder;
    builder.lines(10, 700, {U"a full line of text", U"and another line of"}).text(25, 676, U"An indented line");
    builder.text(10, 664, U"goes on at the margin");
    EXPECT_EQ(textOf(builder), "a full line of text\nand another line of\n\nAn indented line\ngoes on at the margin\n");
}

TEST(PdfPageText, columnsInContentOrderStay) {
    PageBuilder builder;
    builder.lines(10, 700, {U"left one", U"left two", U"left three"});
    builder.lines(200, 700, {U"right one", U"right two", U"right three"});
    EXPECT_EQ(textOf(builder), "left one\nleft two\nleft three\nright one\nright two\nright three\n");
}

TEST(PdfPageText, aHeadingThatIsDrawnLastIsReadFirst) {
    PageBuilder builder;
    builder.lines(10, 680, {U"some text", U"more text"}).text(10, 700, U"Heading");
    EXPECT_EQ(textOf(builder), "Heading\n\nsome text\nmore text\n");
}

TEST(PdfPageText, aTableIsARowALine) {
    PageBuilder builder;
    builder.text(10, 700, U"Name").text(100, 700, U"Size").text(200, 700, U"Year");
    builder.text(10, 688, U"Ada").text(100, 688, U"12").text(200, 688, U"1815");
    builder.text(10, 676, U"Bob").text(200, 676, U"1901");
    EXPECT_EQ(textOf(builder), "Name\tSize\tYear\nAda\t12\t1815\nBob\t\t1901\n");
}

TEST(PdfPageText, aTableDrawnByColumnsIsReadByRows) {
    PageBuilder builder;
    builder.lines(10, 700, {U"Name", U"Ada", U"Bob"});
    builder.lines(100, 700, {U"Size", U"12", U"14"});
    builder.lines(200, 700, {U"Year", U"1815", U"1901"});
    EXPECT_EQ(textOf(builder), "Name\tSize\tYear\nAda\t12\t1815\nBob\t14\t1901\n");
}

TEST(PdfPageText, aTableIsReadFromTheSideOfItsLetters) {
    PageBuilder builder;
    builder.lines(10, 700, {U"ארוכה שורה", U"ארוכה שורה", U"ארוכה שורה", U"ארוכה שורה", U"ארוכה שורה"});
    for (int row = 0; row < 3; ++row) {
        const float y = 600 - 12 * static_cast<float>(row);
        builder.text(10, y, U"Ada").text(100, y, U"12").text(200, y, U"1815");
    }
    for (int row = 0; row < 3; ++row) {
        const float y = 500 - 12 * static_cast<float>(row);
        builder.text(10, y, U"1815").text(100, y, U"12").text(200, y, U"הדע");
    }
    const std::string text = textOf(builder);
    EXPECT_NE(text.find("Ada\t12\t1815\nAda\t12\t1815\n"), std::string::npos) << text;
    EXPECT_NE(text.find("עדה\t12\t1815\nעדה\t12\t1815\n"), std::string::npos) << text;
}

TEST(PdfPageText, manyRowsOfManyColumnsTakeNoLongerThanTheyAreMany) {
    // A table is looked for only as long as the work is bounded; the text is whole in any case.
    constexpr int kRows = 20'000;
    PageBuilder builder;
    for (int row = 0; row < kRows; ++row) {
        const float y = 12.0F * static_cast<float>(kRows - row);
        builder.text(10, y, U"long words of a sentence that goes on")
            .text(300, y, U"and another one beside it as well");
    }
    std::u32string text;
    appendPageText(builder.page(), text);
    EXPECT_EQ(std::count(text.begin(), text.end(), U'g'), 2 * kRows);
}

TEST(PdfPageText, aNumberedListIsNotATable) {
    PageBuilder builder;
    builder.text(10, 700, U"1.").text(40, 700, U"The first thing");
    builder.text(10, 688, U"2.").text(40, 688, U"The second one");
    builder.text(10, 676, U"3.").text(40, 676, U"The third one");
    EXPECT_EQ(textOf(builder), "1. The first thing\n2. The second one\n3. The third one\n");
}

TEST(PdfPageText, textFromTheRightIsInLogicalOrder) {
    // Drawn from the left: what is seen is read from the right.
    EXPECT_EQ(textOf(PageBuilder().text(10, 700, U"םולש")), "שלום\n");
    EXPECT_EQ(textOf(PageBuilder().text(10, 700, U"123 םולש")), "שלום 123\n");
    EXPECT_EQ(textOf(PageBuilder().text(10, 700, U"PDF םולש")), "שלום PDF\n");
}

TEST(PdfPageText, formsOfLettersBecomeLetters) {
    EXPECT_EQ(textOf(PageBuilder().text(10, 700, U"oﬃce")), "office\n");
}

TEST(PdfPageText, turnedTextFollowsTheRest) {
    PageBuilder builder;
    builder.direction({0, 1}).text(300, 100, U"stamp").direction({1, 0}).lines(10, 700, {U"some text", U"more"});
    EXPECT_EQ(textOf(builder), "some text\nmore\nstamp\n");
}

TEST(PdfPageText, verticalWritingGoesFromRightToLeft) {
    PageBuilder builder;
    builder.flags(kVertical).direction({0, -1});
    builder.text(300, 700, U"縦書").text(284, 700, U"二行");
    EXPECT_EQ(textOf(builder), "縦書\n二行\n");
}

} // namespace
} // namespace quillow::pdf
