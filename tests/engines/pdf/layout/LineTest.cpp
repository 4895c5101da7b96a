#include "engines/pdf/layout/Line.h"

#include "engines/pdf/layout/Row.h"
#include "tests/engines/pdf/layout/PageBuilder.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace quillow::pdf {
namespace {

TEST(PdfLine, spansJoinAnEarlierLineWhateverTheOrderOfLinesIs) {
    constexpr int kLines = 400; // more than the heights that are looked for at once
    PageBuilder builder;
    for (int i = 0; i < kLines; ++i)
        builder.text(10, static_cast<float>((i * 37 % kLines) * 12 - 900), U"first");
    for (int i = kLines; i-- > 0;)
        builder.text(36, static_cast<float>(i * 12 - 899), U"second");
    const std::vector<Orientation> orientations = orientationsOf(builder.page());
    const Lines found = linesOf(orientations[0]);
    ASSERT_EQ(found.lines.size(), static_cast<std::size_t>(kLines));
    for (const Line& line : found.lines) {
        ASSERT_EQ(line.spanCount, 2U);
        const auto spans = found.spansOf(line);
        EXPECT_EQ(orientations[0].spans[spans[0]].baseline + 1, orientations[0].spans[spans[1]].baseline);
    }
}

TEST(PdfLine, linesAtOneHeightThatGrowTogetherAreOne) {
    const Page page =
        PageBuilder().text(10, 700, U"a").text(40, 700, U"c").text(10, 690, U"below").text(14, 700, U"bbbbbb").page();
    const std::vector<Orientation> orientations = orientationsOf(page);
    EXPECT_EQ(linesOf(orientations[0]).lines.size(), 2U);
}

TEST(PdfRow, aCellKeepsTheOrderOfItsLinesHoweverManyThereAre) {
    Cell cell;
    EXPECT_TRUE(cell.empty());
    for (std::uint32_t i = 0; i < 20; ++i) {
        cell.push_back(20 - i);
        EXPECT_EQ(cell.size(), i + 1);
        EXPECT_EQ(cell.front(), 20U);
        EXPECT_EQ(cell[i], 20 - i);
    }
    std::sort(cell.begin(), cell.end());
    EXPECT_EQ(cell.front(), 1U);
    EXPECT_EQ(cell[19], 20U);
}

} // namespace
} // namespace quillow::pdf
