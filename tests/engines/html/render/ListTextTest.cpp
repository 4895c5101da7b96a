// The numbers of list items and their markers, for elements that are opened by hand.
#include "engines/html/render/ListText.h"

#include "tests/engines/html/TestSupport.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>

namespace quillow::html {
namespace {

constexpr Style kItem = [] {
    Style style;
    style.display = Display::listItem;
    style.listStyle = ListStyle::decimal;
    return style;
}();

/// The text of the first list of a body, whose items are empty. Each item is written as "x" on a line of its own.
std::string itemsOf(std::string_view html, const Style& style = kItem) {
    const auto tree = parseHtml(std::string(html));
    TextCollector collector(100);
    ListText lists(*tree, collector);
    const NodeId list = tree->firstChild(bodyOf(*tree));
    lists.openList(list);
    for (NodeId item = tree->firstChild(list); item != kNoNode; item = tree->next(item)) {
        const bool hasMarker = lists.openItem(item, style);
        collector.insert("x");
        collector.literal('\n');
        if (hasMarker) lists.closeItem();
    }
    lists.closeList();
    return std::move(collector).finish();
}

TEST(ListText, numbersFollowTheAttributesOfTheListAndItsItems) {
    EXPECT_EQ(itemsOf("<ol><li><li>"), "1. x\n2. x\n");
    EXPECT_EQ(itemsOf("<ol start=5><li><li>"), "5. x\n6. x\n");
    EXPECT_EQ(itemsOf("<ol start=x><li>"), "1. x\n");
    EXPECT_EQ(itemsOf("<ol><li><li value=7><li>"), "1. x\n7. x\n8. x\n");
    EXPECT_EQ(itemsOf("<ol reversed><li><li>"), "2. x\n1. x\n");
    EXPECT_EQ(itemsOf("<ol reversed start=0><li><li>"), "0. x\n-1. x\n");
}

TEST(ListText, onlyListsWithNumbersHaveAStart) {
    EXPECT_EQ(itemsOf("<ul start=5 reversed><li><li>"), "1. x\n2. x\n");
}

TEST(ListText, otherElementsHaveNoNumberOfTheirOwn) {
    EXPECT_EQ(itemsOf("<ol start=3><div></div><li><p></p><li>"), "1. x\n3. x\n4. x\n");
}

TEST(ListText, anItemOutsideOfAListIsNumberOne) {
    const auto tree = parseHtml("<li value=5>");
    TextCollector collector(100);
    ListText lists(*tree, collector);
    EXPECT_TRUE(lists.openItem(tree->firstChild(bodyOf(*tree)), kItem));
    collector.insert("x");
    EXPECT_EQ(std::move(collector).finish(), "1. x\n");
}

TEST(ListText, anItemWithoutAMarkerTakesItsNumber) {
    const auto tree = parseHtml("<ol><li><li>");
    TextCollector collector(100);
    ListText lists(*tree, collector);
    const NodeId list = tree->firstChild(bodyOf(*tree));
    const NodeId first = tree->firstChild(list);
    lists.openList(list);
    Style hidden = kItem;
    hidden.visibility = Visibility::hidden;
    EXPECT_FALSE(lists.openItem(first, hidden));
    EXPECT_TRUE(lists.openItem(tree->next(first), kItem));
    collector.insert("x");
    EXPECT_EQ(std::move(collector).finish(), "2. x\n");
}

TEST(ListText, blocksAndItemsWithoutAStyleHaveNoMarker) {
    Style style = kItem;
    style.listStyle = ListStyle::none;
    EXPECT_EQ(itemsOf("<ol><li>", style), "x\n");
    style = kItem;
    style.display = Display::block;
    EXPECT_EQ(itemsOf("<ol><li>", style), "x\n");
}

/// The text of an item in `depth` lists, each of them in an item of the one around it if `inItems`.
std::string itemInLists(std::size_t depth, bool inItems) {
    const auto tree = parseHtml("<ol><li>");
    TextCollector collector(1000);
    ListText lists(*tree, collector);
    const NodeId list = tree->firstChild(bodyOf(*tree));
    for (std::size_t i = 0; i < depth; ++i) {
        lists.openList(list);
        if (!inItems && i + 1 < depth) continue;
        EXPECT_TRUE(lists.openItem(tree->firstChild(list), kItem));
    }
    collector.insert("x");
    return std::move(collector).finish();
}

TEST(ListText, listsInListsAreIndentedUpToALimit) {
    EXPECT_EQ(itemInLists(1, false), "1. x\n");
    EXPECT_EQ(itemInLists(2, false), "  1. x\n");
    EXPECT_EQ(itemInLists(17, false), std::string(32, ' ') + "1. x\n");
    EXPECT_EQ(itemInLists(40, false), std::string(32, ' ') + "1. x\n");
}

TEST(ListText, markersOnOneLineAreIndentedOnce) {
    EXPECT_EQ(itemInLists(3, true), "1. 1. 1. x\n");
}

TEST(ListText, anItemWithoutTextDropsItsMarkerOnly) {
    const auto tree = parseHtml("<ol><li>");
    TextCollector collector(100);
    ListText lists(*tree, collector);
    const NodeId list = tree->firstChild(bodyOf(*tree));
    const NodeId item = tree->firstChild(list);
    lists.openList(list);
    EXPECT_TRUE(lists.openItem(item, kItem));
    lists.openList(list);
    EXPECT_TRUE(lists.openItem(item, kItem));
    lists.closeItem();
    lists.closeList();
    collector.insert("x");
    lists.closeItem();
    EXPECT_EQ(std::move(collector).finish(), "1. x\n");
}

} // namespace
} // namespace quillow::html
