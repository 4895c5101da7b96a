// Pages that are made to take long.
#include "engines/pdf/layout/Grid.h"
#include "engines/pdf/layout/MonospacedFonts.h"
#include "engines/pdf/layout/Order.h"
#include "engines/pdf/layout/PageLayout.h"
#include "engines/pdf/layout/PageText.h"
#include "tests/engines/pdf/layout/PageTextOf.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string>
#include <vector>

namespace quillow::pdf {
namespace {

/// A matrix without an inverse leaves letters their widths. Gaps are measured in heights.
TEST(PdfLayoutLimits, lettersWithoutHeightAreWords) {
    Page page = PageBuilder().text(10, 700, U"letters").page();
    page.runs.front().fontSize = 0;

    std::u32string text;
    appendPageText(page, text);

    EXPECT_TRUE(text == U"letters\n");
}

TEST(PdfLayoutLimits, aPageHasAsManyDirectionsAsAllowed) {
    constexpr int kDirections = 100;
    PageBuilder builder;
    for (int i = 0; i < kDirections; ++i) {
        const float angle = 2 * std::numbers::pi_v<float> * static_cast<float>(i) / kDirections;
        const Point direction{std::cos(angle), std::sin(angle)};
        builder.direction(direction).text(300 + 200 * direction.x, 400 + 200 * direction.y, U"a");
    }
    PageLayout layout;
    layOut(builder.page(), layout);
    EXPECT_EQ(layout.orientations.size(), 64U);
    EXPECT_EQ(std::count(layout.text.begin(), layout.text.end(), U'a'), kDirections);
}

/// `rows` rulings that cross `columns` rulings.
Rulings crossing(int columns, int rows) {
    const float width = 10.0F * static_cast<float>(columns - 1);
    const float height = 10.0F * static_cast<float>(rows - 1);
    Rulings rulings;
    for (int i = 0; i < rows; ++i)
        rulings.horizontal.push_back({10.0F * static_cast<float>(i), 0, width});
    for (int i = 0; i < columns; ++i)
        rulings.vertical.push_back({10.0F * static_cast<float>(i), 0, height});
    return rulings;
}

TEST(PdfLayoutLimits, drawingsOfTooManyRulingsHaveNoGrid) {
    EXPECT_EQ(gridsOf(crossing(3, 4'000)).size(), 1U);
    EXPECT_EQ(gridsOf(crossing(3, 4'001)).size(), 0U);
    EXPECT_EQ(gridsOf(crossing(4'000, 3)).size(), 1U);
    EXPECT_EQ(gridsOf(crossing(4'001, 3)).size(), 0U);
}

TEST(PdfLayoutLimits, gridsHaveAsManyFieldsAsAllowed) {
    EXPECT_EQ(gridsOf(crossing(250, 400)).size(), 1U); // 100,000
    EXPECT_EQ(gridsOf(crossing(250, 401)).size(), 0U);
}

TEST(PdfLayoutLimits, asManyFontsAreLookedAtAsAllowed) {
    constexpr std::uint32_t kMostFonts = 32;
    PageBuilder builder;
    for (std::uint32_t font = 0; font <= kMostFonts; ++font)
        builder.font(font).letter(0.6F).text(10, 700, U"abcdef");
    for (std::uint32_t i = 0; i < 2 * kMostFonts; ++i) // so that most text is in another font
        builder.font(0).letter(0.3F).text(10, 500, U"ab").letter(0.5F).text(20, 500, U"cdefghi");
    const MonospacedFonts fonts(builder.page());
    EXPECT_TRUE(fonts.contains(kMostFonts - 1));
    EXPECT_FALSE(fonts.contains(kMostFonts));
}

/// Items inside one another like the walls of a labyrinth, the innermost first: column, stripe, column, and so on.
TEST(PdfLayoutLimits, regionsAreCutAsOftenAsAllowed) {
    constexpr std::uint32_t kMostCuts = 40;
    constexpr std::uint32_t kItems = 90;
    float left = 0;
    float top = 2000;
    std::vector<Item> items;
    for (std::uint32_t i = 0; i < kItems; ++i) {
        if (i % 2 == 0) {
            items.push_back({left, left + 10, 0, top, 10});
            left += 20;
        } else {
            items.push_back({left, 2000, top - 10, top, 10});
            top -= 20;
        }
    }
    std::reverse(items.begin(), items.end());
    const std::vector<std::uint32_t> order = readingOrder(items, TextSource::program);
    std::vector<std::uint32_t> expected;
    for (std::uint32_t i = 0; i < kMostCuts; ++i)
        expected.push_back(kItems - 1 - i);
    for (std::uint32_t i = 0; i < kItems - kMostCuts; ++i)
        expected.push_back(i);
    EXPECT_EQ(order, expected);
}

TEST(PdfLayoutLimits, asManyColumnsDrawnRowByRowAreSeparatedAsAllowed) {
    const auto textWith = [](int columns) {
        PageBuilder builder;
        for (int row = 0; row < 5; ++row)
            for (int column = 0; column < columns; ++column)
                builder.text(10 + 175.0F * static_cast<float>(column), 700 - 12.0F * static_cast<float>(row),
                             U"this is a column of running text");
        return textOf(builder);
    };
    const auto linesOfText = [](const std::string& text) { return std::count(text.begin(), text.end(), '\n'); };
    EXPECT_EQ(linesOfText(textWith(9)), 9 * 5);
    EXPECT_EQ(linesOfText(textWith(30)), 8 * 5) << "the rest is read row by row";
}

TEST(PdfLayoutLimits, asManyRulingsAtALineAreUnderscoresAsAllowed) {
    constexpr int kMostChosen = 256;
    const auto textWith = [](int rulings) {
        PageBuilder builder;
        builder.letter(1).text(10, 700, U"a").text(23.6F, 700, U"b");
        for (int i = 0; i < rulings; ++i)
            builder.rule(100 + 4.0F * static_cast<float>(i), 699.5F, 102 + 4.0F * static_cast<float>(i), 699.5F);
        return textOf(builder.rule(20.3F, 699.8F, 23.3F, 699.8F));
    };
    EXPECT_EQ(textWith(kMostChosen - 1), "a_b\n");
    EXPECT_EQ(textWith(kMostChosen), "a b\n");
}

} // namespace
} // namespace quillow::pdf
