// Names as numbers: the block scan agrees with the byte-by-byte scan, and the tables have every name.
#include "engines/html/tree/Attributes.h"
#include "engines/html/tree/Tags.h"

#include <gtest/gtest.h>

#include <string>

namespace quillow::html {
namespace {

template <NameEnd end>
void expectSameScan(std::string_view source, std::size_t from) {
    const ScannedName fast = scanName<end>(source, from);
    const ScannedName slow = scanNamePortable<end>(source, from);
    ASSERT_EQ(fast.length, slow.length) << testing::PrintToString(source);
    ASSERT_EQ(fast.asWritten, slow.asWritten) << testing::PrintToString(source);
    ASSERT_TRUE(fast.key == slow.key) << testing::PrintToString(source);
}

TEST(NameKey, isTheSameFromBlocksAndFromBytes) {
    for (std::size_t length = 0; length < 24; ++length)
        for (std::size_t at = 0; at <= length; ++at)
            for (const char c : std::string_view("Z\0\x01@[>/= \t\xC3", 11))
                for (const std::string_view after : {"", ">", "=\"some value of an attribute\">"}) {
                    std::string source = "<" + std::string(length, 'n') + std::string(after);
                    source[at] = c;
                    if (source.size() < 2) continue;
                    expectSameScan<NameEnd::tag>(source, 1);
                    expectSameScan<NameEnd::attribute>(source, 1);
                }
}

TEST(NameKey, endsWhereTheStandardEndsAName) {
    EXPECT_EQ(scanName<NameEnd::tag>("Div=x>................", 0).length, 5U);
    EXPECT_EQ(scanName<NameEnd::attribute>("Class=x>................", 0).length, 5U);
    EXPECT_TRUE(scanName<NameEnd::attribute>("Class=x>................", 0).key == keyOf("class"));
    EXPECT_FALSE(scanName<NameEnd::attribute>("Class=x>................", 0).asWritten);
    EXPECT_TRUE(scanName<NameEnd::attribute>("class=x>................", 0).asWritten);
}

TEST(NameKey, aNameWithNulIsNoOther) {
    const ScannedName name = scanName<NameEnd::tag>(std::string_view("p\0>.................", 20), 0);
    EXPECT_FALSE(name.asWritten);
    EXPECT_EQ(tagForKey(name.key), Tag::unknown);
}

TEST(NameTables, knowEveryNameAndNoOther) {
    for (std::size_t tag = 1; tag < static_cast<std::size_t>(Tag::count); ++tag)
        EXPECT_EQ(tagForKey(keyOf(tagName(static_cast<Tag>(tag)))), static_cast<Tag>(tag));
    EXPECT_EQ(tagForKey(keyOf("custom-element")), Tag::unknown);
    EXPECT_EQ(tagForKey(keyOf("a-name-that-is-longer-than-a-key")), Tag::unknown);
    EXPECT_EQ(attributeNameForKey(keyOf("class")), AttributeName::class_);
    EXPECT_EQ(attributeNameForKey(keyOf("value")), AttributeName::value);
    EXPECT_EQ(attributeNameForKey(keyOf("data-x")), AttributeName::unknown);
}

} // namespace
} // namespace quillow::html
