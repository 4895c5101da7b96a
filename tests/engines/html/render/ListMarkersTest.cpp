#include "engines/html/render/ListMarkers.h"

#include <gtest/gtest.h>

namespace quillow::html {
namespace {

TEST(ListMarkers, numbersFollowTheirStyle) {
    EXPECT_EQ(listMarker(ListStyle::decimal, -3), "-3. ");
    EXPECT_EQ(listMarker(ListStyle::lowerAlpha, 1), "a. ");
    EXPECT_EQ(listMarker(ListStyle::lowerAlpha, 26), "z. ");
    EXPECT_EQ(listMarker(ListStyle::upperAlpha, 27), "AA. ");
    EXPECT_EQ(listMarker(ListStyle::upperAlpha, 703), "AAA. ");
    EXPECT_EQ(listMarker(ListStyle::lowerRoman, 1994), "mcmxciv. ");
    EXPECT_EQ(listMarker(ListStyle::upperRoman, 3999), "MMMCMXCIX. ");
    EXPECT_EQ(listMarker(ListStyle::bullet, 7), "\u2022 ");
    EXPECT_EQ(listMarker(ListStyle::none, 7), "");
}

TEST(ListMarkers, whatAStyleCannotWriteIsDecimal) {
    EXPECT_EQ(listMarker(ListStyle::lowerRoman, 4000), "4000. ");
    EXPECT_EQ(listMarker(ListStyle::lowerRoman, 0), "0. ");
    EXPECT_EQ(listMarker(ListStyle::upperAlpha, 0), "0. ");
}

} // namespace
} // namespace quillow::html
