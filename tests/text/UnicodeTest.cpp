#include "text/Unicode.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace quillow::text {
namespace {

struct RangeCase {
    char32_t codePoint;
    bool high;
    bool low;
    bool privateUse;
    bool noncharacter;
};

constexpr RangeCase kRanges[] = {
    {0xD7FF, false, false, false, false},  {0xD800, true, false, false, false},    {0xDBFF, true, false, false, false},
    {0xDC00, false, true, false, false},   {0xDFFF, false, true, false, false},    {0xE000, false, false, true, false},
    {0xF8FF, false, false, true, false},   {0xF900, false, false, false, false},   {0xFDCF, false, false, false, false},
    {0xFDD0, false, false, false, true},   {0xFDEF, false, false, false, true},    {0xFDF0, false, false, false, false},
    {0xFFFD, false, false, false, false},  {0xFFFE, false, false, false, true},    {0xFFFF, false, false, false, true},
    {0x1FFFE, false, false, false, true},  {0xEFFFD, false, false, false, false},  {0xF0000, false, false, true, false},
    {0x10FFFD, false, false, true, false}, {0x110000, false, false, false, false},
};

TEST(Unicode, rangesBeginAndEndWhereTheStandardSays) {
    for (const RangeCase& range : kRanges) {
        const char32_t c = range.codePoint;
        EXPECT_EQ(isHighSurrogate(c), range.high) << std::hex << std::uint32_t{c};
        EXPECT_EQ(isLowSurrogate(c), range.low) << std::hex << std::uint32_t{c};
        EXPECT_EQ(isSurrogate(c), range.high || range.low) << std::hex << std::uint32_t{c};
        EXPECT_EQ(isPrivateUse(c), range.privateUse) << std::hex << std::uint32_t{c};
        EXPECT_EQ(isNoncharacter(c), range.noncharacter) << std::hex << std::uint32_t{c};
    }
}

TEST(Unicode, pairsCombineToTheirCodePoint) {
    EXPECT_EQ(combineSurrogates(0xD800, 0xDC00), U'\U00010000');
    EXPECT_EQ(combineSurrogates(0xD83D, 0xDE00), U'\U0001F600');
    EXPECT_EQ(combineSurrogates(0xDBFF, 0xDFFF), kLastCodePoint);
}

} // namespace
} // namespace quillow::text
