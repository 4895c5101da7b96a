#include "tests/engines/pdf/filters/Decoded.h"

namespace quillow::pdf {
namespace {

using namespace std::string_literals;

Decoded decoded(std::string_view encoded, std::size_t limit = kNoLimit) {
    return decodedBy(FilterName::asciiHex, encoded, {}, limit);
}

TEST(AsciiHex, digitsOfBothCasesAreBytes) {
    EXPECT_EQ(decoded("00ff7F4a>"), complete("\0\xFF\x7FJ"s));
}

TEST(AsciiHex, whiteSpaceIsSkipped) {
    EXPECT_EQ(decoded(" 4\r\n1\t4\f2\0 >"s), complete("AB"));
}

TEST(AsciiHex, lastSingleDigitIsFollowedByZero) {
    EXPECT_EQ(decoded("414>"), complete("A@"));
    EXPECT_EQ(decoded("4"), complete("@"));
}

TEST(AsciiHex, endMarkEndsTheDataAndMayBeMissing) {
    EXPECT_EQ(decoded("41>42"), complete("A"));
    EXPECT_EQ(decoded("4142"), complete("AB"));
    EXPECT_EQ(decoded(""), complete(""));
}

TEST(AsciiHex, anotherCharacterEndsTheData) {
    EXPECT_EQ(decoded("41G42>"), cut("A"));
    EXPECT_EQ(decoded("414G"), cut("A"));
}

TEST(AsciiHex, limitIsKept) {
    EXPECT_EQ(decoded("414243>", 3), complete("ABC"));
    EXPECT_EQ(decoded("414243>", 2), tooLong("AB"));
    EXPECT_EQ(decoded("4142435>", 3), tooLong("ABC"));
    EXPECT_EQ(decoded("41>", 0), tooLong(""));
    EXPECT_EQ(decoded(">", 0), complete(""));
}

} // namespace
} // namespace quillow::pdf
