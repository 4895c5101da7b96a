// Tables that the structure tree names.
#include "tests/engines/pdf/layout/PageTextOf.h"

#include <gtest/gtest.h>

namespace quillow::pdf {
namespace {

TEST(PdfTaggedTable, theLinesOfACellAreJoined) {
    PageBuilder builder;
    builder.cell(0, 0).text(10, 700, U"Date:").cell(0, 1).text(100, 700, U"Friday");
    builder.cell(1, 0).text(10, 680, U"Place:").cell(1, 1).text(100, 680, U"Town Hall").text(100, 668, U"Newark");
    EXPECT_EQ(linesOf(builder), "Date:\tFriday\nPlace:\tTown Hall Newark\n");
}

TEST(PdfTaggedTable, emptyCellsAreKept) {
    PageBuilder builder;
    builder.cell(0, 0).text(10, 700, U"a").cell(0, 1).text(60, 700, U"b").cell(0, 2).text(110, 700, U"c");
    builder.cell(1, 0).text(10, 688, U"d").cell(1, 2).text(110, 688, U"f");
    EXPECT_EQ(linesOf(builder), "a\tb\tc\nd\t\tf\n");
}

TEST(PdfTaggedTable, aLineThatReachesOverCellsIsCut) {
    PageBuilder builder;
    builder.cell(0, 0).text(10, 700, U"left").cell(0, 1).text(37, 700, U"right");
    builder.cell(1, 0).text(10, 688, U"down").cell(1, 1).text(37, 688, U"there");
    EXPECT_EQ(linesOf(builder), "left\tright\ndown\tthere\n");
}

TEST(PdfTaggedTable, aTableReadFromTheRightBeginsAtTheRight) {
    PageBuilder builder;
    builder.cell(0, 0).text(200, 700, U"א").cell(0, 1).text(10, 700, U"ב");
    builder.cell(1, 0).text(200, 688, U"ג").cell(1, 1).text(10, 688, U"ד");
    EXPECT_EQ(linesOf(builder), "א\tב\nג\tד\n");
}

TEST(PdfTaggedTable, rowsThatGoUpThePageAreNotBelieved) {
    PageBuilder builder;
    builder.cell(1, 0).text(10, 700, U"Date:").cell(1, 1).text(100, 700, U"Friday");
    builder.cell(0, 0).text(10, 680, U"Place:").cell(0, 1).text(100, 680, U"Newark");
    EXPECT_EQ(linesOf(builder), "Date: Friday\nPlace: Newark\n");
}

TEST(PdfTaggedTable, aTableWithOtherTextBetweenItsCellsIsNotBelieved) {
    PageBuilder builder;
    builder.cell(0, 0).text(10, 700, U"Date:").cell(0, 1).text(100, 700, U"Friday").unmarked();
    builder.text(10, 690, U"between").cell(1, 0).text(10, 680, U"Place:").cell(1, 1).text(100, 680, U"Newark");
    EXPECT_EQ(linesOf(builder), "Date: Friday\nbetween\nPlace: Newark\n");
}

TEST(PdfTaggedTable, aPageLaidOutWithATableIsNone) {
    PageBuilder builder;
    builder.cell(0, 0).text(10, 720, U"head").cell(0, 1).text(100, 720, U"menu").cell(1, 0);
    for (int i = 0; i < 13; ++i)
        builder.text(10, 700.0F - 12.0F * static_cast<float>(i), U"a line");
    builder.cell(1, 1).text(100, 700, U"side");
    EXPECT_EQ(linesOf(builder).substr(0, 10), "head menu\n");
    EXPECT_NE(linesOf(builder).find("a line\na line\na line\n"), std::string::npos);
}

} // namespace
} // namespace quillow::pdf
