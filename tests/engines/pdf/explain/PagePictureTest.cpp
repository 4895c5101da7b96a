#include "engines/pdf/explain/PagePicture.h"

#include "engines/pdf/layout/PageLayout.h"
#include "tests/engines/pdf/layout/PageBuilder.h"

#include <gtest/gtest.h>

#include <limits>

namespace quillow::pdf {
namespace {

std::string drawn(Page page, std::size_t mostBytes = SvgWriter::kMostBytes) {
    if (page.cropBox == Box{}) page.cropBox = {0, 0, 300, 400};
    Evidence evidence;
    PageLayout layout;
    layOut(page, layout, &evidence);
    return pictureOf(page, layout, evidence, "the title", mostBytes);
}

/// What is in a layer.
std::string layer(const std::string& picture, const std::string& name) {
    const std::size_t begin = picture.find("id=\"" + name + "\"");
    if (begin == std::string::npos) return "no such layer";
    const std::size_t from = picture.find('\n', begin) + 1;
    return picture.substr(from, picture.find("</g>", from) - from);
}

testing::AssertionResult holds(const std::string& text, const std::string& part) {
    if (text.find(part) != std::string::npos) return testing::AssertionSuccess();
    return testing::AssertionFailure() << "\"" << part << "\" is not in:\n" << text;
}

TEST(PagePicture, hasTheSizeOfThePageAndItsPanel) {
    const std::string picture = drawn({});

    EXPECT_TRUE(holds(picture, "width=\"702pt\" height=\"448pt\" viewBox=\"0 0 702 448\""));
    EXPECT_TRUE(holds(layer(picture, "page"), "M24 24 324 24 324 424 24 424z"));
    EXPECT_TRUE(holds(layer(picture, "panel"), "the title"));
}

TEST(PagePicture, hasALayerForEachKindOfThing) {
    const PageBuilder builder = PageBuilder().lines(100, 300, {U"two words", U"three"}).rule(10, 20, 60, 20);

    const std::string picture = drawn(builder.page());

    EXPECT_TRUE(holds(layer(picture, "runs"), "<title>run 1: 10 pt, font 0, direction 0 degrees</title>"));
    EXPECT_TRUE(holds(layer(picture, "words"), "M124 126 139 126 139 117 124 117z"));
    EXPECT_TRUE(holds(layer(picture, "text"), ">words</text>"));
    EXPECT_TRUE(holds(layer(picture, "lines"), "<title>wider gaps are blanks: threshold in em "));
    EXPECT_TRUE(holds(layer(picture, "rulings"), "M34 404 84 404"));
    EXPECT_TRUE(holds(layer(picture, "paragraphs"), "M124 138"));
    EXPECT_TRUE(holds(layer(picture, "reading-order"), "d=\"M124 121.5 124 133.5\""));
    EXPECT_TRUE(holds(layer(picture, "reading-order"), ">1</text>"));
}

TEST(PagePicture, saysWhichRunsAreInvisible) {
    const PageBuilder builder = PageBuilder().flags(kInvisible | kRunning).text(100, 300, U"hidden");

    EXPECT_TRUE(holds(layer(drawn(builder.page()), "runs"), "degrees, invisible, running</title>"));
}

TEST(PagePicture, showsHowWideGapsAre) {
    const PageBuilder builder = PageBuilder().text(100, 300, U"no").text(113, 300, U"gap");

    EXPECT_TRUE(holds(layer(drawn(builder.page()), "gaps"), ">0.3</text>"));
}

TEST(PagePicture, escapesThePage) {
    const PageBuilder builder = PageBuilder().text(100, 300, U"<script>&\x1");

    const std::string text = layer(drawn(builder.page()), "text");

    EXPECT_TRUE(holds(text, "&lt;script&gt;&amp;\uFFFD"));
}

TEST(PagePicture, saysWhatItLeavesOut) {
    PageBuilder builder;
    for (int i = 0; i < 30; ++i)
        builder.text(100, 390 - 12.0F * static_cast<float>(i), U"some words in a line");

    const std::string picture = drawn(builder.page(), 5000);

    EXPECT_LT(picture.size(), 14'000U);
    EXPECT_TRUE(holds(picture, "elements are left out: the picture is too large (kMostBytes)"));
    EXPECT_TRUE(picture.ends_with("</g>\n</svg>\n"));
}

TEST(PagePicture, drawsPagesOfAnySize) {
    const PageBuilder builder = PageBuilder().text(100, 300, U"word");
    Page page = builder.page();
    for (const float side : {0.0F, -5.0F, 1e30F, std::numeric_limits<float>::quiet_NaN()}) {
        page.cropBox = {0, 0, side, 1};

        const std::string picture = drawn(page);

        EXPECT_TRUE(picture.ends_with("</svg>\n"));
        EXPECT_EQ(picture.find("nan"), std::string::npos);
        EXPECT_EQ(picture.find("inf"), std::string::npos);
    }
}

} // namespace
} // namespace quillow::pdf
