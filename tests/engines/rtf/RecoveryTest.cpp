#include "engines/rtf/Recovery.h"

#include <gtest/gtest.h>

#include <string_view>

namespace quillow::rtf {
namespace {

using namespace std::string_view_literals;

constexpr std::size_t npos = std::string_view::npos;

TEST(Recovery, bodyBeginsAtSectionOrParagraphDefaults) {
    EXPECT_EQ(findBody("ab\\pard x\\sectd"), 2U);
    EXPECT_EQ(findBody("ab\\sectd\\pard"), 2U);
    EXPECT_EQ(findBody("\\pardx\\sectdx"), npos); // other words
    EXPECT_EQ(findBody(""), npos);
}

TEST(Recovery, withoutThemTheBodyOfATableBeginsAfterItsEntries) {
    EXPECT_EQ(findBodyAfterEntries("{a}{b} text\\par {c}"), 6U);
    EXPECT_EQ(findBodyAfterEntries("{a}\\pard text\\par"), 3U);
    EXPECT_EQ(findBodyAfterEntries("{a} text"), npos);
}

TEST(Recovery, tableHoldsAParagraphOnlyAfterItsBody) {
    EXPECT_TRUE(holdsParagraph("{a}\\pard text\\par"));
    EXPECT_FALSE(holdsParagraph("{a\\par}\\pard text"));
    EXPECT_FALSE(holdsParagraph("{a}\\par"));
}

TEST(Recovery, asManyClosesAreStraysAsLackAnOpeningBraceLater) {
    Recovery recovery("", false);
    EXPECT_TRUE(recovery.isStrayClose("a}{b}\\}}c"));
    EXPECT_TRUE(recovery.isStrayClose("c}"));
    EXPECT_FALSE(recovery.isStrayClose("}"));
}

TEST(Recovery, closeBeforeTheRemainsOfABufferIsNoStray) {
    Recovery recovery("", false);
    EXPECT_FALSE(recovery.isStrayClose("\r\n\0}"sv));
}

TEST(Recovery, lastBraceIsThatOfTheDocumentButNotOfAFragment) {
    constexpr std::string_view kInput = "{a}{b} c";
    EXPECT_TRUE(Recovery(kInput, false).isAfterLastBrace(kInput.data() + 6));
    EXPECT_FALSE(Recovery(kInput, false).isAfterLastBrace(kInput.data() + 3));
    EXPECT_FALSE(Recovery(kInput, true).isAfterLastBrace(kInput.data() + 6));
}

TEST(Recovery, goingBackIsLimited) {
    Recovery recovery("", false);
    for (int i = 0; i < kMaxRecoveries; ++i) {
        EXPECT_TRUE(recovery.mayGoBack());
        EXPECT_TRUE(recovery.mayReadTableAgain());
    }
    EXPECT_FALSE(recovery.mayGoBack());
    EXPECT_FALSE(recovery.mayReadTableAgain());
}

} // namespace
} // namespace quillow::rtf
