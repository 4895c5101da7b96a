#include "engines/rtf/Keywords.h"

#include <gtest/gtest.h>

namespace quillow::rtf {
namespace {

TEST(Keywords, knownWordsAreFoundWithTheirValue) {
    EXPECT_EQ(findKeyword("par").action, Action::paragraph);
    EXPECT_EQ(findKeyword("u").action, Action::unicode);
    EXPECT_EQ(findKeyword("emdash").value, 0x2014);
    EXPECT_EQ(findKeyword("mac").value, 10000);
    EXPECT_EQ(findKeyword("pict").destination(), Destination::skipped);
    EXPECT_EQ(findKeyword("zwnj").value, 0x200C);
}

TEST(Keywords, wordsLongerThanThePackedFormAreFound) {
    EXPECT_EQ(findKeyword("listoverridetable").destination(), Destination::overrideTable);
    EXPECT_EQ(findKeyword("listoverridestartat").action, Action::overrideStart);
}

TEST(Keywords, breaksAreTheWordsThatDivideTheText) {
    for (const char* name : {"par", "line", "page", "sect", "column", "cell", "row", "tab"})
        EXPECT_TRUE(isBreak(findKeyword(name).action)) << name;
    for (const char* name : {"u", "emdash", "plain", "f", "frobnicate"})
        EXPECT_FALSE(isBreak(findKeyword(name).action)) << name;
}

TEST(Keywords, otherWordsMeanNothing) {
    for (const char* name :
         {"", "p", "pa", "parx", "PAR", "Par", "listoverridetables", "frobnicate", "aaaaaaaaaaaaaaaa"})
        EXPECT_EQ(findKeyword(name).action, Action::none) << name;
}

TEST(Keywords, everyPlaceOfTheTableAnswersForItsOwnName) {
    std::size_t names = 0;
    for (const KeywordSlot& slot : kKeywordTable.slots) {
        if (slot.low == 0) continue;
        ++names;
        const Keyword found = findKeyword(slot.low, slot.high);
        EXPECT_EQ(found.action, slot.keyword.action);
        EXPECT_EQ(found.value, slot.keyword.value);
    }
    EXPECT_GT(names, 200U);
}

} // namespace
} // namespace quillow::rtf
