// The tokenizer and tree construction, on trees small enough to read.
#include "engines/html/parser/Parse.h"
#include "engines/html/parser/TreeBuilder.h"
#include "tests/engines/html/TestSupport.h"

#include <gtest/gtest.h>

#include <ostream>

namespace quillow::html {
namespace {

struct TreeCase {
    const char* html;
    const char* tree;
    friend void PrintTo(const TreeCase& treeCase, std::ostream* out) { *out << treeCase.html; }
};

class TreeConstruction : public testing::TestWithParam<TreeCase> {};

TEST_P(TreeConstruction, buildsTheStandardsTree) {
    EXPECT_EQ(treeOf(GetParam().html), GetParam().tree) << GetParam().html;
}

constexpr TreeCase kDocuments[] = {
    {"", "html(head body)"},
    {"x", "html(head body('x'))"},
    {"<title>t</title>x", "html(head(title('t')) body('x'))"},
    {"<!DOCTYPE html>\n <html> <body> <p>x", "html(head body(' ' p('x')))"},
    {"<p>x</body></html> y", "html(head body(p('x' ' y')))"},
    {"<p>a<p>b", "html(head body(p('a') p('b')))"},
    {"<head><script>1</script></head><link>x", "html(head(script('1') link) body('x'))"},
    {"<noscript><p>n</noscript>", "html(head(noscript) body(p('n')))"},
    {"<frameset><frame><noframes><p>n</noframes></frameset>", "html(head frameset(frame noframes('<p>n')))"},
    {"<frameset></frameset> x </html> y ", "html(head frameset ' ' ' ' ' ' ' ')"},
    {"<template><td>x</template>y", "html(head(template(td('x'))) body('y'))"},
};
INSTANTIATE_TEST_SUITE_P(Documents, TreeConstruction, testing::ValuesIn(kDocuments));

constexpr TreeCase kMisnesting[] = {
    {"<b>1<i>2</b>3</i>4", "html(head body(b('1' i('2')) i('3') '4'))"},
    {"<b>1<p>2</b>3", "html(head body(b('1') p(b('2') '3')))"},
    {"<a>1<a>2", "html(head body(a('1') a('2')))"},
    {"<a>1<div>2<a>3", "html(head body(a('1') div(a('2') a('3'))))"},
    {"<b><p>1</p><p>2</b>3", "html(head body(b(p('1')) p(b('2') '3')))"},
    {"<p><b>1<p>2", "html(head body(p(b('1')) p(b('2'))))"},
    {"<nobr>1<nobr>2", "html(head body(nobr('1') nobr('2')))"},
    {"</p>x</p></br>y", "html(head body('x' p br 'y'))"},
    {"<ul><li>1<li>2</ul>", "html(head body(ul(li('1') li('2'))))"},
    {"<dl><dt>1<dd>2", "html(head body(dl(dt('1') dd('2'))))"},
    {"<h1>1<h2>2", "html(head body(h1('1') h2('2')))"},
    {"<button>1<button>2", "html(head body(button('1') button('2')))"},
    {"<select><option>1<option>2</select>3", "html(head body(select(option('1') option('2')) '3'))"},
    {"<select>1<input>2", "html(head body(select('1') input '2'))"},
    {"<ruby>a<rt>b<rp>c", "html(head body(ruby('a' rt('b') rp('c'))))"},
    {"<form><form>x</form>y", "html(head body(form('x') 'y'))"},
};
INSTANTIATE_TEST_SUITE_P(Misnesting, TreeConstruction, testing::ValuesIn(kMisnesting));

constexpr TreeCase kSelectedContent[] = {
    {"<select><button><selectedcontent></button><option>1<b>2",
     "html(head body(select(button(selectedcontent('1' b('2'))) option('1' b('2')))))"},
    // The last option with the selected attribute, else the first that is not disabled.
    {"<select><selectedcontent></selectedcontent><option>1<option selected>2<option>3<option "
     "selected>4<option>5</select>6",
     "html(head body(select(selectedcontent('4') option('1') option('2') option('3') option('4') option('5')) '6'))"},
    {"<select><selectedcontent></selectedcontent><option disabled>1<optgroup disabled><option>2</optgroup><option>3",
     "html(head body(select(selectedcontent('3') option('1') optgroup(option('2')) option('3'))))"},
    {"<select size=2><selectedcontent></selectedcontent><option>1",
     "html(head body(select(selectedcontent option('1'))))"},
    {"<select size=2><selectedcontent></selectedcontent><option>1<option selected>2",
     "html(head body(select(selectedcontent('2') option('1') option('2'))))"},
    {"<select multiple><selectedcontent></selectedcontent><option selected>1",
     "html(head body(select(selectedcontent option('1'))))"},
    // Options before the element, and content of its own.
    {"<select><option>1<option selected>2</option><selectedcontent>3</selectedcontent>",
     "html(head body(select(option('1') option('2') selectedcontent('2' '3'))))"},
    {"<select><selectedcontent>1<i>2</i></selectedcontent><option>3",
     "html(head body(select(selectedcontent('3') option('3'))))"},
    {"<select><selectedcontent><option>1<option selected>2</selectedcontent>",
     "html(head body(select(selectedcontent('2'))))"},
    // Disabled elements: in an option, in another selectedcontent, in a second select; and one without a select.
    {"<select><option>1<selectedcontent></selectedcontent><option>2",
     "html(head body(select(option('1' selectedcontent) option('2'))))"},
    {"<select><div><selectedcontent><selectedcontent></div><option>1",
     "html(head body(select(div(selectedcontent('1')) option('1'))))"},
    {"<select><table><td><select><selectedcontent></selectedcontent><option>1</select></table><option>2",
     "html(head body(select(table(tbody(tr(td(select(selectedcontent option('1')))))) option('2'))))"},
    {"<selectedcontent></selectedcontent><option>1", "html(head body(selectedcontent option('1')))"},
    // An option in an option, in a datalist or in a nested optgroup does not belong to the select.
    {"<select><selectedcontent></selectedcontent><option disabled>1<div><option selected>2",
     "html(head body(select(selectedcontent option('1' div(option('2'))))))"},
    {"<select><selectedcontent></selectedcontent><datalist><option>1</datalist><option>2",
     "html(head body(select(selectedcontent('2') datalist(option('1')) option('2'))))"},
    {"<select><selectedcontent></selectedcontent><optgroup><div><optgroup><option>1",
     "html(head body(select(selectedcontent optgroup(div(optgroup(option('1')))))))"},
    // One select after the other.
    {"<select><selectedcontent></selectedcontent><option>1</select><select><option>2</select>",
     "html(head body(select(selectedcontent('1') option('1')) select(option('2'))))"},
};
INSTANTIATE_TEST_SUITE_P(SelectedContent, TreeConstruction, testing::ValuesIn(kSelectedContent));

constexpr TreeCase kTables[] = {
    {"<table><td>1<td>2<tr><td>3", "html(head body(table(tbody(tr(td('1') td('2')) tr(td('3'))))))"},
    {"<table>x<tr>y<td>z", "html(head body('x' 'y' table(tbody(tr(td('z'))))))"},
    {"<table><caption>c<tr><td>1", "html(head body(table(caption('c') tbody(tr(td('1'))))))"},
    {"<table><col><td>1", "html(head body(table(colgroup(col) tbody(tr(td('1'))))))"},
    {"<table><tr><td><table><td>1</table>2", "html(head body(table(tbody(tr(td(table(tbody(tr(td('1')))) '2'))))))"},
    {"<!DOCTYPE html><p><table>", "html(head body(p table))"},
    {"<p><table>", "html(head body(p(table)))"},
    {"<table>x<!-- --> <tr><td>y", "html(head body('x' table(' ' tbody(tr(td('y'))))))"},
    {"<table><b>x<tr><td>y", "html(head body(b('x') table(tbody(tr(td('y'))))))"},
};
INSTANTIATE_TEST_SUITE_P(Tables, TreeConstruction, testing::ValuesIn(kTables));

constexpr TreeCase kForeign[] = {
    {"<svg><g>x</g></svg>y", "html(head body(svg:svg(svg:g('x')) 'y'))"},
    {"<svg><p>x", "html(head body(svg:svg p('x')))"},
    {"<svg><foreignObject><p>x</p></foreignObject></svg>y", "html(head body(svg:svg(svg:foreignobject(p('x'))) 'y'))"},
    {"<math><mi>a<p>b", "html(head body(math:math(math:mi('a' p('b')))))"},
    {"<svg><![CDATA[a<b]]></svg>", "html(head body(svg:svg('a<b')))"},
    {"<svg/>x", "html(head body(svg:svg 'x'))"},
    {"<svg><foreignObject></p>x", "html(head body(svg:svg(svg:foreignobject(p 'x'))))"},
};
INSTANTIATE_TEST_SUITE_P(Foreign, TreeConstruction, testing::ValuesIn(kForeign));

constexpr TreeCase kTokens[] = {
    {"a < b", "html(head body('a < b'))"},
    {"a</>b", "html(head body('a' 'b'))"},
    {"a<!-->b<!--->c<!-- d --!>e<!x>f<?g>h</ i>j", "html(head body('a' 'b' 'c' 'e' 'f' 'h' 'j'))"},
    {"a<!--b", "html(head body('a'))"},
    {"a<b c=\"d", "html(head body('a'))"},
    {"x&lt;y&ampz&notit;&#65;&#x42&#0;&#x80;&unknown;", "html(head body('x<y&z\u00ACit;AB\uFFFD\u20AC&unknown;'))"},
    {"&CounterClockwiseContourIntegral;&nGt;", "html(head body('\u2233\u226B\u20D2'))"},
    {"<textarea>\n<p>&lt;</textarea>x", "html(head body(textarea('<p><') 'x'))"},
    {"<script><!--<script></script>--></script>x", "html(head(script('<!--<script></script>-->')) body('x'))"},
    {"<xmp><b>&lt;</xmp>", "html(head body(xmp('<b>&lt;')))"},
    {"<plaintext></plaintext>", "html(head body(plaintext('</plaintext>')))"},
    {"<pre>\n\nx", "html(head body(pre('\nx')))"},
    {"<pre><!-- -->\nx", "html(head body(pre('\nx')))"},
    {"<P CLASS=x>y</P>", "html(head body(p('y')))"},
    {"<image>", "html(head body(img))"},
    {"a\r\nb\rc", "html(head body('a\nb\nc'))"},
};
INSTANTIATE_TEST_SUITE_P(Tokens, TreeConstruction, testing::ValuesIn(kTokens));

// 13.4: the tree of a fragment is inside an html element.
struct FragmentCase {
    const char* context;
    Namespace space;
    const char* html;
    const char* tree;
    friend void PrintTo(const FragmentCase& fragmentCase, std::ostream* out) { *out << fragmentCase.context; }
};

class FragmentConstruction : public testing::TestWithParam<FragmentCase> {};

TEST_P(FragmentConstruction, buildsTheStandardsTree) {
    const FragmentCase& given = GetParam();
    EXPECT_EQ(treeOf(*parseFragment(given.html, given.context, given.space)), given.tree) << given.html;
}

constexpr FragmentCase kFragments[] = {
    {"div", Namespace::html, "</div><p>1<p>2", "html(p('1') p('2'))"},
    {"body", Namespace::html, "<body><tr>x</body>y", "html('x' 'y')"},
    {"html", Namespace::html, "<p>x</p></body></html> ", "html(head body(p('x') ' '))"},
    {"head", Namespace::html, "<p>x", "html(p('x'))"},
    {"table", Namespace::html, "<td>1<tr><td>2", "html(tbody(tr(td('1')) tr(td('2'))))"},
    {"tbody", Namespace::html, "</tbody><td>1", "html(tr(td('1')))"},
    {"tr", Namespace::html, "<td>1</tr><td>2", "html(td('1') td('2'))"},
    {"td", Namespace::html, "1<td>2</td>3", "html('1' '2' '3')"},
    {"caption", Namespace::html, "1<tr>2</caption>", "html('1' '2')"},
    {"colgroup", Namespace::html, "x<col>", "html(col)"},
    {"frameset", Namespace::html, "</frameset><frame>x ", "html(frame ' ')"},
    {"template", Namespace::html, "<td>1</td></template>2", "html(td('1') '2')"},
    {"form", Namespace::html, "<form>x", "html('x')"},
    {"select", Namespace::html, "<input><select><option>1<option>2", "html(option('1') option('2'))"},
    {"textarea", Namespace::html, "<p>&lt;</textarea></>", "html('<p><</textarea></>')"},
    {"script", Namespace::html, "<p>&lt;</script>", "html('<p>&lt;</script>')"},
    {"plaintext", Namespace::html, "<p>", "html('<p>')"},
    {"svg", Namespace::svg, "<g><![CDATA[x]]></g><p>y", "html(svg:g('x') p('y'))"},
    {"foreignobject", Namespace::svg, "<p>x<svg>y", "html(p('x' svg:svg('y')))"},
    {"math", Namespace::mathMl, "<mi>x<p>y", "html(math:mi('x' p('y')))"},
    {"annotation-xml", Namespace::mathMl, "<svg>x", "html(svg:svg('x'))"},
};
INSTANTIATE_TEST_SUITE_P(Contexts, FragmentConstruction, testing::ValuesIn(kFragments));

TEST(Tree, keepsTheFirstOfTwoAttributesOfOneName) {
    const auto tree = parseHtml("<p ID=a id=b data-x='1&amp;2' y=\"?a=1&copy=2\">");
    const NodeId body = bodyOf(*tree);
    const NodeId paragraph = tree->firstChild(body);
    EXPECT_EQ(*tree->attribute(paragraph, "id"), "a");
    EXPECT_EQ(*tree->attribute(paragraph, "data-x"), "1&2");
    EXPECT_EQ(*tree->attribute(paragraph, "y"), "?a=1&copy=2");
    EXPECT_EQ(tree->attribute(paragraph, "z"), std::nullopt);
}

TEST(Tree, mergesTheAttributesOfASecondBodyTag) {
    const auto tree = parseHtml("<body class=a><body class=b id=c>");
    const NodeId body = bodyOf(*tree);
    EXPECT_EQ(*tree->attribute(body, "class"), "a");
    EXPECT_EQ(*tree->attribute(body, "id"), "c");
}

} // namespace
} // namespace quillow::html
