#include "tests/engines/pdf/layout/PageTextOf.h"

#include <gtest/gtest.h>

namespace quillow::pdf {
namespace {

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

TEST(PdfTable, centredCellsOfSeveralLinesAreInTheirRow) {
    PageBuilder builder;
    builder.text(10, 720, U"short").text(100, 720, U"16").text(150, 720, U"word").text(220, 720, U"18");
    for (const float y : {700.0F, 670.0F}) {
        builder.lines(10, y, {U"a label of", U"two lines"}, 12);
        builder.text(100, y - 6, U"17").text(150, y - 6, U"words").text(220, y - 6, U"19");
    }
    EXPECT_EQ(textOf(builder), "short\t16\tword\t18\n"
                               "a label of two lines\t17\twords\t19\n"
                               "a label of two lines\t17\twords\t19\n");
}

TEST(PdfTable, theMiddleLineOfACentredCellMayBeBesideTheNumbers) {
    PageBuilder builder;
    builder.text(10, 720, U"One").text(100, 720, U"14").text(150, 720, U"15").text(220, 720, U"16");
    builder.lines(10, 700, {U"A label", U"Of three", U"Lines"});
    builder.text(100, 688, U"17").text(150, 688, U"18").text(220, 688, U"19");
    builder.text(10, 656, U"Two").text(100, 656, U"20").text(150, 656, U"21").text(220, 656, U"22");
    EXPECT_EQ(textOf(builder), "One\t14\t15\t16\nA label Of three Lines\t17\t18\t19\nTwo\t20\t21\t22\n");
}

TEST(PdfTable, theLinesOfAHeadAreJoinedInTheirColumns) {
    PageBuilder builder;
    builder.text(100, 712, U"Number").text(160, 712, U"Percent");
    builder.text(10, 700, U"Format").text(100, 700, U"of items").text(160, 700, U"of items");
    builder.rule(10, 697, 200, 697);
    builder.text(10, 686, U"Total").text(110, 686, U"135").text(170, 686, U"100");
    builder.text(10, 674, U"Choice").text(110, 674, U"74").text(170, 674, U"55");
    EXPECT_EQ(textOf(builder), "Format\tNumber of items\tPercent of items\nTotal\t135\t100\nChoice\t74\t55\n");
}

TEST(PdfTable, whatIsBelowAHeadingOverSeveralColumnsIsTheNextRowOfTheHead) {
    PageBuilder builder;
    builder.rule(10, 725, 260, 725);
    builder.text(130, 715, U"Year").rule(95, 712, 260, 712);
    builder.text(10, 700, U"Measure").text(100, 700, U"1997").text(160, 700, U"1998").text(220, 700, U"1999");
    builder.rule(10, 697, 260, 697);
    builder.text(10, 686, U"Income").text(100, 686, U"0.45").text(160, 686, U"0.46").text(220, 686, U"0.47");
    builder.text(10, 674, U"Health").text(100, 674, U"0.06").text(160, 674, U"0.07").text(220, 674, U"0.08");
    EXPECT_EQ(textOf(builder),
              "Measure\tYear\n\t1997\t1998\t1999\nIncome\t0.45\t0.46\t0.47\nHealth\t0.06\t0.07\t0.08\n");
}

TEST(PdfTable, aHeadingWiderThanItsNumbersIsInTheColumnOverWhichItIs) {
    PageBuilder builder;
    builder.text(10, 700, U"Year").text(60, 700, U"Islander").text(115, 700, U"Alaska Native").text(200, 700, U"Sum");
    builder.rule(10, 697, 220, 697);
    builder.text(10, 686, U"1996").text(70, 686, U"1,731").text(150, 686, U"527").text(200, 686, U"800");
    builder.text(10, 674, U"1997").text(70, 674, U"1,796").text(150, 674, U"535").text(200, 674, U"801");
    builder.text(10, 662, U"1998").text(70, 662, U"1,846").text(150, 662, U"534").text(200, 662, U"802");
    EXPECT_EQ(textOf(builder), "Year\tIslander\tAlaska Native\tSum\n1996\t1,731\t527\t800\n1997\t1,796\t535\t801\n"
                               "1998\t1,846\t534\t802\n");
}

TEST(PdfTable, columnsThatNoRulingSeparatesAreFoundInRows) {
    PageBuilder builder;
    ruleGrid(builder, {10, 200}, {712, 698, 672, 658});
    builder.text(12, 702, U"Type").text(82, 702, U"Weekly");
    builder.text(12, 688, U"Founded").lines(82, 688, {U"October 1918,", U"then 1935"});
    builder.text(12, 662, U"Editor").text(82, 662, U"Joe Stuver");
    EXPECT_EQ(textOf(builder), "Type\tWeekly\nFounded\tOctober 1918, then 1935\nEditor\tJoe Stuver\n");
}

TEST(PdfTable, aListInACellIsNoColumn) {
    PageBuilder builder;
    ruleGrid(builder, {10, 110, 210}, {712, 670, 628});
    for (const float y : {700.0F, 658.0F})
        builder.text(12, y, U"Plan")
            .text(112, y, U"•")
            .text(122, y, U"one")
            .text(112, y - 12, U"•")
            .text(122, y - 12, U"two");
    EXPECT_EQ(textOf(builder), "Plan\t• one • two\nPlan\t• one • two\n");
}

TEST(PdfTable, backgroundsOfLinesInACellSeparateNothing) {
    PageBuilder builder;
    ruleGrid(builder, {10, 110, 210}, {712, 684, 656});
    builder.box(15, 698, 105, 711).box(15, 685, 105, 698);
    builder.lines(16, 700, {U"to air", U"kg/year"}).text(112, 694, U"17");
    builder.lines(16, 672, {U"to land", U"kg/year"}).text(112, 666, U"18");
    EXPECT_EQ(textOf(builder), "to air kg/year\t17\nto land kg/year\t18\n");
}

TEST(PdfTable, aRowWithoutVerticalRulingsHasTheColumnsOfTheOthers) {
    PageBuilder builder;
    builder.rule(10, 712, 310, 712).rule(10, 698, 310, 698).rule(10, 684, 310, 684).rule(10, 670, 310, 670);
    builder.rule(10, 670, 10, 712).rule(310, 670, 310, 712);
    builder.rule(110, 670, 110, 698).rule(210, 670, 210, 698);
    builder.text(112, 702, U"Play").text(12, 702, U"Team").text(212, 702, U"Home");
    builder.text(12, 688, U"Hawks").text(112, 688, U"Goal").text(212, 688, U"3");
    builder.text(12, 674, U"Saints").text(112, 674, U"Run").text(212, 674, U"6");
    EXPECT_EQ(textOf(builder), "Team\tPlay\tHome\nHawks\tGoal\t3\nSaints\tRun\t6\n");
}

TEST(PdfTable, aFoldedTableIsReadPartByPart) {
    PageBuilder builder;
    builder.text(10, 700, U"Age").text(100, 700, U"Sum").text(150, 700, U"Age").text(240, 700, U"Sum");
    builder.text(10, 688, U"1").text(100, 688, U"31").text(150, 688, U"4").text(240, 688, U"34");
    builder.text(10, 676, U"2").text(100, 676, U"32").text(150, 676, U"5").text(240, 676, U"35");
    builder.text(10, 664, U"3").text(100, 664, U"33");
    EXPECT_EQ(textOf(builder), "Age\tSum\n1\t31\n2\t32\n3\t33\nAge\tSum\n4\t34\n5\t35\n");
}

TEST(PdfTable, numbersWithGroupsOfDigitsAreTwoCells) {
    PageBuilder builder;
    ruleGrid(builder, {10, 60, 170}, {712, 656});
    builder.rule(10, 698, 170, 698);
    builder.text(12, 702, U"Age").text(62, 702, U"All");
    for (const float y : {688.0F, 676.0F, 664.0F})
        builder.text(12, y, U"1-2").text(62, y, U"1,087,948").text(110, y, U"1,022,490");
    EXPECT_EQ(textOf(builder), "Age\tAll\n1-2\t1,087,948\t1,022,490\n1-2\t1,087,948\t1,022,490\n"
                               "1-2\t1,087,948\t1,022,490\n");
}

TEST(PdfTable, listsInFramesSideBySideAreNoRows) {
    PageBuilder builder;
    ruleGrid(builder, {5, 105, 205}, {720, 300, 280});
    for (int i = 0; i < 30; ++i) {
        const float y = 700 - 12 * static_cast<float>(i);
        builder.text(10, y, U"• some text").text(110, y, U"• other text");
    }
    builder.text(10, 285, U"a foot").text(110, 285, U"and more");
    EXPECT_EQ(textOf(builder).find('\t'), std::string::npos);
}

} // namespace
} // namespace quillow::pdf
