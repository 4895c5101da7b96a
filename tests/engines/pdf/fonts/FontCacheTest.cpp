#include "tests/engines/pdf/fonts/TestFonts.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace quillow::pdf::test {
namespace {

const std::string kFont = "<</Type/Font/Subtype/Type1/BaseFont/ABCDEF+Some>>";

TEST(FontCache, makesEachFontOnce) {
    FontDocument document({kFont, kFont});
    EXPECT_EQ(&document.font(5), &document.font(5));
    EXPECT_NE(&document.font(5), &document.font(6));
}

TEST(FontCache, knowsADirectDictionaryAgain) {
    FontDocument document({"<</Font<</A " + kFont + "/B 5 0 R>>>>"});
    const Dictionary resources = document.document().load({5, 0}).dictionary();
    const Object font = document.document().get(resources, "Font").dictionary().find("A");
    EXPECT_EQ(&document.fonts().fontOf(font), &document.fonts().fontOf(font));
}

TEST(FontCache, numbersFontsFromZero) {
    FontDocument document({kFont, kFont});
    EXPECT_EQ(document.font(6).number(), 0U);
    EXPECT_EQ(document.font(5).number(), 1U);
}

TEST(FontCache, namesFontsWithoutThePrefixOfASubset) {
    FontDocument document({kFont, "<</Subtype/Type1/BaseFont/Abcdef+Some>>", "<</Subtype/Type3/Name/F1>>"});
    EXPECT_EQ(document.font(5).name(), "Some");
    EXPECT_EQ(document.font(6).name(), "Abcdef+Some");
    EXPECT_EQ(document.font(7).name(), "F1");
}

TEST(FontCache, givesOneFontForAllThatIsNone) {
    FontDocument document({"null", "17"});
    Font& font = document.fonts().fontOf(Object());
    EXPECT_EQ(textOf(font, "Aa"), U"Aa");
    EXPECT_EQ(&document.font(5), &font);
    EXPECT_EQ(&document.font(6), &font);
    EXPECT_EQ(&document.font(77), &font);
}

TEST(FontCache, fontsOverTheLimitShareOne) {
    std::string fonts;
    for (std::size_t i = 0; i < FontCache::kMaximumFonts + 9; ++i)
        fonts += "<</Subtype/Type1/I " + std::to_string(i) + ">>";
    FontDocument document({"[" + fonts + "]"});
    std::set<const Font*> different;
    for (const Object& font : document.document().load({5, 0}).array())
        different.insert(&document.fonts().fontOf(font));
    EXPECT_EQ(different.size(), FontCache::kMaximumFonts + 1);
}

} // namespace
} // namespace quillow::pdf::test
