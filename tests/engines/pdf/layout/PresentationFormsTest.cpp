#include "engines/pdf/layout/PresentationForms.h"

#include <gtest/gtest.h>

namespace quillow::pdf {
namespace {

TEST(PresentationForms, ligaturesAreTheirLetters) {
    EXPECT_EQ(plainLetters(0xFB00), u"ff");
    EXPECT_EQ(plainLetters(0xFB03), u"ffi");
    EXPECT_EQ(plainLetters(0xFB05), u"st");
}

TEST(PresentationForms, joiningFormsAreTheirLetter) {
    EXPECT_EQ(plainLetters(0xFE8D), u"\u0627");
    EXPECT_EQ(plainLetters(0xFEFB), u"\u0644\u0627");
    EXPECT_EQ(plainLetters(0xFB2A), u"\u05E9\u05C1");
}

TEST(PresentationForms, markDrawnAloneBringsNoBlank) {
    EXPECT_EQ(plainLetters(0xFE70), u"\u064B");
}

TEST(PresentationForms, everythingElseStays) {
    EXPECT_TRUE(plainLetters('a').empty());
    EXPECT_TRUE(plainLetters(0xFAFF).empty());
    EXPECT_TRUE(plainLetters(0xFB1E).empty());
    EXPECT_TRUE(plainLetters(0xFE30).empty()) << "vertical forms are another block";
    EXPECT_TRUE(plainLetters(0xFEFF).empty());
    EXPECT_TRUE(plainLetters(0xFF21).empty());
    EXPECT_TRUE(plainLetters(0x1FB00).empty());
}

} // namespace
} // namespace quillow::pdf
