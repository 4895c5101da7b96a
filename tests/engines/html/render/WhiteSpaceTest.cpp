// White-space processing, as in innerText.
#include "tests/engines/html/TestSupport.h"

#include <gtest/gtest.h>

#include <ostream>

namespace quillow::html {
namespace {

struct Case {
    const char* html;
    const char* text;
    friend void PrintTo(const Case& one, std::ostream* out) { *out << one.html; }
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
    {"<pre><table><td>a  b</table></pre>", "a b"}, // in quirks mode
    {"<!DOCTYPE html><pre><table><td>a  b</table></pre>", "a  b"},
    {"<!DOCTYPE html><pre><table><td nowrap>a  b<th NOWRAP>c  d</table></pre>", "a b\tc d"},
    {"<div style='white-space:pre-wrap'>a \n\tb</div>", "a \n\tb"},
    {"<div style='white-space:pre-line'>a \n  b  c</div>", "a\nb c"},
    {"<div style='white-space:nowrap'>a\n  b</div>", "a b"},
    {"a <span style='white-space:pre'> b </span> c", "a  b  c"},
    {"a <span style='white-space:pre'>\nb</span>", "a\nb"},
    {"<pre>a<br>b</pre>", "a\nb"},
    {"<pre>a<b> b</b> <i>\n</i>c</pre>", "a b \nc"},
};
INSTANTIATE_TEST_SUITE_P(Preserving, WhiteSpaceProcessing, testing::ValuesIn(kPreserving));

constexpr Case kSourceLineBreaks[] = {
    {"日本\n語", "日本 語"},
    {"<span>日本</span>\n<span>語</span>", "日本 語"},
    {"a\u200B \nb", "a\u200Bb"},
    {"a \n \u200Bb", "a\u200Bb"},
    {"a\n<b>\u200B</b>b", "a\u200Bb"},
    {"a\n<b> </b>\u200Bb", "a\u200Bb"},
    {"a <b>\n</b>\u200Bb", "a \u200Bb"},
    {"a<wbr>\nb", "ab"},
    {"a<wbr><b>\n</b>b", "ab"},
    {"a<wbr> b", "a b"},
    {"a <wbr>\nb", "a b"},
    {"a\n<wbr>b", "a b"},
    {"a<wbr>b\nc", "ab c"},
    // Content in a box of its own is not adjacent.
    {"<b style='display:inline-block'><wbr></b>\na", " a"},
    {"<b style='display:inline-block'>\u200B</b>\na", "\u200B a"},
    {"a\u200B<img>\nb", "a\u200B b"},
    {"a<wbr><img style='float:left'>\nb<b style='float:left'></b>", "a\nb"},
    {"<img>\na", " a"},
};
INSTANTIATE_TEST_SUITE_P(SourceLineBreaks, WhiteSpaceProcessing, testing::ValuesIn(kSourceLineBreaks));

constexpr Case kGenerated[] = {
    // Generated content is not text, but it decides whether a space beside it is visible.
    {"<style>b::after{content:' · '}</style><b>1</b> <b>2</b>", "12"},
    {"<style>i::before{content:'x'}</style>1 <i></i>", "1 "},
    {"<style>i:before{content:'x'}</style>1 <i></i>", "1 "},
    {"<style>i::before{content:''}</style>1 <i></i>", "1"},
    {"<style>i::after{content:counter(a) ' '}</style><i>1</i> 2", "12"},
    {"<style>i::after{content:url(x.png)}</style>1 <i></i>", "1 "},
    {"<style>i::before{content:open-quote}</style>1 <i></i>", "1 "},
    {"<style>i::before{content:' '}</style><p><i>1</i>2", "12"},
    {"<style>i::after{content:'\\a0'}</style>1 <i></i>", "1 "},
    {"<style>i{&::after{content:'x'}}</style>1 <i></i>", "1 "},
    // The cascade.
    {"<style>i::after{content:'x'}i::after{content:none}</style>1 <i></i>", "1"},
    {"<style>i::after{content:'x'!important}i::after{content:none}</style>1 <i></i>", "1 "},
    {"<style>.a i::after{content:'x'}</style>1 <i></i>", "1"},
    {"<style>i::after{content:inherit}b::after{content:'x'}</style>1 <i></i>", "1"},
    // Rules that generate no content.
    {"<style>i:is(:before){content:'x'}</style>1 <i></i>", "1"},
    {"<style>i::after:hover{content:'x'}</style>1 <i></i>", "1"},
    {"<style>i::after b{content:'x'}</style>1 <i><b></b></i>", "1"},
    {"<style>i{content:'x'}</style>1 <i></i>", "1"},
    {"<style>option::after{content:'x'}</style><select><option>1 </select>", "1"},
    // The box of the generated content.
    {"<style>i:after{content:'';display:inline-block}</style>1 <i></i>", "1 "},
    {"<style>i:after{content:'';display:block}</style>1 <i></i> 2", "12"},
    {"<style>i:before{content:'';display:table}</style><p>1<i> 2</i></p>", "12"},
    {"<style>i::after{content:'x';display:none}</style>1 <i></i>", "1"},
    {"<style>i::after{content:'x';position:absolute}</style>1 <i></i>", "1"},
    {"<style>i::after{content:'x';float:left}</style>1 <i></i>2", "1 2"},
    {"<style>p{display:flex}p::before{content:'x '}</style><p> 1", "1"},
};
INSTANTIATE_TEST_SUITE_P(Generated, WhiteSpaceProcessing, testing::ValuesIn(kGenerated));

TEST(WhiteSpaceProcessing, dropsControlCharacters) {
    EXPECT_EQ(textOf("some text\x01 in a\x02&#x0C;line&#13;of its own\x7F"), "some text in a line of its own");
}

} // namespace
} // namespace quillow::html
