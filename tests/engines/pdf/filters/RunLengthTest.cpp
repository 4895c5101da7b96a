#include "tests/engines/pdf/filters/Decoded.h"

namespace quillow::pdf {
namespace {

using namespace std::string_literals;

Decoded decoded(std::string_view encoded, std::size_t limit = kNoLimit) {
    return decodedBy(FilterName::runLength, encoded, {}, limit);
}

TEST(RunLength, runsAreCopiedOrRepeated) {
    EXPECT_EQ(decoded("\2abc\xFEx\0y\x80"s), complete("abcxxxy"));
    EXPECT_EQ(decoded("\x81x\x80"), complete(std::string(128, 'x')));
    EXPECT_EQ(decoded("\x7F" + std::string(128, 'a') + "\xFFz"), complete(std::string(128, 'a') + "zz"));
}

TEST(RunLength, endMarkEndsTheDataAndMayBeMissing) {
    EXPECT_EQ(decoded("\0a\x80\0b"s), complete("a"));
    EXPECT_EQ(decoded("\0a\0b"s), complete("ab"));
    EXPECT_EQ(decoded(""), complete(""));
}

TEST(RunLength, runThatEndsEarlyIsKept) {
    EXPECT_EQ(decoded("\0a\4bc"s), cut("abc"));
    EXPECT_EQ(decoded("\0a\xFE"s), cut("a"));
    EXPECT_EQ(decoded("\4"), cut(""));
}

TEST(RunLength, limitIsKept) {
    EXPECT_EQ(decoded("\2abc\x80", 3), complete("abc"));
    EXPECT_EQ(decoded("\2abc\x80", 2), tooLong("ab"));
    EXPECT_EQ(decoded("\xFDx\x80", 3), tooLong("xxx"));
    EXPECT_EQ(decoded("\xFDx\x80", 0), tooLong(""));
}

} // namespace
} // namespace quillow::pdf
