#include "engines/pdf/layout/Evidence.h"

#include "engines/pdf/layout/PageLayout.h"
#include "tests/engines/pdf/layout/PageBuilder.h"

#include <gtest/gtest.h>

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
