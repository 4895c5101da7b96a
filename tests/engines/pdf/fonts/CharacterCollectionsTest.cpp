#include "engines/pdf/fonts/CharacterCollections.h"

#include "engines/pdf/fonts/CharacterCollectionsTables.h"
#include "text/Unicode.h"

#include <gtest/gtest.h>

namespace quillow::pdf {
namespace {

TEST(CharacterCollections, registryAndOrderingNameThem) {
    EXPECT_EQ(collectionOf("Adobe", "Japan1"), CharacterCollection::Japan1);
    EXPECT_EQ(collectionOf("Adobe", "Japan2"), CharacterCollection::Japan2);
    EXPECT_EQ(collectionOf("Adobe", "GB1"), CharacterCollection::Gb1);
    EXPECT_EQ(collectionOf("Adobe", "CNS1"), CharacterCollection::Cns1);
    EXPECT_EQ(collectionOf("Adobe", "Korea1"), CharacterCollection::Korea1);
    EXPECT_EQ(collectionOf("Adobe", "KR"), CharacterCollection::Kr);
    EXPECT_EQ(collectionOf("Adobe", "Identity"), CharacterCollection::Unknown);
    EXPECT_EQ(collectionOf("Private", "Japan1"), CharacterCollection::Unknown);
    EXPECT_EQ(collectionOf("", ""), CharacterCollection::Unknown);
}

struct CidCase {
    CharacterCollection collection;
    std::uint32_t cid;
    std::u32string_view text;
};

constexpr CidCase kCids[] = {
    {CharacterCollection::Japan1, 1, U" "},
    {CharacterCollection::Japan1, 34, U"A"},
    {CharacterCollection::Japan1, 843, U"\u3042"},
    {CharacterCollection::Japan1, 1200, U"\u4E00"},
    {CharacterCollection::Japan1, 231, U" "},                         // half-width
    {CharacterCollection::Japan1, 264, U"A"},                         // half-width
    {CharacterCollection::Japan1, 790, U"\uFF21"},                    // full-width is a character of its own
    {CharacterCollection::Japan1, 343, U"\uFF71"},                    // so is half-width kana
    {CharacterCollection::Japan1, 7887, U"\u3001"},                   // vertical
    {CharacterCollection::Japan1, 8720, U" "},                        // rotated
    {CharacterCollection::Japan1, 8753, U"A"},                        // rotated
    {CharacterCollection::Japan1, 8321, U"\u6709\u9650\u4F1A\u793E"}, // four characters in one square
    {CharacterCollection::Japan1, 13706, U"\U00020BB7"},
    {CharacterCollection::Japan1, 4, U"#"},
    {CharacterCollection::Japan1, 15444, U""}, // private use only
    {CharacterCollection::Japan1, 0, U""},
    {CharacterCollection::Japan1, 23060, U""},
    {CharacterCollection::Japan1, 0xFFFFFFFF, U""},
    {CharacterCollection::Japan2, 1, U"\u02D8"},
    {CharacterCollection::Gb1, 940, U"\u554A"},
    {CharacterCollection::Gb1, 7716, U" "},
    {CharacterCollection::Gb1, 580, U"\uFF08"},  // vertical
    {CharacterCollection::Gb1, 4162, U"\u4E00"}, // not the radical
    {CharacterCollection::Cns1, 595, U"\u4E00"},
    {CharacterCollection::Cns1, 130, U"\uFF08"}, // vertical
    {CharacterCollection::Korea1, 1086, U"\uAC00"},
    {CharacterCollection::Korea1, 8752, U"\u22BC"}, // wrong in one of Adobe's two maps
    {CharacterCollection::Kr, 221, U"\uAC00"},
    {CharacterCollection::Kr, 11705, U"\U0001F110"},
    {CharacterCollection::Unknown, 34, U""},
};

TEST(CharacterCollections, cidsHaveTheirCharacters) {
    for (const CidCase& c : kCids)
        EXPECT_EQ(unicodeOfCid(c.collection, c.cid).view(), c.text) << int(c.collection) << ' ' << c.cid;
}

TEST(CharacterCollections, everyCharacterIsInterchangeableAndNoVerticalForm) {
    for (std::size_t i = 0; i < kCollectionCount; ++i) {
        const auto collection = static_cast<CharacterCollection>(i + 1);
        std::size_t known = 0;
        for (std::uint32_t cid = 0; cid < kCollections[i].count; ++cid) {
            const GlyphText text = unicodeOfCid(collection, cid);
            known += text.isEmpty() ? 0 : 1;
            for (const char32_t c : text) {
                EXPECT_TRUE(text::isInterchangeable(c) && c >= 0x20) << i << ' ' << cid;
                EXPECT_FALSE(c >= 0xFE30 && c <= 0xFE44) << i << ' ' << cid;
            }
        }
        EXPECT_GT(known * 100, kCollections[i].count * 98) << i;
    }
}

} // namespace
} // namespace quillow::pdf
