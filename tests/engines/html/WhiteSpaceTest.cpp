// White-space processing, as an innerText has it.
#include "tests/engines/html/HtmlTestSupport.h"

#include <gtest/gtest.h>

namespace quillow::html {
namespace {

struct Case {
    const char* html;
    const char* text;
};

class WhiteSpaceProcessing : public testing::TestWithParam<Case> {};

TEST_P(WhiteSpaceProcessing, leavesWhatALineShows) {
    EXPECT_EQ(textOf(GetParam().html), GetParam().text) << GetParam().html;
}

constexpr Case kCollapsing[] = {
    {"  one \t\n two  ", "one two"},
    {"one <b> two</b>", "one two"},
    {"one<b> </b> two", "one two"},
    {"<p>one </p> <p> two</p>", "one\n\ntwo"},
    {"one <br> two", "one\ntwo"},
    {"one&nbsp; &nbsp;two", "one\u00A0 \u00A0two"},
    {"one <img> two", "one  two"},
    {"<img> one", " one"},
    {"one <span style='display:inline-block'> x </span> two", "one x two"},
    {"one <i style='float:left'>f</i> two", "one \nf\ntwo"},
    {"<div>one <i style='float:left'>f</i> </div>", "one\nf"},
    {"one <span style='visibility:hidden'>x</span> two", "one  two"},
    {"<div> <span> </span> </div>one", "one"},
    {"one<wbr>two", "onetwo"},
    {"one\u200B two", "one\u200B two"},
};
INSTANTIATE_TEST_SUITE_P(Collapsing, WhiteSpaceProcessing, testing::ValuesIn(kCollapsing));

constexpr Case kPreserving[] = {
    {"<pre>a  b\n  c </pre>", "a  b\n  c "},
    {"<pre>\n a</pre>", " a"},
    {"<div style='white-space:pre-wrap'>a \n\tb</div>", "a \n\tb"},
    {"<div style='white-space:pre-line'>a \n  b  c</div>", "a\nb c"},
    {"<div style='white-space:nowrap'>a\n  b</div>", "a b"},
    {"a <span style='white-space:pre'> b </span> c", "a  b  c"},
    {"a <span style='white-space:pre'>\nb</span>", "a\nb"},
    {"<pre>a<br>b</pre>", "a\nb"},
    {"<pre>a<b> b</b> <i>\n</i>c</pre>", "a b \nc"},
};
INSTANTIATE_TEST_SUITE_P(Preserving, WhiteSpaceProcessing, testing::ValuesIn(kPreserving));

constexpr Case kWideCharacters[] = {
    {"日本\n語", "日本語"},    {"日本\n  語", "日本語"}, {"日本 語", "日本 語"},
    {"日本\nabc", "日本 abc"}, {"한국\n어", "한국 어"},  {"<span>日本</span>\n<span>語</span>", "日本 語"},
};
INSTANTIATE_TEST_SUITE_P(WideCharacters, WhiteSpaceProcessing, testing::ValuesIn(kWideCharacters));

TEST(WhiteSpaceProcessing, dropsControlCharacters) {
    EXPECT_EQ(textOf("some text\x01 in a\x02&#x0C;line&#13;of its own\x7F"), "some text in a line of its own");
}

} // namespace
} // namespace quillow::html
