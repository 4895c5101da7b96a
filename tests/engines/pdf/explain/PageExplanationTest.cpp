#include "engines/pdf/explain/PageExplanation.h"

#include "tests/engines/DataFiles.h"

#include <gtest/gtest.h>

namespace quillow::pdf {
namespace {

Extraction explained(const std::string& name, std::size_t page, const Options& options = {}) {
    return explainPage(test::asBytes(test::fileContent(test::dataFile("pdf/" + name + ".in"))), page, options);
}

TEST(PageExplanation, drawsThePageThatIsAskedFor) {
    const Extraction second = explained("plain", 2);

    EXPECT_EQ(second.reason, Reason::ok);
    EXPECT_EQ(second.pages, 2U);
    ASSERT_TRUE(second.text.has_value());
    EXPECT_NE(second.text->find(">Page 2 of 2, "), std::string::npos);
    EXPECT_NE(second.text->find(">two.</text>"), std::string::npos);
    EXPECT_EQ(second.text->find(">one,</text>"), std::string::npos);
}

TEST(PageExplanation, needsAPageThatIsThere) {
    for (const std::size_t page : {std::size_t{0}, std::size_t{3}}) {
        const Extraction extraction = explained("plain", page);

        EXPECT_EQ(extraction.reason, Reason::unreadable);
        EXPECT_EQ(extraction.detail, "there is no page " + std::to_string(page) + ": the document has 2 pages");
        EXPECT_FALSE(extraction.text.has_value());
    }
}

TEST(PageExplanation, needsThePassword) {
    Options wrong;
    wrong.password = "wrong";

    EXPECT_EQ(explained("needsPassword", 1).reason, Reason::locked);
    EXPECT_EQ(explained("needsPassword", 1).detail, "a password is needed");
    EXPECT_EQ(explained("needsPassword", 1, wrong).detail, "the password is wrong");
}

TEST(PageExplanation, drawsAPageWithoutText) {
    const Extraction extraction = explained("middlePageWithoutText", 2);

    EXPECT_EQ(extraction.reason, Reason::ok);
    EXPECT_TRUE(extraction.text.has_value());
}

TEST(PageExplanation, failsOnWhatIsNoPdf) {
    EXPECT_EQ(explainPage(test::asBytes("no PDF at all"), 1, {}).reason, Reason::damaged);
}

} // namespace
} // namespace quillow::pdf
