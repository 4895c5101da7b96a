// The separators between cells and rows, for boxes that are opened by hand.
#include "engines/html/render/TableText.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>

namespace quillow::html {
namespace {

class TableTextTest : public testing::Test {
protected:
    void enter(Display display, Visibility visibility = Visibility::visible) { tables_.enter(display, visibility); }
    void leave(int count = 1) {
        for (; count > 0; --count)
            tables_.leave();
    }
    void text(std::string_view characters) {
        tables_.beforeText(characters, WhiteSpace::normal);
        collector_.text(characters, WhiteSpace::normal, Visibility::visible);
    }
    void cell(std::string_view characters, Visibility visibility = Visibility::visible) {
        enter(Display::tableCell, visibility);
        text(characters);
        leave();
    }
    /// The text, which ends in a line end.
    std::string written() { return std::move(collector_).finish(); }

    TextCollector collector_{100};
    TableText tables_{collector_, CellSeparator::tab};
};

TEST_F(TableTextTest, separatesCellsAndRowsButDoesNotEndThem) {
    enter(Display::table);
    for (int row = 0; row < 2; ++row) {
        enter(Display::tableRow);
        cell("a");
        cell("b");
        leave();
    }
    leave();
    EXPECT_EQ(written(), "a\tb\na\tb\n");
}

TEST_F(TableTextTest, rowsOfAllGroupsBelongToOneTable) {
    enter(Display::table);
    for (const char* const characters : {"a", "b"}) {
        enter(Display::tableRowGroup);
        enter(Display::tableRow);
        cell(characters);
        leave(2);
    }
    EXPECT_EQ(written(), "a\nb\n");
}

TEST_F(TableTextTest, aTableInACellHasRowsOfItsOwn) {
    enter(Display::table);
    enter(Display::tableRow);
    enter(Display::tableCell);
    enter(Display::table);
    enter(Display::tableRow);
    cell("a");
    leave(3);
    cell("b");
    EXPECT_EQ(written(), "a\tb\n");
}

TEST_F(TableTextTest, nothingSeparatesAHiddenCellFromTheNext) {
    enter(Display::table);
    enter(Display::tableRow);
    cell("a", Visibility::hidden);
    cell("b");
    EXPECT_EQ(written(), "ab\n");
}

TEST_F(TableTextTest, otherContentOfARowIsACell) {
    enter(Display::table);
    enter(Display::tableRow);
    cell("a");
    text("b");
    EXPECT_EQ(written(), "a\tb\n");
}

TEST_F(TableTextTest, otherContentOfATableIsARow) {
    enter(Display::table);
    enter(Display::tableRow);
    cell("a");
    leave();
    enter(Display::block);
    text("b");
    EXPECT_EQ(written(), "a\nb\n");
}

TEST_F(TableTextTest, aCaptionIsNotARow) {
    enter(Display::table);
    enter(Display::tableRow);
    cell("a");
    leave();
    enter(Display::tableCaption);
    text("c");
    leave();
    enter(Display::tableRow);
    cell("b");
    EXPECT_EQ(written(), "ac\nb\n");
}

TEST_F(TableTextTest, aRowInARowIsNotSeparatedFromOtherContent) {
    enter(Display::tableRow);
    enter(Display::tableRow);
    cell("a");
    leave();
    text("b");
    EXPECT_EQ(written(), "ab\n");
}

TEST_F(TableTextTest, whiteSpaceIsNotContent) {
    enter(Display::tableRow);
    cell("a");
    tables_.beforeText(" \n", WhiteSpace::normal);
    cell("b");
    EXPECT_EQ(written(), "a\tb\n");
}

TEST_F(TableTextTest, preservedWhiteSpaceIsContent) {
    enter(Display::inline_);
    cell("a");
    tables_.beforeText(" ", WhiteSpace::preserve);
    cell("b");
    EXPECT_EQ(written(), "ab\n");
}

TEST_F(TableTextTest, contentOutsideOfATableSeparatesTwoTables) {
    cell("a");
    text("b");
    cell("c");
    cell("d");
    EXPECT_EQ(written(), "abc\td\n");
}

TEST(TableTextOptions, cellsMayHaveLinesOfTheirOwn) {
    TextCollector collector(100);
    TableText tables(collector, CellSeparator::line);
    for (const char* const characters : {"a", "b"}) {
        tables.enter(Display::tableCell, Visibility::visible);
        collector.text(characters, WhiteSpace::normal, Visibility::visible);
        tables.leave();
    }
    EXPECT_EQ(std::move(collector).finish(), "a\nb\n");
}

} // namespace
} // namespace quillow::html
