// Input made to hurt: the text still comes out, and what was built and counted stays in proportion.
#include "engines/html/CssMatcher.h"
#include "engines/html/TreeBuilder.h"
#include "tests/engines/html/HtmlTestSupport.h"

#include <gtest/gtest.h>

namespace quillow::html {
namespace {

std::string repeated(std::string_view part, std::size_t times) {
    std::string out;
    out.reserve(part.size() * times);
    for (std::size_t i = 0; i < times; ++i)
        out += part;
    return out;
}

std::size_t depthOf(const HtmlTree& tree) {
    std::size_t deepest = 0;
    std::vector<std::size_t> depth(tree.size(), 0);
    for (NodeId id = 1; id < tree.size(); ++id) {
        std::size_t steps = 0;
        for (NodeId parent = tree.node(id).parent; parent != kNoNode && steps < 4 * kMaxTreeDepth;
             parent = tree.node(parent).parent)
            ++steps;
        deepest = std::max(deepest, steps);
        if (id > 4 * kMaxTreeDepth) break;
    }
    return deepest;
}

struct DeepCase {
    const char* open;
    std::size_t times;
};

class DeepNesting : public testing::TestWithParam<DeepCase> {};

TEST_P(DeepNesting, isFlattenedAndKeepsItsText) {
    const std::string html = repeated(GetParam().open, GetParam().times) + "inside";
    const auto tree = parseHtml(html);
    EXPECT_LE(depthOf(*tree), kMaxTreeDepth + 2 * kMaxActiveFormatting);
    EXPECT_LE(tree->size(), 8 * GetParam().times + 16);
    const std::string text = textOf(html);
    EXPECT_NE(text.find("inside"), std::string::npos);
}

constexpr DeepCase kDeep[] = {
    {"<div>", 200'000},
    {"<span>", 200'000},
    {"<b>", 200'000},
    {"<table>", 20'000},
    {"<table><tr><td>", 20'000},
    {"<ul><li>", 50'000},
    {"<svg><foreignObject>", 50'000},
    {"<math><mi>", 50'000},
    {"<custom-a>", 100'000},
};
INSTANTIATE_TEST_SUITE_P(Elements, DeepNesting, testing::ValuesIn(kDeep));

TEST(HostileHtml, textAfterDeepNestingIsKept) {
    const std::string html = repeated("<div>", 200'000) + "in" + repeated("</div>", 200'000) + "after";
    EXPECT_EQ(textOf(html), "in\nafter");
}

TEST(HostileHtml, deepTemplatesEnd) {
    EXPECT_EQ(textOf(repeated("<template>", 100'000) + repeated("</template>", 100'000) + "after"), "after");
}

TEST(HostileHtml, misnestedFormattingGrowsLinearly) {
    std::string html;
    for (int i = 0; i < 20'000; ++i)
        html += "<font size=" + std::to_string(i) + ">";
    html += repeated("<p>x", 20'000);
    const auto tree = parseHtml(html);
    EXPECT_LE(tree->size(), 60'000 + kReconstructionAllowance + kReconstructionsPerTag * 40'000 + 64);
    EXPECT_EQ(textOf(repeated("<b><i><p>x</b>y</i>", 20'000)).size(), 20'000 * 4 - 2);
}

TEST(HostileHtml, attributesBeyondTheirNumberAreDropped) {
    std::string html = "<p";
    for (int i = 0; i < 100'000; ++i)
        html += " a" + std::to_string(i) + "=1";
    const auto tree = parseHtml(html + ">x");
    const NodeId body = tree->node(tree->node(tree->node(0).firstChild).firstChild).next;
    EXPECT_EQ(tree->attributes(tree->node(body).firstChild).size(), kMaxAttributes);
}

TEST(HostileHtml, manyBodyTagsDoNotCopyTheirAttributesForEver) {
    std::string html;
    for (int i = 0; i < 10'000; ++i)
        html += "<body a" + std::to_string(i) + "=1>";
    const auto tree = parseHtml(html);
    const NodeId body = tree->node(tree->node(tree->node(0).firstChild).firstChild).next;
    EXPECT_LE(tree->attributes(body).size(), static_cast<std::size_t>(kMaxAttributeMerges) + 1);
}

TEST(HostileHtml, floodsOfReferencesAndBracketsComeThrough) {
    EXPECT_EQ(textOf(repeated("&", 100'000)).size(), 100'000U);
    EXPECT_EQ(textOf(repeated("&amp;", 100'000)).size(), 100'000U);
    EXPECT_EQ(textOf(repeated("<", 100'000)).size(), 100'000U);
    EXPECT_EQ(textOf("&#x" + repeated("1", 100'000)), "\uFFFD");
    EXPECT_EQ(textOf("a" + repeated("<!--", 100'000)), "a");
}

TEST(HostileHtml, selectorMatchingStopsAtItsBound) {
    std::string css;
    for (int i = 0; i < 2'000; ++i)
        css += "[a] ~ [b]{display:block}";
    const auto tree = parseHtml(repeated("<p b>x</p>", 20'000));
    CssStyleSheets sheets;
    sheets.add(css, "");
    CssMatcher matcher(*tree, sheets);
    for (NodeId id = 1; id < tree->size(); ++id) {
        CascadedValues values;
        if (tree->node(id).kind == NodeKind::element) matcher.cascade(id, values);
    }
    EXPECT_LE(matcher.steps(), kMaxMatchSteps + kMaxSimpleSelectors + 1);
}

TEST(HostileHtml, nestedRulesAndSelectorsAreBounded) {
    EXPECT_EQ(textOf("<style>" + repeated("a{", 100'000) + "display:none" + repeated("}", 100'000) + "</style>x"), "x");
    EXPECT_EQ(textOf("<style>" + repeated(":not(", 50'000) + "{display:none}</style>x"), "x");
    EXPECT_EQ(
        textOf("<style>.a,.b{" + repeated("&,&{", 25) + "display:none" + repeated("}", 26) + "</style><p class=c>x"),
        "x");
    CssStyleSheets sheets;
    const std::string many = repeated("a{display:none}", kMaxRules + 10);
    sheets.add(many, "");
    EXPECT_EQ(sheets.rules().size(), kMaxRules);
}

} // namespace
} // namespace quillow::html
