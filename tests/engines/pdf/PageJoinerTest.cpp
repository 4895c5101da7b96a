#include "engines/pdf/PageJoiner.h"

#include <gtest/gtest.h>

namespace quillow::pdf {
namespace {

PageOutcome page(std::string text) {
    PageOutcome outcome;
    outcome.text = std::move(text);
    return outcome;
}

TEST(PageJoiner, pagesFollowOneAnother) {
    PageJoiner joiner(PageMarks::off);
    EXPECT_TRUE(joiner.add(page("one\n")));
    EXPECT_TRUE(joiner.add(page("")));
    EXPECT_TRUE(joiner.add(page("two\n")));

    const Extraction extraction = std::move(joiner).finish(3);

    EXPECT_EQ(extraction.reason, Reason::ok);
    EXPECT_EQ(extraction.text, "one\ntwo\n");
    EXPECT_EQ(extraction.loss.pagesWithoutText, 1U);
    EXPECT_EQ(extraction.pages, 3U);
}

TEST(PageJoiner, everyPageHasItsMark) {
    PageJoiner joiner(PageMarks::formFeed);
    for (const char* text : {"", "one\n", "", "two\n", ""})
        joiner.add(page(text));

    EXPECT_EQ(std::move(joiner).finish(5).text, "\fone\f\ftwo\f\n");
}

TEST(PageJoiner, pagesWithoutCharactersHaveNoTextLayer) {
    PageJoiner joiner(PageMarks::off);
    joiner.add(page(""));

    const Extraction extraction = std::move(joiner).finish(1);

    EXPECT_EQ(extraction.reason, Reason::noTextLayer);
    EXPECT_FALSE(extraction.text);
}

TEST(PageJoiner, noPageIsDamaged) {
    EXPECT_EQ(PageJoiner(PageMarks::off).finish(0).reason, Reason::damaged);
}

TEST(PageJoiner, lossesAddUp) {
    PageJoiner joiner(PageMarks::off);
    PageOutcome first = page("one\n");
    first.loss = {3, 1, 0, 2};
    joiner.add(first);
    joiner.add(first);

    const Extraction extraction = std::move(joiner).finish(2);

    EXPECT_EQ(extraction.reason, Reason::partial);
    EXPECT_EQ(extraction.detail, "some parts of pages are damaged");
    EXPECT_EQ(extraction.loss.charactersDecoded, 6U);
    EXPECT_EQ(extraction.loss.charactersWithoutUnicode, 2U);
    EXPECT_EQ(extraction.loss.partsSkipped, 4U);
}

TEST(PageJoiner, textBeyondTheLimitEndsTheReading) {
    PageJoiner joiner(PageMarks::off, Reflow::off, 4);
    EXPECT_TRUE(joiner.add(page("12\n")));
    EXPECT_TRUE(joiner.add(page("45\n")));
    EXPECT_FALSE(joiner.add(page("78\n")));

    const Extraction extraction = std::move(joiner).finish(3);

    EXPECT_EQ(extraction.reason, Reason::partial);
    EXPECT_EQ(extraction.detail, "the text is too long");
    EXPECT_EQ(extraction.text, "12\n45\n");
}

TEST(PageJoiner, theFirstLossIsNamed) {
    PageJoiner joiner(PageMarks::off);
    joiner.add(page("one\n"));
    joiner.leaveOut(0, "nothing");
    joiner.leaveOut(2, "2 of 3 pages cannot be read");
    joiner.leaveOut(1, "another reason");

    const Extraction extraction = std::move(joiner).finish(3);

    EXPECT_EQ(extraction.reason, Reason::partial);
    EXPECT_EQ(extraction.detail, "2 of 3 pages cannot be read");
    EXPECT_EQ(extraction.loss.partsSkipped, 3U);
}

} // namespace
} // namespace quillow::pdf
