#include "engines/pdf/layout/PageText.h"
#include "tests/engines/pdf/layout/PageBuilder.h"
#include "text/Utf8.h"

#include <gtest/gtest.h>

namespace quillow::pdf {
namespace {

std::string textOf(const PageBuilder& builder) {
    std::u32string text;
    appendPageText(builder.page(), text);
    std::string utf8;
    for (const char32_t c : text)
        text::appendUtf8(utf8, c);
    return utf8;
}

void ruleGrid(PageBuilder& builder, std::initializer_list<float> xs, std::initializer_list<float> ys) {
    const float left = *xs.begin();
    const float right = *(xs.end() - 1);
    const float top = *ys.begin();
    const float bottom = *(ys.end() - 1);
    for (const float x : xs)
        builder.rule(x, bottom, x, top);
    for (const float y : ys)
        builder.rule(left, y, right, y);
}

TEST(PdfTable, theLinesOfARuledCellAreJoined) {
    PageBuilder builder;
    ruleGrid(builder, {10, 110, 210}, {712, 684, 656});
    builder.lines(12, 700, {U"a label of", U"two lines"}).text(112, 694, U"17");
    builder.lines(12, 672, {U"another", U"label"}).text(112, 666, U"18");
    EXPECT_EQ(textOf(builder), "a label of two lines\t17\nanother label\t18\n");
}

TEST(PdfTable, aRulingCutsALine) {
    PageBuilder builder;
    ruleGrid(builder, {10, 43, 110}, {712, 698, 684});
    builder.text(12, 702, U"three").text(45, 702, U"drei").text(12, 688, U"seven").text(45, 688, U"sieben");
    EXPECT_EQ(textOf(builder), "three\tdrei\nseven\tsieben\n");
}

TEST(PdfTable, aRuledCellOverSeveralRowsIsInItsFirstRow) {
    PageBuilder builder;
    builder.rule(10, 684, 10, 712).rule(60, 684, 60, 712).rule(160, 684, 160, 712);
    builder.rule(10, 712, 160, 712).rule(60, 698, 160, 698).rule(10, 684, 160, 684);
    builder.rule(10, 670, 160, 670).rule(10, 670, 10, 684).rule(60, 670, 60, 684).rule(160, 670, 160, 684);
    builder.text(12, 694, U"both").text(62, 702, U"first").text(62, 688, U"second");
    builder.text(12, 674, U"one").text(62, 674, U"third");
    EXPECT_EQ(textOf(builder), "both\tfirst\n\tsecond\none\tthird\n");
}

TEST(PdfTable, labelsWithoutRulingsOfTheirOwnStandInTheirRows) {
    PageBuilder builder;
    for (const float y : {712.0F, 698.0F, 684.0F, 670.0F})
        builder.rule(100, y, 200, y);
    for (const float x : {100.0F, 150.0F, 200.0F})
        builder.rule(x, 670, x, 712);
    builder.rule(10, 712, 100, 712).rule(10, 670, 100, 670);
    builder.text(12, 702, U"Rent").text(110, 702, U"10").text(160, 702, U"11");
    builder.text(12, 688, U"Food").text(110, 688, U"20").text(160, 688, U"21");
    builder.text(12, 674, U"Fuel").text(110, 674, U"30").text(160, 674, U"31");
    EXPECT_EQ(textOf(builder), "Rent\t10\t11\nFood\t20\t21\nFuel\t30\t31\n");
}

TEST(PdfTable, bandsOfNumbersBetweenTwoRulingsAreRows) {
    PageBuilder builder;
    ruleGrid(builder, {10, 60, 110}, {712, 698, 656});
    builder.text(12, 702, U"Year").text(62, 702, U"Sum");
    builder.lines(12, 688, {U"1901", U"1902", U"1903"}).lines(62, 688, {U"10", U"20", U"30"});
    EXPECT_EQ(textOf(builder), "Year\tSum\n1901\t10\n1902\t20\n1903\t30\n");
}

TEST(PdfTable, aRuledTableFromTheRightIsReadFromTheRight) {
    PageBuilder builder;
    ruleGrid(builder, {10, 110, 210}, {712, 698, 684});
    builder.text(12, 702, U"1234").text(150, 702, U"םולש");
    builder.text(12, 688, U"5678").text(150, 688, U"הרות");
    EXPECT_EQ(textOf(builder), "שלום\t1234\nתורה\t5678\n");
}

TEST(PdfTable, framesAreNotATable) {
    PageBuilder builder;
    builder.rule(5, 600, 5, 720).rule(150, 600, 150, 720).rule(300, 600, 300, 720);
    builder.rule(5, 720, 300, 720).rule(5, 600, 300, 600);
    builder.lines(10, 700, {U"left one", U"left two"}).lines(160, 700, {U"right one", U"right two"});
    EXPECT_EQ(textOf(builder), "left one\nleft two\nright one\nright two\n");
}

TEST(PdfTable, columnsNearerThanTwoLinesAreCut) {
    PageBuilder builder;
    builder.text(10, 700, U"Name").text(100, 700, U"1901").text(127, 700, U"1902");
    builder.text(10, 688, U"Ada").text(100, 688, U"1231").text(127, 688, U"4561");
    builder.text(10, 676, U"Bob").text(100, 676, U"1232").text(127, 676, U"4562");
    EXPECT_EQ(textOf(builder), "Name\t1901\t1902\nAda\t1231\t4561\nBob\t1232\t4562\n");
}

TEST(PdfTable, wordsThatHappenToStandBelowOneAnotherAreOneCell) {
    PageBuilder builder;
    builder.text(10, 700, U"Name").text(100, 700, U"of it").text(180, 700, U"1902");
    builder.text(10, 688, U"Ada").text(100, 688, U"is it").text(180, 688, U"4561");
    builder.text(10, 676, U"Bob").text(100, 676, U"to be").text(180, 676, U"4562");
    EXPECT_EQ(textOf(builder), "Name\tof it\t1902\nAda\tis it\t4561\nBob\tto be\t4562\n");
}

} // namespace
} // namespace quillow::pdf
