// Hostile input: its text is still extracted, and memory and counted work stay in proportion to the input.
#include "engines/html/css/CssMatcher.h"
#include "engines/html/parser/Parse.h"
#include "engines/html/parser/TreeBuilder.h"
#include "tests/engines/html/TestSupport.h"

#include <gtest/gtest.h>

#include <functional>
#include <ostream>

namespace quillow::html {
namespace {

std::string repeated(std::string_view part, std::size_t times) {
    std::string out;
    out.reserve(part.size() * times);
    for (std::size_t i = 0; i < times; ++i)
        out += part;
    return out;
}

std::size_t depthOf(const Tree& tree) {
    std::size_t deepest = 0;
    for (TreeWalk walk(tree, Tree::kDocument); walk.node() != kNoNode; walk.advance())
        deepest = std::max(deepest, walk.ancestors().size());
    return deepest;
}

/// Cascades every element of a tree with the matcher, and calls `each` after each element.
void askAboutAll(CssMatcher& matcher, const Tree& tree, const std::function<void()>& each) {
    std::size_t entered = 1; // the document, which is not an element
    NodeId last = kNoNode;
    for (TreeWalk walk(tree, Tree::kDocument); walk.node() != kNoNode; walk.advance()) {
        if (walk.ancestors().size() > entered) {
            matcher.enter(last);
            ++entered;
        }
        for (; walk.ancestors().size() < entered; --entered)
            matcher.leave();
        if (tree.node(walk.node()).kind != NodeKind::element) continue;
        last = walk.node();
        CascadedValues values;
        matcher.cascade(last, values);
        each();
    }
}

/// The most bytes that an element without attributes uses.
constexpr std::size_t kElementBytes = 24;

/// The steps per byte if a tag of five bytes scans the whole stack of open elements.
constexpr std::uint64_t kMostStepsPerByte = kMaxTreeDepth / 5;

struct DeepCase {
    const char* open;
    std::size_t times;
    friend void PrintTo(const DeepCase& deepCase, std::ostream* out) { *out << deepCase.open; }
};

class DeepNesting : public testing::TestWithParam<DeepCase> {};

TEST_P(DeepNesting, isFlattenedAndKeepsItsText) {
    const std::string html = repeated(GetParam().open, GetParam().times) + "inside";
    const auto tree = parseHtml(html);
    EXPECT_LE(depthOf(*tree), kMaxTreeDepth + 2 * kMaxActiveFormatting);
    EXPECT_LE(tree->bytes(), kElementBytes * (8 * GetParam().times + 16));
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

// Work is counted in steps: twice the input costs little more than twice the steps, and the steps per byte are bounded.
struct HostileCase {
    const char* name;
    std::string (*make)(std::size_t times);
    std::size_t times;
    const char* text; ///< the end of the text
    friend void PrintTo(const HostileCase& hostileCase, std::ostream* out) { *out << hostileCase.name; }
};

std::string nested(std::string_view open, std::string_view close, std::size_t times) {
    return repeated(open, times) + "inside" + repeated(close, times) + "after";
}

std::string numbered(std::string_view before, std::string_view after, std::size_t times) {
    std::string out;
    for (std::size_t i = 0; i < times; ++i)
        out += std::string(before) + std::to_string(i) + std::string(after);
    return out;
}

/// Tags with the same attributes, each tag in another order. Only the value of one attribute differs.
std::string shuffledAttributes(std::size_t times) {
    std::string out;
    for (std::size_t i = 0; i < times; ++i) {
        out += "<b z=" + std::to_string(i);
        for (std::size_t k = 0; k < 60; ++k)
            out += " a" + std::to_string((k * 7 + i) % 61) + "=1";
        out += '>';
    }
    return out + "x";
}

constexpr HostileCase kHostile[] = {
    {"elements", [](std::size_t n) { return nested("<div>", "</div>", n); }, 50'000, "inside\nafter"},
    {"inlineElements", [](std::size_t n) { return nested("<span>", "</span>", n); }, 50'000, "insideafter"},
    {"paragraphsInElements", [](std::size_t n) { return repeated("<div><p>", 500) + repeated("<p>x", n); }, 50'000,
     "x"},
    {"tables", [](std::size_t n) { return nested("<table><tr><td>", "</table>", n); }, 10'000, "inside\nafter"},
    {"bareTables", [](std::size_t n) { return nested("<table>", "</table>", n); }, 10'000, "inside\nafter"},
    {"lists", [](std::size_t n) { return nested("<ul><li>", "</ul>", n); }, 50'000, "inside\nafter"},
    {"selects", [](std::size_t n) { return nested("<select><option>", "</select>", n); }, 50'000, "after"},
    {"selectedContents",
     [](std::size_t n) { return repeated("<select><selectedcontent></selectedcontent><option>x</select>", n); }, 10'000,
     "x\nx"},
    {"selectedContentsOfOneSelect",
     [](std::size_t n) {
         return "<select><option>" + repeated("<b>x</b>", n) + "</option>" + repeated("<selectedcontent>y", n);
     },
     10'000, "x"},
    {"selectedContentsInDepth",
     [](std::size_t n) { return repeated("<select><div><selectedcontent></div><option><table><td>", n); }, 10'000, ""},
    {"optionsWithSelectedContent",
     [](std::size_t n) {
         return "<select><button><selectedcontent></button>" + repeated("<option selected>x<b>x</b>", n);
     },
     10'000, "xx\nxx"},
    {"optionsInDepth",
     [](std::size_t n) {
         return "<select><button><selectedcontent></button>" + repeated("<div>", 500) +
                repeated("<option selected>x", n);
     },
     10'000, "x\nx"},
    {"buttonsInSelect",
     [](std::size_t n) {
         return "<select><option>x</option>" + repeated("<button><selectedcontent><button>", n) + "</select>x";
     },
     10'000, "x\nx"},
    {"formatting", [](std::size_t n) { return numbered("<font size=", ">", n) + repeated("<p>x", n); }, 10'000, "x"},
    {"misnested", [](std::size_t n) { return repeated("<b><i><p>x</b>y</i>", n); }, 10'000, "xy"},
    {"links", [](std::size_t n) { return repeated("<a><div>x", n); }, 10'000, "x"},
    {"adopted", [](std::size_t n) { return repeated("<a><b><div>", 100) + repeated("</a><a>x</b><b>", n); }, 10'000,
     "x"},
    {"fostered", [](std::size_t n) { return repeated("<table><tr><td>", 200) + "<table>" + repeated("<b>x</i>", n); },
     10'000, "x"},
    {"shuffledAttributes", shuffledAttributes, 2'000, "x"},
    {"attributes", [](std::size_t n) { return "<p" + numbered(" a", "=1", n) + ">x"; }, 50'000, "x"},
    {"bodies", [](std::size_t n) { return numbered("<body a", "=1 b=2>", n) + "x"; }, 10'000, "x"},
    {"namedReferences", [](std::size_t n) { return repeated("&CounterClockwiseContourIntegral", n) + "x"; }, 50'000,
     "x"},
    {"ampersands", [](std::size_t n) { return repeated("&", n) + "x"; }, 50'000, "&x"},
    {"comments",
     [](std::size_t n) { return repeated("<!--", n) + "--><!-- -- --! ->" + repeated("<!-->", n) + "-->x"; }, 50'000,
     "x"},
    {"foreign", [](std::size_t n) { return nested("<svg><foreignObject>", "</svg>", n); }, 50'000, "after"},
    {"unknownEndTags", [](std::size_t n) { return repeated("<x-y>", 500) + repeated("</z-z>a", n); }, 10'000, "a"},
};

class HostileWork : public testing::TestWithParam<HostileCase> {};

std::uint64_t stepsOf(const std::string& html) {
    Tree tree(html);
    TreeBuilder builder(tree);
    builder.run();
    EXPECT_LE(tree.bytes(),
              kElementBytes * (html.size() + kReconstructionAllowance + kReconstructionsPerTag * html.size() / 3));
    return builder.steps();
}

TEST_P(HostileWork, growsWithTheDocumentAndTheTextComesOut) {
    const HostileCase& given = GetParam();
    const std::string once = given.make(given.times);
    const std::string twice = given.make(2 * given.times);
    const std::uint64_t steps = stepsOf(once);
    const std::uint64_t doubled = stepsOf(twice);
    EXPECT_LE(steps, kMostStepsPerByte * once.size());
    EXPECT_LE(doubled * 10, steps * 22);
    const std::string text = textOf(twice);
    EXPECT_TRUE(text.ends_with(given.text)) << text.substr(text.size() - std::min<std::size_t>(text.size(), 40));
}

INSTANTIATE_TEST_SUITE_P(Kinds, HostileWork, testing::ValuesIn(kHostile),
                         [](const auto& kind) { return std::string(kind.param.name); });

TEST(HostileHtml, misnestedFormattingGrowsLinearly) {
    std::string html;
    for (int i = 0; i < 20'000; ++i)
        html += "<font size=" + std::to_string(i) + ">";
    html += repeated("<p>x", 20'000);
    const auto tree = parseHtml(html);
    constexpr std::size_t kNodes = 60'000 + kReconstructionAllowance + kReconstructionsPerTag * 40'000 + 64;
    constexpr std::size_t kAttributeBytes = 12;
    EXPECT_LE(tree->bytes(), kElementBytes * kNodes + kAttributeBytes * 20'000);
    EXPECT_EQ(textOf(repeated("<b><i><p>x</b>y</i>", 20'000)).size(), 20'000 * 4 - 2);
}

TEST(HostileHtml, attributesBeyondTheirNumberAreDropped) {
    std::string html = "<p";
    for (int i = 0; i < 100'000; ++i)
        html += " a" + std::to_string(i) + "=1";
    const auto tree = parseHtml(html + ">x");
    EXPECT_EQ(tree->attributes(tree->firstChild(bodyOf(*tree))).size(), kMaxAttributes);
}

TEST(HostileHtml, manyBodyTagsDoNotCopyTheirAttributesForEver) {
    std::string html;
    for (int i = 0; i < 10'000; ++i)
        html += "<body a" + std::to_string(i) + "=1>";
    const auto tree = parseHtml(html);
    EXPECT_LE(tree->attributes(bodyOf(*tree)).size(), static_cast<std::size_t>(kMaxAttributeMerges) + 1);
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
    askAboutAll(matcher, *tree, [] {});
    EXPECT_LE(matcher.steps(), kMaxMatchSteps + kMaxSimpleSelectors + 1);
}

TEST(HostileHtml, classesThatAreLookedThroughAreCounted) {
    constexpr std::size_t kClasses = 100'000;
    constexpr std::size_t kRules = 500;
    const auto tree = parseHtml("<p class='a" + repeated(" b", kClasses) + "'>x</p>");
    const std::string css = repeated(".a.c{display:none}", kRules);
    CssStyleSheets sheets;
    sheets.add(css, "");
    CssMatcher matcher(*tree, sheets);
    askAboutAll(matcher, *tree, [] {});
    EXPECT_GE(matcher.steps(), kRules * kClasses / kBytesPerStep);
    EXPECT_LE(matcher.steps(), kMaxMatchSteps + kClasses);
}

TEST(HostileHtml, positionsAmongManySiblingsAreKnownNotCounted) {
    const std::string text = textOf("<style>p:nth-child(2n){display:none}</style>" + repeated("<p>x", 40'000));
    EXPECT_EQ(text.size(), 20'000 * 3 - 2U);
    const std::string last =
        textOf("<style>p:nth-last-child(2n+1){display:none}</style>" + repeated("<p>x", 40'000) + "<div>y</div>");
    EXPECT_EQ(last.size(), 20'000 * 3U + 1); // a blank line before "y" too
    EXPECT_EQ(textOf("<style>p:nth-child(n-2147483648){display:none}b:nth-child(-n+2147483647){display:none}</style>"
                     "<p>x</p><b>y</b>z"),
              "z");
}

TEST(HostileHtml, generatedContentStopsAtTheSameBound) {
    const std::string css = repeated("b::before{content:'x'}", 2'000);
    const auto tree = parseHtml(repeated("<b>x</b>", 20'000));
    CssStyleSheets sheets;
    sheets.add(css, "");
    CssMatcher matcher(*tree, sheets);
    std::size_t generating = 0;
    askAboutAll(matcher, *tree, [&] { generating += matcher.generatesContent() ? 1 : 0; });
    EXPECT_LE(matcher.steps(), kMaxMatchSteps + kMaxSimpleSelectors + 1);
    EXPECT_GT(generating, 0U);
    EXPECT_LT(generating, 20'000U);
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
