// Pages that are made to take long.
#include "engines/pdf/layout/Columns.h"
#include "engines/pdf/layout/Evidence.h"
#include "engines/pdf/layout/Grid.h"
#include "engines/pdf/layout/Line.h"
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
#include <string_view>
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

TEST(PdfLayoutLimits, aPageHasAsManyGridsAsAllowed) {
    Rulings rulings;
    for (int i = 0; i < 100; ++i) {
        const float y = 30.0F * static_cast<float>(i);
        rulings.horizontal.insert(rulings.horizontal.end(), {{y, 0, 100}, {y + 10, 0, 100}, {y + 20, 0, 100}});
        rulings.vertical.insert(rulings.vertical.end(), {{0, y, y + 20}, {50, y, y + 20}, {100, y, y + 20}});
    }
    EXPECT_EQ(gridsOf(rulings).size(), 64U);
}

/// A grid of two columns. The right one has columns of numbers without rulings.
std::string textOfFreeColumns(int rows, int columns) {
    const float right = 120 + 10.0F * static_cast<float>(columns);
    const float top = 12 * static_cast<float>(rows);
    PageBuilder builder;
    builder.rule(10, 0, 10, top).rule(110, 0, 110, top).rule(right, 0, right, top).rule(10, top, right, top);
    builder.size(6);
    for (int row = 0; row < rows; ++row) {
        const float y = 12 * static_cast<float>(row);
        builder.rule(10, y, right, y).text(12, y + 3, U"label");
        for (int column = 0; column < columns; ++column)
            builder.text(114 + 10.0F * static_cast<float>(column), y + 3, U"17");
    }
    return textOf(builder);
}

TEST(PdfLayoutLimits, aCellHasAsManyFreeColumnsAsAllowed) {
    constexpr int kMostStripes = 32;
    const auto tabsIn = [](const std::string& text) { return std::count(text.begin(), text.end(), '\t'); };
    EXPECT_EQ(tabsIn(textOfFreeColumns(4, kMostStripes + 1)), 4 * (kMostStripes + 1));
    EXPECT_EQ(tabsIn(textOfFreeColumns(4, kMostStripes + 2)), 4);
    constexpr int kMostRulings = 4000;
    constexpr int kMostRows = kMostRulings / kMostStripes;
    EXPECT_EQ(tabsIn(textOfFreeColumns(kMostRows, kMostStripes + 1)), kMostRows * (kMostStripes + 1));
    EXPECT_EQ(tabsIn(textOfFreeColumns(kMostRows + 1, kMostStripes + 1)), kMostRows + 1);
}

TEST(PdfLayoutLimits, aTableIsLookedForInAsManyRowsAsAllowed) {
    constexpr int kMostBands = 400;
    PageBuilder builder;
    for (int row = 0; row < 3 * kMostBands; ++row) {
        const float y = -12.0F * static_cast<float>(row);
        const bool isNumber = row >= kMostBands / 2 && row < kMostBands;
        builder.text(10, y, U"some words").text(110, y, isNumber ? U"17" : U"others");
    }
    const std::string text = textOf(builder);
    // Among the cells of so many rows enough are numbers, among all of them too few.
    EXPECT_EQ(std::count(text.begin(), text.end(), '\t'), kMostBands);
}

/// Rows that are no table, but must be tried from each of them on, and a table below.
std::string textOfTableBelow(int rows, int lines) {
    PageBuilder builder;
    float y = 0;
    for (const char32_t* const number : {U"17", U"18", U"19", U"20"})
        builder.text(10, y, U"label").text(110, y, number), y += 12;
    y += 100;
    for (int row = 0; row < rows; ++row)
        builder.text(10, y, U"some words").text(110, y, U"others"), y += 12;
    for (int line = 0; line < lines; ++line)
        builder.text(10, y, U"a"), y += 12;
    return textOf(builder);
}

TEST(PdfLayoutLimits, tablesAreLookedForAsLongAsAllowed) {
    // About two thirds of the third power of the rows is looked at.
    EXPECT_NE(textOfTableBelow(100, 0).find("label\t17"), std::string::npos);
    EXPECT_EQ(textOfTableBelow(150, 0).find("label\t17"), std::string::npos);
    EXPECT_NE(textOfTableBelow(150, 60'000).find("label\t17"), std::string::npos) << "a long page may take longer";
    EXPECT_EQ(textOfTableBelow(190, 60'000).find("label\t17"), std::string::npos);
}

/// Parts of a line far apart, and one that is drawn last and touches the first.
std::string textOfLatePart(int parts) {
    PageBuilder builder;
    for (int i = 0; i < parts; ++i)
        builder.text(10 + 60.0F * static_cast<float>(i), 700, U"part");
    return textOf(builder.text(30, 700.5F, U"ner"));
}

TEST(PdfLayoutLimits, asManyLinesOfAHeightAreLookedAtAsAllowed) {
    EXPECT_TRUE(textOfLatePart(32).starts_with("partner")) << textOfLatePart(32);
    EXPECT_FALSE(textOfLatePart(33).starts_with("partner")) << textOfLatePart(33);
}

/// Columns side by side, drawn one after the other. `heights` columns in succession have different heights on the
/// page.
std::vector<Line> manyColumns(int count, float width, int heights) {
    constexpr int kRows = 6;
    constexpr float kLeading = 12;
    constexpr float kGap = 20;
    std::vector<Line> lines;
    for (int column = 0; column < count; ++column) {
        const float left = static_cast<float>(column) * (width + kGap);
        const float lowered = kLeading * static_cast<float>(column % heights) / static_cast<float>(heights);
        for (int row = 0; row < kRows; ++row) {
            const float baseline = 700 - lowered - kLeading * static_cast<float>(row);
            lines.push_back({0, 0, left, left + width, baseline, baseline - 2, baseline + 8, 10});
        }
    }
    return lines;
}

/// How many decisions for columns have the reason.
std::size_t decisions(const std::vector<Line>& lines, std::string_view reason, bool isAcceptedOnly) {
    Evidence evidence;
    static_cast<void>(columnsOf(lines, &evidence));
    return static_cast<std::size_t>(
        std::count_if(evidence.marks().begin(), evidence.marks().end(), [&](const Mark& mark) {
            return mark.text.starts_with(reason) && (!isAcceptedOnly || mark.verdict == Verdict::accepted);
        }));
}

TEST(PdfLayoutLimits, aTextAndABlockHaveAsManyNeighboursAsAllowed) {
    constexpr std::size_t kMostNeighbours = 16;
    constexpr std::size_t kColumns = 50; // so few that each gutter is kept
    // The last ones have fewer below them.
    constexpr std::size_t kPairs = (kColumns - kMostNeighbours) * kMostNeighbours + //
                                   kMostNeighbours * (kMostNeighbours - 1) / 2;
    const std::vector<Line> lines = manyColumns(kColumns, 100, 1);
    EXPECT_EQ(decisions(lines, "a gutter: texts of several lines are side by side", false), kPairs);
    EXPECT_EQ(decisions(lines, "a gutter: blocks are side by side", false), kPairs);
}

TEST(PdfLayoutLimits, aPageHasAsManyGuttersOfTextsAsAllowed) {
    constexpr std::size_t kMostGutters = 64;
    EXPECT_EQ(decisions(manyColumns(100, 100, 1), "a gutter: texts of several lines are side by side", true),
              kMostGutters + 1)
        << "the next one is the end";
}

TEST(PdfLayoutLimits, aPageHasAsManyGuttersOfBlocksAsAllowed) {
    constexpr std::size_t kMostGutters = 64;
    // Too narrow for running text. The line above all columns leaves no free stripe on the page.
    std::vector<Line> lines = manyColumns(100, 40, 5);
    lines.insert(lines.begin(), {0, 0, 0, lines.back().right, 800, 798, 808, 10});
    EXPECT_EQ(decisions(lines, "a gutter: blocks are side by side", true), kMostGutters + 1)
        << "the next one is the end";
}

TEST(PdfLayoutLimits, aLetterMayHaveManyMarks) {
    constexpr int kMarks = 40;
    PageBuilder builder;
    builder.text(10, 700, U"\u05D0");
    std::u32string marks;
    for (char32_t mark = 0; mark < kMarks; ++mark)
        marks.push_back(U'\u0591' + mark % 20);
    builder.letter(0).text(11, 700, marks);
    Page page = builder.page();
    std::u32string text;
    appendPageText(page, text);
    EXPECT_TRUE(text == U"\u05D0" + marks + U"\n");
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
