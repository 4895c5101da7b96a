// Style sheets: the elements that their rules hide, show or put on lines of their own.
#include "engines/html/css/CssStyleSheets.h"
#include "tests/engines/html/TestSupport.h"

#include <gtest/gtest.h>

#include <ostream>

namespace quillow::html {
namespace {

struct HidingCase {
    const char* css;
    const char* body;
    const char* text;
    friend void PrintTo(const HidingCase& hidingCase, std::ostream* out) { *out << hidingCase.css; }
};

class StyleSheets : public testing::TestWithParam<HidingCase> {};

TEST_P(StyleSheets, applyToTheElementsTheySelect) {
    const HidingCase& tested = GetParam();
    EXPECT_EQ(textOf("<!DOCTYPE html><style>" + std::string(tested.css) + "</style>" + tested.body), tested.text)
        << tested.css;
}

constexpr HidingCase kSelectors[] = {
    {"b{display:none}", "a<b>x</b>", "a"},
    {".h{display:none}", "a<b class='g h'>x</b><b class=hh>y</b>", "ay"},
    {"#h{display:none}", "a<b id=h>x</b><b id=H>y</b>", "ay"},
    {"*{display:inline}", "<p>a</p><div>b</div>", "a\n\nb"},
    {"i.h,b.h{display:none}", "<i class=h>x</i><u class=h>y</u>", "y"},
    {"div b{display:none}", "<b>a</b><div><i><b>x</b></i></div>", "a"},
    {"div>b{display:none}", "<div><b>x</b><i><b>a</b></i></div>", "a"},
    {"i+b{display:none}", "<i>1</i> <b>x</b><b>2</b>", "1 2"},
    {"i~b{display:none}", "<b>1</b><i>2</i><u>3</u><b>x</b>", "123"},
    {"[a]{display:none}", "<b a>x</b><b>1</b>", "1"},
    {"[a=v]{display:none}", "<b a=v>x</b><b a=V>1</b>", "1"},
    {"[a='V' i]{display:none}", "<b a=v>x</b>1", "1"},
    {"[a~=v]{display:none}", "<b a='u v'>x</b><b a=uv>1</b>", "1"},
    {"[a|=v]{display:none}", "<b a=v-w>x</b><b a=vw>1</b>", "1"},
    {"[a^=v]{display:none}", "<b a=vw>x</b><b a=wv>1</b>", "1"},
    {"[a$=v]{display:none}", "<b a=wv>x</b><b a=vw>1</b>", "1"},
    {"[a*=v]{display:none}", "<b a=uvw>x</b><b a=uw>1</b>", "1"},
    {"b:not(.k){display:none}", "<b>x</b><b class=k>1</b>", "1"},
    {":is(i,b).h{display:none}", "<b class=h>x</b><u class=h>1</u>", "1"},
    {"b:first-child{display:none}", "<p><b>x</b><b>1</b></p>", "1"},
    {"b:nth-child(2n+1){display:none}", "<p><b>x</b><b>1</b><b>x</b><b>2</b></p>", "12"},
    {"b:nth-last-of-type(2){display:none}", "<p><b>x</b><i>1</i><b>2</b></p>", "12"},
    {"b:hover,b::before{display:none}", "<b>1</b>", "1"},
    {"b:unknown,i{display:none}", "<i>1</i>", "1"},
    {".\\41 b,.\\43,.d\\000045f{display:none}", "<b class=Ab>x</b><b class=C>x</b><b class=dEf>x</b><b class=ab>1</b>",
     "1"},
    {"\\42{display:none}#\\41{display:none}[\\61=\\62]{display:none}", "<b>x</b><i id=A>x</i><i a=b>x</i><i id=a>1</i>",
     "1"},
    {".sm\\:h{display:none}.\\31 0{display:none}", "<b class='sm:h'>x</b><b class=10>y</b>1", "1"},
    {"*b,.h*,.g b.hb{}b{display:none}", "<b>x</b>1", "1"},
    {"i,*b{display:none}", "<i>1</i><b>2</b>", "12"},
    {"B.H{display:none}", "<b class=H>x</b><b class=h>1</b>", "1"},
};
INSTANTIATE_TEST_SUITE_P(Selectors, StyleSheets, testing::ValuesIn(kSelectors));

constexpr HidingCase kCascade[] = {
    {"b{display:none}b{display:inline}", "<b>1</b>", "1"},
    {".h{display:none}b{display:inline}", "<b class=h>x</b>1", "1"},
    {"#i{display:inline}.h.h{display:none}", "<b id=i class=h>1</b>", "1"},
    {"b{display:none!important}#i{display:inline}", "<b id=i>x</b>1", "1"},
    {"b{display:none}", "<b style='display:inline'>1</b>", "1"},
    {"b{display:none!important}", "<b style='display:inline'>x</b>1", "1"},
    {"b{display:none!important}", "<b style='display:inline ! important'>1</b>", "1"},
    {"b{white-space:pre;white-space:normal important;white-space:pre 1}i{white-space:preserve wrap}",
     "<b>1  2</b><i>3  4</i>", "1  23  4"},
    {"b{display:none;display:block important}", "<b>x</b>1", "1"},
    {"b{display:none;display:nonsense}", "<b>x</b>1", "1"},
    {"@layer a{b{display:none}}b{display:inline}", "<b>1</b>", "1"},
    {"[hidden]{display:inline}", "<b hidden>1</b>", "1"},
    {"p{visibility:hidden}b{visibility:visible}", "<p>x<b>1</b></p>", "1"},
    {"p{display:initial}b{display:inherit}", "<div><b>1</b></div><b>2</b>", "1\n2"},
    {"b{DISPLAY:NONE}", "<b>x</b>1", "1"},
    {"b{displa\\79:n\\6fne}i{\\64isplay:\\6e one}", "<b>x</b><i>x</i>1", "1"},
    {"p{all:initial}", "1 <p hidden>2</p>", "1 \n\n2"},
    {"div{visibility:hidden;white-space:pre}p{all:initial}", "<div>x<p>1  2</p></div>3", "1 2\n\n3"},
    {"b{display:none}.a{all:revert}", "<b>x</b><b class=a>1</b>", "1"},
    {"b{ALL:unset!important}b{display:none}", "<b>1</b>", "1"},
    {"b{all:none}", "<p hidden><b>x</b></p>1", "1"},
    {"b{display:block flow}i{display:inline flex}", "1<b>2</b>3<i><u>4</u></i>", "1\n2\n3\n4"},
};
INSTANTIATE_TEST_SUITE_P(Cascade, StyleSheets, testing::ValuesIn(kCascade));

constexpr HidingCase kSyntax[] = {
    {"/*c*/b/**/{/*c*/display/**/:/**/none/**/}", "<b>x</b>1", "1"},
    {"<!-- b{display:none} -->", "<b>x</b>1", "1"},
    {"b{display:none", "<b>x</b>1", "1"},
    {"a;i{display:none}b{display:none}", "<i>1</i><b>x</b>", "1"},
    {"@import url(x.css);b{display:none}", "<b>x</b>1", "1"},
    {"@font-face{display:none}@keyframes k{from{display:none}}b{display:none}", "<b>x</b>1", "1"},
    {"i{content:'}';display:none}", "<i>x</i>1", "1"},
    {"i{background:url(a}b);display:none}", "<i>x</i>1", "1"},
    {"@media screen{b{display:none}}@media print{i{display:none}}", "<b>x</b><i>1</i>", "1"},
    {"@media (max-width:600px){b{display:none}}@media (min-width:600px){i{display:none}}", "<b>1</b><i>x</i>", "1"},
    {"@supports not (display:foo){b{display:none}}@supports (display:foo){i{display:none}}", "<b>x</b><i>1</i>", "1"},
    {"@supports (-ms-ime-align:auto){i{display:none}}@supports (--a:0) and (not "
     "(-moz-appearance:none)){b{display:none}}",
     "<b>x</b><i>1</i>", "1"},
    {"@supports selector(:has(a)) and (display:flex){b{display:none}}@supports (-webkit-touch-callout:none) or "
     "(-o-x:y){i{display:none}}",
     "<b>x</b><i>1</i>", "1"},
    {"b{display:none;&{display:inline}}i{&{display:inline}display:none}", "<b>1</b><i>x</i>", "1"},
    {"b{display:none;@media screen{display:inline}}", "<b>1</b>", "1"},
    {":where(.a){display:none}b{display:inline}", "<b class=a>1</b>", "1"},
    {":is(.a){display:none}b{display:inline}", "<b class=a>x</b>1", "1"},
    {"@supports (display:grid){b{display:none}}@supports not (display:grid){i{display:none}}", "<b>x</b><i>1</i>", "1"},
    {".o{ b{display:none} & > i{display:none} }", "<p class=o>1<b>x</b><i>y</i></p><b>2</b>", "1\n\n2"},
    {".o{ @media screen{display:none} }", "<p class=o>x</p>1", "1"},
    {"}b{display:none}", "1<b>2</b>", "12"},
    {"<![CDATA[b{display:none}]]>", "1<b>2</b>", "12"},
    {"/*<![CDATA[*/b{display:none}/*]]>*/", "1<b>x</b>", "1"},
    {"u:is(i{}b{display:none}", "1<b>2</b>", "12"},
    {"b{width:calc(1}b{display:none}", "1<b>2</b>", "12"},
    {"b{width:[}];display:none}", "1<b>x</b>", "1"},
    {"@page{x:(}b{display:none})}i{display:none}", "1<b>2</b><i>x</i>", "12"},
    {"b{color:)];display:none}", "1<b>x</b>", "1"},
    {"b{}}i{display:none}", "1<b>2</b>", "12"},
};
INSTANTIATE_TEST_SUITE_P(Syntax, StyleSheets, testing::ValuesIn(kSyntax));

TEST(StyleSheets, classesAndIdsAreComparedWithoutCaseInQuirksMode) {
    constexpr const char* kPage = "<style>.NoPrint{display:none}p#I.B{display:none}</style>"
                                  "<b class='A noprint'>1</b><p id=i class='a b'>2</p>3";
    EXPECT_EQ(textOf(kPage), "3");
    EXPECT_EQ(textOf("<!DOCTYPE html>" + std::string(kPage)), "1\n\n2\n\n3");
}

TEST(StyleSheets, otherMediaAndTypesAreNotRead) {
    EXPECT_EQ(textOf("<style media=print>b{display:none}</style><b>1</b>"), "1");
    EXPECT_EQ(textOf("<style type=text/less>b{display:none}</style><b>1</b>"), "1");
    EXPECT_EQ(textOf("<style type=TEXT/CSS media=screen>b{display:none}</style><b>x</b>1"), "1");
}

TEST(StyleSheets, aPageThatHidesItselfIsReadWithoutThem) {
    EXPECT_EQ(textOf("<style>body{display:none}</style><p>1<p style='display:none'>2"), "1\n\n2");
    EXPECT_EQ(textOf("<style>html{visibility:hidden}</style><p>1<p hidden>2"), "1");
}

struct MediaCase {
    const char* query;
    bool matches;
    friend void PrintTo(const MediaCase& mediaCase, std::ostream* out) { *out << mediaCase.query; }
};

class MediaQueries : public testing::TestWithParam<MediaCase> {};

TEST_P(MediaQueries, areAskedAboutAWideScreen) {
    EXPECT_EQ(mediaMatches(GetParam().query), GetParam().matches) << GetParam().query;
}

constexpr MediaCase kQueries[] = {
    {"", true},
    {"all", true},
    {"screen", true},
    {"print", false},
    {"print, screen", true},
    {"only screen and (min-width: 40em)", true},
    {"screen and (max-width: 40em)", false},
    {"not print", true},
    {"not screen and (min-width: 1px)", false},
    {"(orientation: landscape)", true},
    {"(width >= 600px)", true},
    {"(400px <= width < 500px)", false},
    {"(min-width: 1px) or (max-width: 1px)", true},
    {"not (max-width: 1px)", true},
    {"((min-width: 1px) and (not (max-width: 1px)))", true},
    {"(prefers-color-scheme: dark)", false},
    {"speech and (min-width: 1px)", false},
    {"(unknown: x)", false},
};
INSTANTIATE_TEST_SUITE_P(Queries, MediaQueries, testing::ValuesIn(kQueries));

} // namespace
} // namespace quillow::html
