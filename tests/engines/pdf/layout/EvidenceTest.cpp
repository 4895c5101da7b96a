#include "engines/pdf/layout/Evidence.h"

#include "engines/pdf/layout/HiddenText.h"
#include "engines/pdf/layout/PageLayout.h"
#include "tests/engines/pdf/layout/PageBuilder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

namespace quillow::pdf {
namespace {

std::vector<Mark> marksOf(const Page& page, Topic topic) {
    Evidence evidence;
    PageLayout layout;
    layOut(page, layout, &evidence);
    std::vector<Mark> marks = evidence.marks();
    std::erase_if(marks, [topic](const Mark& mark) { return mark.topic != topic; });
    return marks;
}

std::vector<std::string> textsOf(const std::vector<Mark>& marks) {
    std::vector<std::string> texts;
    for (const Mark& mark : marks)
        texts.push_back((mark.verdict == Verdict::refused ? "not: " : "") + mark.text);
    return texts;
}

using Texts = std::vector<std::string>;

TEST(Evidence, showsWordsWhereTheyAre) {
    const PageBuilder builder = PageBuilder().lines(100, 700, {U"two words", U"three"});

    const auto words = marksOf(builder.page(), Topic::word);

    EXPECT_EQ(textsOf(words), (Texts{"two", "words", "three"}));
    EXPECT_EQ(words[1].corners[0], (Point{120, 698}));
    EXPECT_EQ(words[1].corners[2], (Point{145, 707}));
}

TEST(Evidence, showsWordsFromTheRightInTheirOwnOrder) {
    const PageBuilder builder = PageBuilder().text(100, 700, U"lite\u05D2\u05D1\u05D0");

    EXPECT_EQ(textsOf(marksOf(builder.page(), Topic::word)), (Texts{"\u05D0\u05D1\u05D2lite"}));
}

TEST(Evidence, areasOfTurnedTextAreOnThePage) {
    const PageBuilder builder = PageBuilder().direction({0, 1}).text(100, 300, U"up");

    const auto words = marksOf(builder.page(), Topic::word);

    ASSERT_EQ(words.size(), 1U);
    EXPECT_EQ(words[0].corners[0], (Point{102, 300}));
    EXPECT_EQ(words[0].corners[2], (Point{93, 310}));
}

TEST(Evidence, saysHowWideAGapIsAndFromWhereOnItIsABlank) {
    const PageBuilder builder = PageBuilder().text(100, 700, U"no").text(113, 700, U"gap").text(128.8F, 700, U"s");

    const Texts gaps = textsOf(marksOf(builder.page(), Topic::gap));
    const Texts lines = textsOf(marksOf(builder.page(), Topic::line));

    ASSERT_EQ(gaps.size(), 2U);
    EXPECT_TRUE(gaps[0].starts_with("a blank: em 0.3, threshold 0.")) << gaps[0];
    EXPECT_TRUE(gaps[1].starts_with("not: no blank: em 0.08, threshold 0.")) << gaps[1];
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines[0].substr(lines[0].rfind(' ')), gaps[0].substr(gaps[0].rfind(' ')));
}

TEST(Evidence, countsLettersThatAreDrawnTwice) {
    const PageBuilder builder = PageBuilder().text(100, 700, U"bold").text(100.3F, 700, U"bold");

    EXPECT_EQ(textsOf(marksOf(builder.page(), Topic::dropped)),
              (Texts{"letters drawn twice at one place: letters 4, kTwin 0.12"}));
}

TEST(Evidence, saysWhyTheOrderOfTheStreamIsKept) {
    const PageBuilder builder = PageBuilder().text(100, 700, U"above").text(100, 600, U"below");

    EXPECT_EQ(textsOf(marksOf(builder.page(), Topic::order)),
              (Texts{"the stream's order: it never goes back: blocks 2"}));
}

TEST(Evidence, saysWhereARegionIsCut) {
    const PageBuilder builder = PageBuilder()
                                    .lines(300, 700, {U"right", U"right"})
                                    .lines(100, 700, {U"left", U"left"})
                                    .text(100, 740, U"a heading over both of the columns that is drawn last");

    const auto marks = marksOf(builder.page(), Topic::order);

    ASSERT_GE(marks.size(), 2U);
    EXPECT_EQ(marks[0].text, "cut at a stripe across: cost 2, high 31");
    EXPECT_EQ(marks[0].corners[0], (Point{100, 707}));
    EXPECT_EQ(marks[0].corners[2], (Point{365, 738}));
    EXPECT_EQ(marks[1].text, "cut at a gutter: cost 1, wide 180, kLeastGutter 5");
    EXPECT_EQ(marks[1].corners[0], (Point{120, 686}));
    EXPECT_EQ(marks[1].corners[2], (Point{300, 707}));
}

TEST(Evidence, saysIfNoCutIsFound) {
    const PageBuilder builder =
        PageBuilder().lines(100, 700, {U"a wide line below", U"a wide line below"}).lines(140, 708, {U"over it"}, 8);

    const auto texts = textsOf(marksOf(builder.page(), Topic::order));

    ASSERT_EQ(texts.size(), 1U);
    EXPECT_EQ(texts[0], "not: cut: the stream goes back, but no gutter and no stripe is free: blocks 2");
}

/// Two columns with lines at different heights.
PageBuilder columns(std::size_t lines, float shift) {
    PageBuilder builder;
    for (std::size_t i = 0; i < lines; ++i) {
        const float y = 700 - 12 * static_cast<float>(i);
        builder.text(60, y, U"running text in the left column, wide");
        if (i % 2 == 0) builder.text(300, y - shift, U"some text on the right side, wide too");
    }
    return builder;
}

bool oneBeginsWith(const Texts& texts, std::string_view begin) {
    return std::any_of(texts.begin(), texts.end(),
                       [begin](const std::string& text) { return text.starts_with(begin); });
}

TEST(Evidence, saysWhatSeparatesColumnsAndWhatDoesNot) {
    const Texts own = textsOf(marksOf(columns(20, 5).page(), Topic::gutter));
    const Texts common = textsOf(marksOf(columns(20, 0).page(), Topic::gutter));
    const Texts few = textsOf(marksOf(columns(6, 0).page(), Topic::gutter));

    EXPECT_TRUE(oneBeginsWith(own, "a gutter of the page: the sides have rows of their own: lines 10, with common "
                                   "baselines 0, kMostAligned 0.5"));
    EXPECT_TRUE(oneBeginsWith(common, "not: a gutter of the page: several lines in succession have common baselines: "
                                      "kRowsOfTable 3"));
    EXPECT_TRUE(oneBeginsWith(few, "not: a gutter of the page: few lines are on one side: lines 3, "
                                   "kLeastIndependent 8"));
    EXPECT_EQ(marksOf(columns(20, 5).page(), Topic::region).size(), 2U);
}

TEST(Evidence, saysWhatIsATableAndWhatIsNone) {
    const PageBuilder table = PageBuilder()
                                  .lines(100, 700, {U"one", U"two", U"three"})
                                  .lines(200, 700, {U"1", U"2", U"3"})
                                  .lines(300, 700, {U"4", U"5", U"6"});
    const PageBuilder list = PageBuilder().lines(100, 700, {U"a)", U"b)"}).lines(130, 700, {U"first", U"second"});
    PageBuilder frame;
    frame.text(110, 695, U"a frame").text(110, 655, U"is").rule(100, 640, 100, 720).rule(200, 640, 200, 720);
    frame.rule(300, 640, 300, 720).rule(100, 640, 300, 640).rule(100, 680, 300, 680).rule(100, 720, 300, 720);

    EXPECT_EQ(
        textsOf(marksOf(table.page(), Topic::table)),
        (Texts{"a table of aligned columns: needs three rows, rulings, or numbers in a third of the cells: columns "
               "3, of sentences 0, rows 3, cells 9, numbers 6, ruled 0"}));
    EXPECT_EQ(marksOf(table.page(), Topic::cell).size(), 9U);
    EXPECT_TRUE(oneBeginsWith(textsOf(marksOf(list.page(), Topic::table)), "not: a table but a list: labels 2, of 2"));
    EXPECT_TRUE(oneBeginsWith(textsOf(marksOf(frame.page(), Topic::table)),
                              "not: a ruled table: too few rows and columns have several cells: rows 0, columns 1"));
    EXPECT_EQ(marksOf(frame.page(), Topic::ruling).size(), 6U);
}

TEST(Evidence, saysWhyAParagraphBegins) {
    const PageBuilder spaced = PageBuilder()
                                   .lines(100, 700, {U"some lines of text", U"below one another", U"in a paragraph"})
                                   .lines(100, 640, {U"another paragraph", U"below the first"});
    const PageBuilder indented =
        PageBuilder()
            .lines(100, 700, {U"some lines of running text", U"below one another, of", U"one paragraph. It ends"})
            .text(115, 664, U"An indent begins the next")
            .lines(100, 652, {U"one, which has lines of", U"its own, and as long as"});

    EXPECT_TRUE(oneBeginsWith(textsOf(marksOf(spaced.page(), Topic::paragraph)),
                              "spacing: the row above is far: leading 2.7, usual 0.3, kLeadingTolerance "));
    EXPECT_TRUE(oneBeginsWith(textsOf(marksOf(indented.page(), Topic::paragraph)),
                              "indent: it begins elsewhere than the lines above: from the paragraph's first line 15, "
                              "from its other lines 15, kLeastIndent 7"));
}

TEST(Evidence, saysWhichInvisibleTextIsDropped) {
    const PageBuilder builder =
        PageBuilder().text(100, 700, U"seen").flags(kInvisible).text(100, 700, U"seen").text(100, 500, U"only here");
    Evidence evidence;

    static_cast<void>(repeatedHiddenRuns(builder.page(), &evidence));

    EXPECT_EQ(textsOf(evidence.marks()),
              (Texts{"dropped: invisible text that repeats what is seen: letters 4, seen 4, kRepeatedShare 0.6",
                     "not: dropped: invisible text that repeats what is seen: letters 8, seen 0, kRepeatedShare 0.6"}));
}

TEST(Evidence, doesNotChangeTheText) {
    const PageBuilder builder = PageBuilder().lines(100, 700, {U"two words", U"three"}).text(160, 700, U"beside");
    Evidence evidence;
    PageLayout with;
    PageLayout without;

    layOut(builder.page(), with, &evidence);
    layOut(builder.page(), without);

    EXPECT_EQ(with.text, without.text);
}

TEST(Evidence, keepsALimitedNumberOfMarks) {
    Evidence evidence;
    for (std::size_t i = 0; i < Evidence::kMostMarks + 2; ++i)
        evidence.show(Topic::line, Box{});

    EXPECT_EQ(evidence.marks().size(), Evidence::kMostMarks);
    EXPECT_EQ(evidence.leftOut(), 2U);
}

TEST(Evidence, writesNumbersThatAreNone) {
    Evidence evidence;

    evidence.note(Topic::gap, Verdict::refused, Box{}, "why",
                  {{"a", std::numeric_limits<float>::quiet_NaN()}, {"b", 1e30F}, {"c", -0.001F}, {"d", -1.5F}});

    EXPECT_EQ(evidence.marks()[0].text, "why: a very large, b very large, c 0, d -1.5");
}

} // namespace
} // namespace quillow::pdf
