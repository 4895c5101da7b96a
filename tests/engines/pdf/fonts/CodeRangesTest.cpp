#include "engines/pdf/fonts/CodeRanges.h"

#include <gtest/gtest.h>

#include <vector>

namespace quillow::pdf {
namespace {

std::vector<CodeRange> closed(std::initializer_list<CodeRange> added) {
    CodeRanges ranges;
    for (const CodeRange& range : added)
        ranges.add(range);
    ranges.close();
    return {ranges.all().begin(), ranges.all().end()};
}

using List = std::vector<CodeRange>;

TEST(CodeRanges, neighboursThatContinueAreOneRange) {
    EXPECT_EQ(closed({{1, 1, 65}, {2, 2, 66}, {3, 5, 67}}), (List{{1, 5, 65}}));
    EXPECT_EQ(closed({{1, 1, 65}, {2, 2, 65}}), (List{{1, 1, 65}, {2, 2, 65}}));
}

TEST(CodeRanges, areSorted) {
    EXPECT_EQ(closed({{7, 8, 1}, {1, 2, 5}}), (List{{1, 2, 5}, {7, 8, 1}}));
}

TEST(CodeRanges, laterRangeCountsWhereTheyOverlap) {
    EXPECT_EQ(closed({{0, 9, 100}, {4, 5, 200}}), (List{{0, 3, 100}, {4, 5, 200}, {6, 9, 106}}));
    EXPECT_EQ(closed({{4, 5, 200}, {0, 9, 100}}), (List{{0, 3, 100}, {4, 9, 104}}));
    EXPECT_EQ(closed({{0, 4, 100}, {3, 9, 200}}), (List{{0, 2, 100}, {3, 9, 200}}));
    EXPECT_EQ(closed({{3, 9, 200}, {0, 4, 100}}), (List{{0, 2, 100}, {3, 4, 103}, {5, 9, 202}}));
    EXPECT_EQ(closed({{2, 2, 1}, {2, 2, 7}, {2, 2, 3}}), (List{{2, 2, 3}}));
}

TEST(CodeRanges, reachTheLastCode) {
    EXPECT_EQ(closed({{0xFFFFFFF0, 0xFFFFFFFF, 0}, {0, 0xFFFFFFFF, 5}}).back().high, 0xFFFFFFFF);
    EXPECT_EQ(closed({{0, 0xFFFFFFFF, 0}, {0xFFFFFFFF, 0xFFFFFFFF, 5}}),
              (List{{0, 0xFFFFFFFE, 0}, {0xFFFFFFFF, 0xFFFFFFFF, 5}}));
}

TEST(CodeRanges, findTheValueOfACode) {
    CodeRanges ranges;
    ranges.add({10, 19, 100});
    ranges.add({30, 30, 7});
    ranges.close();
    EXPECT_EQ(ranges.find(9), std::nullopt);
    EXPECT_EQ(ranges.find(10), 100U);
    EXPECT_EQ(ranges.find(19), 109U);
    EXPECT_EQ(ranges.find(20), std::nullopt);
    EXPECT_EQ(ranges.find(30), 7U);
    EXPECT_EQ(ranges.find(31), std::nullopt);
}

TEST(CodeRanges, rangesOverTheLimitAreLeftOut) {
    CodeRanges ranges;
    for (std::uint32_t i = 0; i <= CodeRanges::kMaximum; ++i)
        ranges.add({i * 2, i * 2, 1});
    ranges.close();
    EXPECT_EQ(ranges.all().size(), CodeRanges::kMaximum);
    EXPECT_EQ(ranges.find(static_cast<std::uint32_t>(CodeRanges::kMaximum) * 2), std::nullopt);
}

} // namespace
} // namespace quillow::pdf
