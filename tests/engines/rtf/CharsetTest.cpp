#include "engines/rtf/Charset.h"

#include <gtest/gtest.h>

namespace quillow::rtf {
namespace {

TEST(Charset, unknownCodePagesAreWindowsLatin) {
    CharsetPool pool;
    const Charset* latin = pool.forCodePage(1252);
    for (const int number : {0, 1200, 1201, 4711, -5})
        EXPECT_EQ(pool.forCodePage(number), latin) << number;
}

TEST(Charset, eachCharsetIsMadeOnce) {
    CharsetPool pool;
    EXPECT_EQ(pool.forCodePage(1251), pool.forCodePage(1251));
    EXPECT_NE(pool.forCodePage(1251), pool.forCodePage(1250));
    EXPECT_EQ(pool.forSymbols(text::symbolToUnicode), pool.forSymbols(text::symbolToUnicode));
    EXPECT_NE(pool.forSymbols(text::symbolToUnicode), pool.forSymbols(text::wingdingsToUnicode));
}

TEST(Charset, singlesAreReadyToCopy) {
    const Charset cyrillic(text::CodePage::forNumber(1251));
    const Charset::Single letter = cyrillic.single(0xCF); // U+041F
    EXPECT_EQ(letter.length, 2);
    EXPECT_EQ(letter.utf8, 0x9FD0U);
    EXPECT_EQ(cyrillic.single('a').utf8, unsigned{'a'});
    EXPECT_EQ(cyrillic.single('\n').length, 0);
    EXPECT_EQ(cyrillic.single(0x7F).length, 0);
}

TEST(Charset, leadBytesAndUtf8AreNoSingles) {
    const Charset japanese(text::CodePage::forNumber(932));
    EXPECT_NE(japanese.pairs(), nullptr);
    EXPECT_EQ(japanese.single(0x93).length, 0);
    EXPECT_EQ(japanese.single(0xB1).length, 3); // half-width katakana
    const Charset utf8(static_cast<const text::CodePage*>(nullptr));
    EXPECT_TRUE(utf8.isUtf8());
    EXPECT_EQ(utf8.single(0xC3).length, 0);
}

} // namespace
} // namespace quillow::rtf
