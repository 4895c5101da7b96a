#include "engines/PageSelection.h"

#include <gtest/gtest.h>

namespace quillow {
namespace {

using Ranges = std::vector<PageRange>;
constexpr std::uint32_t kLast = PageRange::kLastPage;

TEST(PageSelection, withoutARangeIsEveryPage) {
    EXPECT_TRUE(PageSelection().isEveryPage());
    EXPECT_TRUE(PageSelection().contains(1));
    EXPECT_TRUE(PageSelection().contains(4'000'000));
}

TEST(PageSelection, rangesAreInOrderAndDoNotTouch) {
    struct Case {
        const char* text;
        Ranges ranges;
    };
    const Case cases[] = {{"12", {{12, 12}}},        {"3-7,12", {{3, 7}, {12, 12}}},      {"5-", {{5, kLast}}},
                          {"-3", {{1, 3}}},          {"7,3,5", {{3, 3}, {5, 5}, {7, 7}}}, {"2,2,2", {{2, 2}}},
                          {"1-4,3-9,10", {{1, 10}}}, {"9-,2-,4", {{2, kLast}}},           {"4-4", {{4, 4}}}};
    for (const Case& each : cases) {
        const auto selection = parsePageSelection(each.text);
        ASSERT_TRUE(selection) << each.text;
        EXPECT_EQ(selection->ranges(), each.ranges) << each.text;
    }
}

TEST(PageSelection, anythingElseIsRefused) {
    for (const char* text :
         {"", "-", "0", "0-3", "7-3", "1,", ",1", "1,,2", "a", "1-b", "1 ", "+1", "1-2-3", "4294967296"})
        EXPECT_FALSE(parsePageSelection(text)) << text;
}

TEST(PageSelection, containsThePagesOfItsRanges) {
    const auto selection = parsePageSelection("3-5,9,20-");
    ASSERT_TRUE(selection);
    for (const std::uint32_t page : {3U, 4U, 5U, 9U, 20U, 1'000'000U})
        EXPECT_TRUE(selection->contains(page)) << page;
    for (const std::uint32_t page : {1U, 2U, 6U, 8U, 10U, 19U})
        EXPECT_FALSE(selection->contains(page)) << page;
}

} // namespace
} // namespace quillow
