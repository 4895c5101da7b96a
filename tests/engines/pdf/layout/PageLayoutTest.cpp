#include "engines/pdf/layout/PageLayout.h"

#include "tests/engines/pdf/layout/PageBuilder.h"

#include <gtest/gtest.h>

namespace quillow::pdf {
namespace {

PageLayout layoutOf(const PageBuilder& builder) {
    PageLayout layout;
    layOut(builder.page(), layout);
    return layout;
}

TEST(PdfPageLayout, anEmptyPageHasNeitherRowsNorOrientations) {
    const PageLayout layout = layoutOf(PageBuilder());

    EXPECT_TRUE(layout.text.empty());
    EXPECT_TRUE(layout.rows.empty());
    EXPECT_TRUE(layout.orientations.empty());
}

TEST(PdfPageLayout, rowsHaveTheirTextAndPlace) {
    const PageLayout layout = layoutOf(PageBuilder().lines(10, 700, {U"first", U"the second"}).text(90, 688, U"end"));

    ASSERT_EQ(layout.rows.size(), 2U);
    const TextRow& second = layout.rows[1];
    EXPECT_EQ(layout.textOf(layout.rows[0]), U"first");
    EXPECT_EQ(layout.textOf(second), U"the second end");
    EXPECT_EQ(second.left, 10);
    EXPECT_EQ(second.right, 105);
    EXPECT_EQ(second.baseline, 688);
    EXPECT_LT(second.bottom, second.baseline);
    EXPECT_GT(second.top, second.baseline);
    EXPECT_EQ(second.size, 10);
}

TEST(PdfPageLayout, theTextHasABlankLineWhereARowBeginsAParagraph) {
    PageBuilder builder;
    builder.lines(10, 700, {U"one", U"two", U"three"}).lines(10, 640, {U"four", U"five"});

    const PageLayout layout = layoutOf(builder);

    EXPECT_EQ(layout.text, U"one\ntwo\nthree\n\nfour\nfive\n");
    std::vector<bool> begins;
    for (const TextRow& row : layout.rows)
        begins.push_back(row.beginsParagraph);
    EXPECT_EQ(begins, (std::vector<bool>{false, false, false, true, false}));
}

TEST(PdfPageLayout, rowsOfATableAreKnown) {
    PageBuilder builder;
    builder.text(10, 700, U"Name").text(100, 700, U"Size").text(200, 700, U"Year");
    builder.text(10, 688, U"Ada").text(100, 688, U"12").text(200, 688, U"1815");
    builder.text(10, 676, U"Bob").text(200, 676, U"1901").text(10, 600, U"A line of text");

    const PageLayout layout = layoutOf(builder);

    ASSERT_EQ(layout.rows.size(), 4U);
    EXPECT_TRUE(layout.rows[0].isTableRow);
    EXPECT_FALSE(layout.rows[0].continuesTable);
    EXPECT_TRUE(layout.rows[2].continuesTable);
    EXPECT_EQ(layout.textOf(layout.rows[2]), U"Bob\t\t1901");
    EXPECT_FALSE(layout.rows[3].isTableRow);
}

TEST(PdfPageLayout, turnedTextHasAnOrientationOfItsOwn) {
    PageBuilder builder;
    builder.direction({0, 1}).text(300, 100, U"stamp").direction({1, 0}).lines(10, 700, {U"some text", U"more"});

    const PageLayout layout = layoutOf(builder);

    ASSERT_EQ(layout.orientations.size(), 2U);
    EXPECT_EQ(layout.orientations[0].frame.along, (Point{1, 0}));
    EXPECT_EQ(layout.orientations[1].frame.along, (Point{0, 1}));
    const TextRow& stamp = layout.rows.back();
    EXPECT_EQ(stamp.orientation, 1);
    EXPECT_EQ(stamp.left, 100); // along its own direction
    EXPECT_EQ(stamp.baseline, -300);
}

TEST(PdfPageLayout, aLayoutIsEmptiedBeforeItIsUsedAgain) {
    PageLayout layout = layoutOf(PageBuilder().text(10, 700, U"before"));

    layOut(PageBuilder().text(10, 700, U"after").page(), layout);

    EXPECT_EQ(layout.text, U"after\n");
    EXPECT_EQ(layout.rows.size(), 1U);
    EXPECT_EQ(layout.orientations.size(), 1U);
}

} // namespace
} // namespace quillow::pdf
