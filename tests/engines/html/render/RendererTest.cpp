// Visible content, line breaks, tables, lists, and the options.
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

class Rendering : public testing::TestWithParam<Case> {};

TEST_P(Rendering, writesWhatAReaderSees) {
    EXPECT_EQ(textOf(GetParam().html), GetParam().text) << GetParam().html;
}

constexpr Case kBlocks[] = {
    {"one<div>two</div>three", "one\ntwo\nthree"},
    {"one<p>two</p>three", "one\n\ntwo\n\nthree"},
    {"<h1>one</h1><h2>two</h2>three", "one\ntwo\nthree"},
    {"one<hr>two", "one\ntwo"},
    {"one<div></div><div><div></div></div>two", "one\ntwo"},
    {"<div><div>one</div></div>", "one"},
    {"one<br><br>two", "one\n\ntwo"},
    {"<br>one", "\none"},
    {"<span>one<div>two</div>three</span>", "one\ntwo\nthree"},
    {"<fieldset><legend>l</legend>x</fieldset>", "l\nx"},
    {"<blockquote>q</blockquote>x", "q\nx"},
    {"<div style='display:flex'><span>1</span> t <span>2</span></div>", "1\nt\n2"},
    {"<b style='position:absolute'>1</b><b>2</b>", "1\n2"},
    {"<custom-element>1</custom-element><section>2</section>", "1\n2"},
    {"1 <a> <img style='float:left'> </a> 2", "1 \n2"},
    {"1 <img style='float:left'>", "1"},
    {"1<br><img> <b style='float:left'></b>", "1"},
    {"<img> <b style='float:left'></b>", ""},
    {"1<img style='display:block'>2", "1\n2"},
    {"<q> 1 </q>2", " 1 2"},
    {"1 <q>2</q> <p><q> </q>", "1 2\n\n "},
    {"<center>1</center>2<marquee>3</marquee>", "1\n23"},
};
INSTANTIATE_TEST_SUITE_P(Blocks, Rendering, testing::ValuesIn(kBlocks));

constexpr Case kOutOfFlow[] = {
    // Elements that a presentational attribute makes float.
    {"<img align=left> 1", "1"},
    {"1 <img align=Right> 2", "1 \n2"},
    {"1 <img align=middle> 2", "1  2"},
    {"1 <iframe align=right></iframe> 2", "1 \n2"},
    {"1 <embed src=x align=left> 2", "1 \n2"},
    {"1 <object align=left>2</object> 3", "1 \n2\n3"},
    {"1 <input type=image align=left> 2", "1 \n2"},
    {"1 <input align=left> 2", "1  2"},
    {"1 <table align=left><td>2</table> 3", "1 \n2\n3"},
    {"<style>img{float:none}</style><img align=left> 1", " 1"},
    // The space between two of them is visible if anything follows it in the line.
    {"1<b style='position:absolute'>2</b> <b style='position:absolute'>3</b>4", "1\n2\n \n3\n4"},
    {"1<b style='position:absolute'>2</b> <b style='float:left'></b> 3", "1\n2\n \n3"},
    {"1<b style='position:absolute'>2</b> <b style='position:absolute'>3</b>", "1\n2\n3"},
    {"1<b style='position:absolute'>2</b> <p style='float:left'>3</p>", "1\n2\n\n3"},
    {"1<p style='position:absolute'>2</p> <b style='float:left'>3</b><br>4", "1\n\n2\n\n3\n\n4"},
    {"1<b style='position:absolute'>2</b> <b style='float:left'></b><br>4", "1\n2\n\n4"},
    {"1<div><b style='display:inline-block'><img> <i style='float:left'></i></b> <b style='float:left'>2</b></div>",
     "1\n2"},
    {"1<p style='float:left'></p><img> <b style='float:left'></b><p style='float:left'>2</p>", "1\n\n2"},
    // Elements positioned above the page.
    {"1 <dialog open>2</dialog> 3", "1 \n2\n3"},
    {"1 <dialog open style='position:static'>2</dialog> 3", "1\n2\n3"},
    {"1 <b popover style='display:inline'>2</b> 3", "1 \n2\n3"},
};
INSTANTIATE_TEST_SUITE_P(OutOfFlow, Rendering, testing::ValuesIn(kOutOfFlow));

constexpr Case kDisplayTypes[] = {
    // Elements drawn as a whole, whatever their display type.
    {"1 <select style='display:inline'></select> 2", "1  2"},
    {"1 <button style='display:inline'></button> 2", "1  2"},
    {"1 <svg style='display:inline'></svg> 2", "1  2"},
    {"1 <svg><text style='display:inline'>2</text></svg> 3", "1 \n2\n 3"},
    {"1 <object data=x><param name=y> </object> 2", "1  2"},
    {"1 <object data=x> <i>2</i></object>", "1 2"},
    {"1 <keygen> 2", "1 2"},
    {"<style>*{display:block}</style>1<wbr>2<p style='display:flex'>3<wbr>4", "12\n\n34"},
    {"1<select style='display:contents'><option>2</select><canvas style='display:contents'>3</canvas>4", "14"},
    // Never shown.
    {"<style>*{display:block}</style>1<noembed>2</noembed>", "1"},
    {"1<template style='display:block'>2</template>3", "13"},
    {"1<audio style='display:block'>2</audio>3", "13"},
    {"<style>input{display:block}</style>1<input type=Hidden>2<input>3", "12\n3"},
    {"<table><tr><td>1</td><form><td>2</td></form></tr></table>", "1\t2"},
    {"<style>form{display:block}</style><table><form><tr><td>1</table><form>2</form>", "1\n2"},
    // Adjacent text in a container of boxes.
    {"<div style='display:flex'>1<!-- --> <!-- -->2<script></script> <b hidden></b>3</li> </div>4", "1 2 3\n4"},
    {"<div style='display:flex'>1<!-- --> <b>2</b> <!-- --> <b>3</b></div>", "1\n2\n3"},
    {"<div style='display:flex'>1<i style='display:contents'>2</i> <i style='display:contents'>3</i></div>", "12 3"},
    {"<div style='display:grid'>1 <b style='position:absolute'>2</b> 3<img style='float:left'> 4</div>", "1\n2\n3\n4"},
    {"<div style='display:table-row'>1<!-- --> <b>2</b> <b>3</b></div>", "1 23"},
    // Others.
    {"<fieldset><legend style='display:inline'>1</legend>2</fieldset>", "1\n2"},
    {"<legend style='display:inline'>1</legend>2", "1\n2"},
    {"1 <fieldset style='display:inline'></fieldset> 2", "1  2"},
    {"<style>option{display:inline}</style><select><option>1<option>2</select>3", "1\n2\n3"},
    {"1 <b style='display:inline list-item'>2</b> 3", "1 2 3"},
    {"1 <p style='display:inline'>2 </p>3", "1 \n\n2 \n\n3"},
    {"<p>1 <p style='display:inline'> </p>", "1"},
};
INSTANTIATE_TEST_SUITE_P(DisplayTypes, Rendering, testing::ValuesIn(kDisplayTypes));

/// The flexible box of 2009: inline content stays together, and only what is out of the flow is an item of its own.
constexpr Case kBoxes[] = {
    {"1<div style='display:-webkit-box'>a <b>b</b> c</div>2", "1\na b c\n2"},
    {"1 <b style='display:-webkit-inline-box'>a <b>b</b> c</b> 2", "1 a b c 2"},
    {"<div style='display:-webkit-box'>a <div>b</div> c</div>", "a\nb\nc"},
    {"<div style='display:-webkit-box'><b>a</b> <b>b</b> c <b>d</b></div>", "ab c d"},
    {"<div style='display:-webkit-box'>a <i style='position:absolute'>b</i> c</div>", "a\nb\nc"},
    {"<div style='display:-webkit-box'><u style='display:contents'>a <i style='float:left'>b</i> c</u></div>",
     "a\nb\nc"},
    {"<div style='display:-webkit-box'><u>a <i style='float:left'>b</i> c</u></div>", "a \nb\nc"},
    {"<b style='display:-webkit-inline-box;float:left'>a <b>b</b></b> c", "a b\nc"},
    {"<div style='display:-webkit-box;display:-ms-flexbox'>a <b>b</b></div>", "a b"},
    {"<div style='display:-webkit-box;display:-webkit-flex'>a <b>b</b></div>", "a\nb"},
    {"<div style='display:flex;display:-webkit-box'>a <b>b</b></div>", "a b"},
    {"<div style='display:inline -webkit-box'>a</div>b", "a\nb"},
    {"<button style='display:-webkit-box'><b>a</b> <b>b</b></button>", "a b"},
    {"<style>p::before{content:'x';position:absolute}</style><p style='display:-webkit-box'> a", "a"},
};
INSTANTIATE_TEST_SUITE_P(Boxes, Rendering, testing::ValuesIn(kBoxes));

struct ClampCase {
    const char* style;
    const char* text;
    friend void PrintTo(const ClampCase& clampCase, std::ostream* out) { *out << clampCase.style; }
};

class LineClamps : public testing::TestWithParam<ClampCase> {};

/// A clamped box is a block, in which the space between elements is seen.
TEST_P(LineClamps, makeABoxABlock) {
    const std::string style = GetParam().style;
    EXPECT_EQ(textOf("<!DOCTYPE html><div style='" + style + "'><b>a</b> <b>b</b></div>"), GetParam().text) << style;
}

constexpr ClampCase kLineClamps[] = {
    {"display:-webkit-box;-webkit-box-orient:vertical;-webkit-line-clamp:2", "a b"},
    {"-webkit-line-clamp:2;-webkit-box-orient:block-axis;display:-webkit-inline-box", "a b"},
    {"display:-webkit-box;-WEBKIT-BOX-ORIENT:Vertical;-Webkit-Line-Clamp:+2", "a b"},
    {"display:-webkit-box;-webkit-box-orient:vertical;-webkit-line-clamp:calc(1 + 1)", "a b"},
    {"display:-webkit-box;-webkit-box-orient:vertical;-webkit-line-clamp:3;-webkit-line-clamp:auto", "a b"},
    {"display:-webkit-box;-webkit-box-orient:vertical;-webkit-line-clamp:3!important;-webkit-line-clamp:none", "a b"},
    {"display:-webkit-box;-webkit-box-orient:vertical", "ab"},
    {"display:-webkit-box;-webkit-line-clamp:2", "ab"},
    {"display:-webkit-box;-webkit-box-orient:vertical;-webkit-line-clamp:none", "ab"},
    {"display:-webkit-box;-webkit-box-orient:vertical;-webkit-line-clamp:2;-webkit-line-clamp:unset", "ab"},
    {"display:-webkit-box;-webkit-box-orient:vertical;-webkit-line-clamp:0", "ab"},
    {"display:-webkit-box;-webkit-box-orient:vertical;-webkit-line-clamp:2.0", "ab"},
    {"display:-webkit-box;-webkit-box-orient:vertical;-webkit-line-clamp:2px", "ab"},
    {"display:-webkit-box;-webkit-box-orient:vertical;-webkit-line-clamp:2 none", "ab"},
    {"display:-webkit-box;-webkit-box-orient:vertical;line-clamp:2", "ab"},
    {"display:-webkit-box;-webkit-box-orient:inline-axis;-webkit-line-clamp:2", "ab"},
};
INSTANTIATE_TEST_SUITE_P(Values, LineClamps, testing::ValuesIn(kLineClamps));

TEST(LineClampsOfParents, areNotInherited) {
    const std::string clamped = "<div style='display:-webkit-box;-webkit-box-orient:vertical;-webkit-line-clamp:2'>";
    const std::string inner = "<b>a</b> <b>b</b></div></div>";
    EXPECT_EQ(textOf(clamped + "<div style='display:-webkit-box'>" + inner), "ab");
    EXPECT_EQ(textOf(clamped +
                     "<div style='display:-webkit-box;-webkit-box-orient:inherit;-webkit-line-clamp:inherit'>" + inner),
              "a b");
}

constexpr Case kSeen[] = {
    {"1<br style='display:contents'>2 <img style='display:contents'> 3", "12 3"},
    {"a<script>x</script>b<style>y</style>c<template>z</template>d", "abcd"},
    {"a<p hidden>x</p>b", "ab"},
    {"<details><summary>s</summary>inside</details>", "s\ninside"},
    {"<dialog>x</dialog><dialog open>y</dialog>", "y"},
    {"<noscript>n</noscript>", "n"},
    {"a<img alt=x>b<iframe>x</iframe>c<video>x</video>d<object>o</object>", "abcdo"},
    {"a<textarea>x</textarea>b<input value=x>c<meter>x</meter>d<progress>x</progress>", "abcd"},
    {"<button>press</button><label>l</label>", "pressl"},
    {"<select><option>1<option>2<optgroup label=g><option>3</select>x", "1\n2\n3\nx"},
    {"a<select></select>b", "ab"},
    {"<select><button>0<selectedcontent></selectedcontent></button><option>1<option selected>2<b>3</b></select>4",
     "1\n23\n4"},
    {"<select><option>1<div><option>2</option></div></option><button><selectedcontent></button></select>", "12"},
    {"<selectedcontent>1</selectedcontent>2", "12"},
    {"<datalist><option>x</datalist>a", "a"},
    {"<ruby>漢<rp>(</rp><rt>kan</rt><rp>)</rp></ruby>", "漢kan"},
    {"<svg><title>t</title>loose<g><text>drawn</text></g></svg>", "drawn"},
    {"<svg><foreignObject><p>inside</p></foreignObject></svg>", "inside"},
    {"<math><semantics><mi>x</mi><annotation>y</annotation></semantics></math>", "x"},
    {"<title>t</title>b", "b"},
    {"<frameset><frame><noframes><body><p>no <b>frames</b></noframes></frameset>", "no frames"},
    {"<p popover>x</p>a", "a"},
    {"<audio controls>x</audio>a", "a"},
};
INSTANTIATE_TEST_SUITE_P(Seen, Rendering, testing::ValuesIn(kSeen));

constexpr Case kTables[] = {
    {"<table><tr><td>1<td style='display:block'>2<td style='display:block'>3<td>4", "1\t\n2\n3\n4"},
    {"<table><tr><td>1<td style='display:inline'>2", "1\t2"},
    {"<div style='display:table-row'><span style='display:table-cell'>1</span> <span>2</span></div>", "1\t2"},
    {"<span style='display:table-cell'>1</span><span>2</span>", "12"},
    {"<table><tr><td>1<td>2<tr><td>3<td>4</table>", "1\t2\n3\t4"},
    {"<table><caption>c</caption><thead><tr><th>1<th>2</thead><tbody><tr><td>3</table>x", "c\n1\t2\n3\nx"},
    {"<table><tr><td></td><td>x</td><td></td></tr></table>", "\tx\t"},
    {"<table> <tr> <td> 1 </td> <td> 2 </td> </tr> </table>", "1\t2"},
    {"<table><tr><td><p>1</p><td>2</table>", "1\n\n\t2"},
    {"<table><tr><td>1<td hidden>2<td>3</table>", "1\t3"},
    {"<table><tr><td><table><tr><td>1</table><td>2</table>", "1\n\t2"},
    {"<table><tr><td>1<tr><tr><td>3</table>", "1\n\n3"},
    {"<div style='display:table'><div style='display:table-cell'>1</div><div style='display:table-cell'>2</div></div>",
     "1\t2"},
    {"<div style='display:table'><p style='display:table-cell'>1</p><p style='display:table-cell'>2</p></div>", "1\t2"},
    {"a<span style='display:inline-table'><span style='display:table-cell'>1</span></span>b", "a1b"},
    // Table parts without a table make one: an inline table among inline boxes, a block elsewhere.
    {"<b>1 <i style='display:table-cell'>2</i> <i style='display:table-cell'>3</i> 4</b>", "1 2\t3 4"},
    {"<b>1 <i style='display:table-row'>2</i> <i style='display:table-row'>3</i> 4</b>", "1 2\n3 4"},
    {"1 <i style='display:table-row'>2</i> <i style='display:table-row'>3</i> 4", "12\n34"},
    {"1 <i style='display:table-row-group'> 2</i> 3", "123"},
    {"1 <p style='display:table-row-group'> 2</p> 3", "1\n\n2\n\n3"},
    // Other content between cells and rows becomes a cell or a row, or separates two tables.
    {"<div style='display:table-row'><i style='display:table-cell'>1</i>2</div>", "1\t2"},
    {"<div style='display:table'><i style='display:table-cell'>1</i> <div>2</div></div>", "1\t\n2"},
    {"<div style='white-space:pre'><i style='display:table-cell'>1</i> <i style='display:table-cell'>2</i></div>",
     "1 2"},
    {"<div style='display:table'><i style='display:table-row'>1</i>2<i style='display:table-row'>3</i></div>", "1\n23"},
    {"<table><td style='display:table-row'>1<td>2</table>", "12"},
    {"<table style='display:inline'><tr><td>1</tbody> <tbody><tr><td>2</table> 3", "1\n2 3"},
    {"<b><i style='display:contents'>1 <u style='display:table-cell'>2</u></i> 3</b>", "1 2 3"},
    {"<i style='display:table-cell'>1</i>2<i style='display:table-cell'>3</i>", "123"},
    {"<table><tr><td>1<tr style='display:grid'><td>2</table>", "1\n\n2"},
    {"<table><tr><td>1<tr style='display:contents'><td>2<tbody><tr><td>3</table>", "1\n23"},
};
INSTANTIATE_TEST_SUITE_P(Tables, Rendering, testing::ValuesIn(kTables));

constexpr Case kLists[] = {
    {"<ul><li>a<li>b</ul>", "\u2022 a\n\u2022 b"},
    {"<ol><li>a<li>b</ol>", "1. a\n2. b"},
    {"<ol start=5><li>a<li value=9>b<li>c</ol>", "5. a\n9. b\n10. c"},
    {"<ol reversed><li>a<li>b</ol>", "2. a\n1. b"},
    {"<ol type=a><li>a<li type=I>b</ol>", "a. a\nII. b"},
    {"<ul><li>a<ol><li>b<li>c</ol><li>d</ul>", "\u2022 a\n  1. b\n  2. c\n\u2022 d"},
    {"<ul><li><p>a</p><p>b</p></ul>", "\u2022 a\n\nb"},
    {"<ul><li></li><li>b</ul>", "\u2022 b"},
    {"<ul style='list-style:none'><li>a</ul>", "a"},
    {"<ul><li style='display:inline'>a<li style='display:inline'>b</ul>", "ab"},
    {"<ol><li hidden>a<li>b</ol>", "1. b"},
    {"<ol><li><ul><li>a</ul></ol>", "1. \u2022 a"},
    {"<li>a", "\u2022 a"},
    {"<menu><li>a</menu>", "\u2022 a"},
};
INSTANTIATE_TEST_SUITE_P(Lists, Rendering, testing::ValuesIn(kLists));

TEST(RenderingOptions, listMarkersCanBeLeftOut) {
    Options options;
    options.listMarkers = ListMarkers::off;
    EXPECT_EQ(textOf("<ol><li>a<ul><li>b</ul></ol>", options), "a\nb");
}

TEST(RenderingOptions, cellsCanStandOnLinesOfTheirOwn) {
    Options options;
    options.cells = CellSeparator::line;
    EXPECT_EQ(textOf("<table><tr><td>1<td>2<tr><td>3</table>", options), "1\n2\n3");
}

TEST(RenderingOptions, linksAreFollowedByTheirTargets) {
    Options options;
    options.links = LinkTargets::afterText;
    EXPECT_EQ(textOf("see <a href='http://h/p?a=1&amp;b'>this </a>page", options), "see this <http://h/p?a=1&b> page");
    EXPECT_EQ(textOf("<a href='#x'>a</a><a href='JavaScript:f()'>b</a><a>c</a><a href=y><img></a>d", options), "abcd");
}

TEST(RenderingOptions, hiddenTextCanBeShown) {
    Options options;
    options.hiddenText = HiddenText::on;
    EXPECT_EQ(
        textOf("a<p hidden>b</p><i style='visibility:hidden'>c</i><b style='display:none'>d</b><script>e</script>",
               options),
        "a\n\nb\n\ncd");
}

} // namespace
} // namespace quillow::html
