// How much memory a document uses besides its own bytes. Nodes do not come from the counted allocation functions;
// the tree counts them itself.
#include "engines/html/Reader.h"
#include "engines/html/parser/Parse.h"
#include "engines/html/tree/Tree.h"
#include "tests/engines/CountedMemory.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>

namespace quillow::html {
namespace {

using test::liveBytes;
using test::mostBytes;

constexpr std::size_t kDocument = std::size_t{2} << 20;
constexpr std::size_t kBeside = std::size_t{128} << 10; ///< tables, stacks, a partly filled chunk of kept strings

/// A document of kDocument bytes that repeats one piece.
std::string document(std::string_view start, std::string_view repeated) {
    std::string html(start);
    html.reserve(kDocument + repeated.size());
    while (html.size() < kDocument)
        html += repeated;
    return html;
}

struct NodeCase {
    std::string_view repeated;
    std::size_t mostBytes; ///< of the nodes and attributes of one repetition
    friend void PrintTo(const NodeCase& nodeCase, std::ostream* out) {
        *out << testing::PrintToString(nodeCase.repeated);
    }
};

class HtmlNodeMemory : public testing::TestWithParam<NodeCase> {};

TEST_P(HtmlNodeMemory, isBoundedAndAllThatATreeTakes) {
    const auto& [repeated, most] = GetParam();
    const std::string html = document("<!doctype html><body>", repeated);
    const std::size_t times = kDocument / repeated.size();
    const std::size_t before = liveBytes;
    mostBytes = before;
    const auto tree = parseHtmlInPlace(html);
    EXPECT_LE(tree->bytes(), times * most + 1024);
    EXPECT_LE(mostBytes - before, kBeside);
}

constexpr NodeCase kNodeCases[] = {
    {"<td>", 0},                                       // ignored outside a table
    {"<p><br>", 8 + 4},                                //
    {"<p>words of a paragraph, some of them", 8 + 8},  //
    {"<p>word</p>\n", 8 + 8 + 8},                      //
    {"<b>x</b> ", 8 + 8 + 8},                          //
    {"<p>x<br>y", 8 + 8 + 4 + 8},                      //
    {"<p class=a id=b title=c>", 16 + 4 + 8 + 8 + 12}, // attributes, two of them known
    {"<x-y>x</x-y>", 16 + 8 + 8},                      // an element with its own name
    {"<!-- comment -->", 0},                           //
    {"<p><b><i class=x>y</p></b></i>", 8 + 8 + 16 + 12 + 8},
    {"<b><i>x</b></i>", 8 + 8 + 8 + 8},            // misnested: the second i is a copy
    {"<table>x<tr></table>", 8 + 8 + 8 + 12 + 24}, // the foster-parented text separates the table from its first child
};
INSTANTIATE_TEST_SUITE_P(Kinds, HtmlNodeMemory, testing::ValuesIn(kNodeCases));

TEST(HtmlMemory, cellsOfAnEndlessTableAreSmall) {
    const std::string html = document("<!doctype html><table><tr>", "<td>word</td>");
    const auto tree = parseHtmlInPlace(html);
    EXPECT_LE(tree->bytes(), html.size() / 13 * 16 + 1024);
}

struct TextMemory {
    std::size_t most = 0; ///< peak while the document was read, with its text, without its nodes
    std::size_t text = 0;
};

TextMemory memoryOf(const std::string& html) {
    const std::size_t before = liveBytes;
    mostBytes = before;
    const Extraction extraction = readHtml(std::as_bytes(std::span(html)), {});
    return {mostBytes - before, extraction.text ? extraction.text->size() : 0};
}

TEST(HtmlMemory, plainTextIsHeldOnce) {
    const TextMemory memory = memoryOf(document("", "<p>The quick brown fox jumps over the lazy dog.</p>\n"));
    EXPECT_GT(memory.text, kDocument * 3 / 4);
    EXPECT_LE(memory.most, kDocument + kBeside);
}

TEST(HtmlMemory, onlyTextsWithReferencesAreCopied) {
    const TextMemory memory = memoryOf(document("", "<p>The quick brown fox</p><p>jumps &amp; jumps</p>\n"));
    EXPECT_GT(memory.text, kDocument * 2 / 3);
    EXPECT_LE(memory.most, kDocument + kDocument / 3 + kBeside);
}

TEST(HtmlMemory, carriageReturnsCostOneCopy) {
    const TextMemory memory = memoryOf(document("", "<p>The quick brown fox jumps over the lazy dog.</p>\r\n"));
    EXPECT_GT(memory.text, kDocument * 3 / 4);
    EXPECT_LE(memory.most, 2 * kDocument + kBeside);
}

TEST(HtmlMemory, aLegacyEncodingCostsOneCopy) {
    const TextMemory memory =
        memoryOf(document("<meta charset=windows-1252>", "<p>The quick brown f\xF6x jumps over the lazy dog.</p>\r\n"));
    EXPECT_GT(memory.text, kDocument * 3 / 4);
    // The copy reserves room for twice the bytes.
    EXPECT_LE(memory.most, 3 * kDocument + kBeside);
}

} // namespace
} // namespace quillow::html
