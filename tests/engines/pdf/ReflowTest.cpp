#include "engines/pdf/Reflow.h"

#include "engines/pdf/LineEndHyphens.h"
#include "engines/pdf/OutcomeRows.h"
#include "engines/pdf/RunningLines.h"
#include "tests/engines/pdf/layout/PageBuilder.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

namespace quillow::pdf {
namespace {

PageOutcome outcomeOf(const PageBuilder& builder) {
    PageLayout layout;
    layOut(builder.page(), layout);
    PageOutcome outcome;
    describeRows(layout, outcome);
    return outcome;
}

std::string textOf(const std::vector<PageBuilder>& builders, PageMarks marks = PageMarks::off) {
    std::vector<PageOutcome> pages;
    for (const PageBuilder& builder : builders)
        pages.push_back(outcomeOf(builder));
    return reflowed(pages, marks);
}

/// A page of running text: the lines fill its column.
PageBuilder pageOf(std::initializer_list<std::u32string_view> lines) {
    return PageBuilder().lines(100, 700, lines);
}

TEST(Reflow, aParagraphIsALine) {
    EXPECT_EQ(textOf({pageOf({U"some words of a text", U"that go on with more"})}),
              "some words of a text that go on with more\n");
}

TEST(Reflow, noBlankIsBetweenLettersOfScriptsWithoutBlanks) {
    EXPECT_EQ(textOf({PageBuilder().letter(1).lines(100, 700, {U"漢字漢字漢字", U"かなかなかな"})}),
              "漢字漢字漢字かなかなかな\n");
    EXPECT_EQ(textOf({pageOf({U"ภาษาไทยภาษาไทย", U"ภาษาไทยภาษาไทย"})}), "ภาษาไทยภาษาไทยภาษาไทยภาษาไทย\n");
    EXPECT_EQ(textOf({PageBuilder().letter(1).lines(100, 700, {U"한국어 문장", U"이어지는 말"})}),
              "한국어 문장 이어지는 말\n");
}

TEST(Reflow, aParagraphGoesOnOverThePageEnd) {
    EXPECT_EQ(textOf({pageOf({U"some words of a text", U"that go on to a page"}), pageOf({U"behind the first one"})}),
              "some words of a text that go on to a page behind the first one\n");
}

TEST(Reflow, aSentenceThatEndsEndsItsParagraphAtThePageEnd) {
    EXPECT_EQ(textOf({pageOf({U"some words of a text", U"that ends on a page."}), pageOf({U"Another is on a page"})}),
              "some words of a text that ends on a page.\n\nAnother is on a page\n");
}

TEST(Reflow, anIndentBeginsAParagraphAtThePageBegin) {
    PageBuilder second;
    second.text(115, 700, U"Hamlet begins it.").lines(100, 688, {U"goes on at the margin"});
    EXPECT_EQ(textOf({pageOf({U"some words of a text", U"that goes on in Rome"}), second}),
              "some words of a text that goes on in Rome\n\nHamlet begins it. goes on at the margin\n");
}

TEST(Reflow, noParagraphGoesOnBehindAPageMark) {
    EXPECT_EQ(textOf({pageOf({U"some words of a text"}), pageOf({U"go on in another one"})}, PageMarks::formFeed),
              "some words of a text\fgo on in another one\n");
}

TEST(Reflow, aParagraphGoesOnInTheNextColumn) {
    PageBuilder builder;
    builder.lines(
        100, 700,
        {U"some words of a text", U"some words of a text", U"that is set in a left", U"column and goes on in"});
    builder.lines(260, 700,
                  {U"the one at the right", U"which ends here after", U"some more of the words", U"that fill it."});
    EXPECT_EQ(textOf({builder}),
              "some words of a text some words of a text that is set in a left column and goes on in the one at the "
              "right which ends here after some more of the words that fill it.\n");
}

TEST(Reflow, aFootnoteFollowsTheParagraphThatItCuts) {
    PageBuilder first;
    first.lines(100, 700, {U"some words of a text", U"that go on to a page"});
    first.size(7).text(100, 100, U"1 A note at the foot.");
    EXPECT_EQ(textOf({first, pageOf({U"behind the first one", U"and end there. Good."})}),
              "some words of a text that go on to a page behind the first one and end there. Good.\n\n"
              "1 A note at the foot.\n");
}

TEST(Reflow, rowsOfTablesAndItemsStayLines) {
    PageBuilder builder;
    builder.text(10, 700, U"Name").text(100, 700, U"Size").text(200, 700, U"Year");
    builder.text(10, 688, U"Ada").text(100, 688, U"12").text(200, 688, U"1815");
    builder.text(10, 676, U"Bob").text(100, 676, U"14").text(200, 676, U"1901");
    EXPECT_EQ(textOf({builder}), "Name\tSize\tYear\nAda\t12\t1815\nBob\t14\t1901\n");
    EXPECT_EQ(textOf({pageOf({U"Bring all of these to", U"each of the meetings:", U"• a pen", U"• a book"})}),
              "Bring all of these to each of the meetings:\n• a pen\n• a book\n");
}

std::vector<PageBuilder> pagesWith(std::initializer_list<std::u32string_view> heads,
                                   std::initializer_list<std::u32string_view> feet) {
    constexpr std::u32string_view kTexts[] = {U"The first text ends.", U"A second ends itself.",
                                              U"So does the third one.", U"The fourth is no more."};
    std::vector<PageBuilder> pages;
    for (std::size_t i = 0; i < heads.size(); ++i) {
        PageBuilder page;
        if (!heads.begin()[i].empty()) page.text(100, 760, heads.begin()[i]);
        page.text(100, 700, kTexts[i]);
        if (!feet.begin()[i].empty()) page.text(200, 40, feet.begin()[i]);
        pages.push_back(page);
    }
    return pages;
}

TEST(Reflow, runningHeadsAndPageNumbersAreDropped) {
    const std::string text =
        "The first text ends.\n\nA second ends itself.\n\nSo does the third one.\n\nThe fourth is no "
        "more.\n";
    EXPECT_EQ(textOf(pagesWith({U"Ada Lovelace", U"Ada Lovelace", U"Ada Lovelace", U"Ada Lovelace"},
                               {U"9", U"10", U"11", U"12"})),
              text);
    // Left and right pages, and Roman numerals.
    EXPECT_EQ(textOf(pagesWith({U"Ada", U"Letters", U"Ada", U"Letters"}, {U"viii", U"ix", U"x", U"xi"})), text);
}

TEST(Reflow, pagesOfNothingButNumberedLinesStay) {
    std::vector<PageBuilder> tickets;
    for (const std::u32string_view line : {U"Ticket 1.", U"Ticket 2.", U"Ticket 3."})
        tickets.push_back(PageBuilder().text(100, 400, line));
    EXPECT_EQ(textOf(tickets), "Ticket 1.\n\nTicket 2.\n\nTicket 3.\n");
}

TEST(Reflow, emptyPagesAmongTextHaveNoRunningLines) {
    std::vector<PageBuilder> pages = pagesWith({U"Ada", U"Ada"}, {U"1", U"3"});
    pages.insert(pages.begin() + 1, PageBuilder().text(100, 760, U"Ada").text(200, 40, U"2"));
    EXPECT_EQ(textOf(pages), "The first text ends.\n\nA second ends itself.\n");
}

TEST(Reflow, controlCharactersAreNotText) {
    EXPECT_EQ(textOf({pageOf({U"a\u0007b\u0001c\u0085d\uFFFF"})}), textOf({pageOf({U"abcd\uFFFF"})}));
    EXPECT_EQ(textOf({pageOf({U"a\u0007b\u0001c"})}), "abc\n");
}

TEST(Reflow, linesThatDifferByMoreThanNumbersAreNotRunning) {
    EXPECT_EQ(
        textOf(pagesWith({U"", U"", U"", U""}, {U"one note", U"some other", U"its third", U"the last"})),
        "The first text ends.\n\none note\n\nA second ends itself.\n\nsome other\n\nSo does the third one.\n\nits "
        "third\n\nThe fourth is no more.\n\nthe last\n");
}

TEST(Reflow, aSoftHyphenAtALineEndGoes) {
    EXPECT_EQ(textOf({pageOf({U"some words of a Bade\u00AD", U"Nixe that went on the"})}),
              "some words of a BadeNixe that went on the\n");
}

struct HyphenCase {
    const char* text;
    const char* expected;
    friend void PrintTo(const HyphenCase& hyphenCase, std::ostream* out) { *out << hyphenCase.text; }
};

class LineEndHyphens : public testing::TestWithParam<HyphenCase> {};

TEST_P(LineEndHyphens, goWhereTheDocumentShowsIt) {
    EXPECT_EQ(withoutLineEndHyphens(GetParam().text), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Reflow, LineEndHyphens,
    testing::Values(HyphenCase{"a satisfac-\x01tory end, satisfactory", "a satisfactory end, satisfactory"},
                    HyphenCase{"a well-\x01known end, well-known", "a well-known end, well-known"},
                    HyphenCase{"the pre-\x01"
                               "1990 cars, pre1990",
                               "the pre-1990 cars, pre1990"},
                    HyphenCase{"Baden-\x01Württemberg, BadenWürttemberg", "Baden-Württemberg, BadenWürttemberg"},
                    HyphenCase{"an un-\x01heard word", "an un-heard word"},
                    HyphenCase{"an un-\x01heard end-\x01ing, ending", "an unheard ending, ending"},
                    HyphenCase{"grü-\x01ner Tee, grüner", "grüner Tee, grüner"}, HyphenCase{"no joint-", "no joint-"}));

TEST(Reflow, manyHyphensAreCountedInOnePass) {
    constexpr int kWords = 50'000;
    std::string text;
    for (int i = 0; i < kWords; ++i)
        text += "ab-\x01"
                "cd abcd ";
    EXPECT_EQ(withoutLineEndHyphens(text).find('-'), std::string::npos);
}

} // namespace
} // namespace quillow::pdf
