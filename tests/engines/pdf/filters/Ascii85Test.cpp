#include "tests/engines/pdf/filters/Decoded.h"

namespace quillow::pdf {
namespace {

using namespace std::string_literals;

Decoded decoded(std::string_view encoded, std::size_t limit = kNoLimit) {
    return decodedBy(FilterName::ascii85, encoded, {}, limit);
}

TEST(Ascii85, fiveDigitsAreFourBytes) {
    EXPECT_EQ(decoded("9jqo^BlbD-~>"), complete("Man is d"));
    EXPECT_EQ(decoded("!!!!!s8W-!~>"), complete("\0\0\0\0\xFF\xFF\xFF\xFF"s));
}

TEST(Ascii85, shortLastGroupGivesOneByteLessThanItHasDigits) {
    EXPECT_EQ(decoded("9jqo~>"), complete("Man"));
    EXPECT_EQ(decoded("9jn~>"), complete("Ma"));
    EXPECT_EQ(decoded("9`~>"), complete("M"));
}

TEST(Ascii85, zIsFourZeros) {
    EXPECT_EQ(decoded("z9jqo^z~>"), complete("\0\0\0\0Man \0\0\0\0"s));
}

TEST(Ascii85, whiteSpaceIsSkipped) {
    EXPECT_EQ(decoded(" 9j\r\nqo\t^ \0~\n>"s), complete("Man "));
}

TEST(Ascii85, startMarkIsSkipped) {
    EXPECT_EQ(decoded("<~9jqo^~>"), complete("Man "));
    EXPECT_EQ(decoded("\n <~9jqo^~>"), complete("Man "));
}

TEST(Ascii85, endMarkEndsTheDataAndMayBeMissing) {
    EXPECT_EQ(decoded("9jqo^~>9jqo^"), complete("Man "));
    EXPECT_EQ(decoded("9jqo^"), complete("Man "));
    EXPECT_EQ(decoded("9jqo"), complete("Man"));
    EXPECT_EQ(decoded(""), complete(""));
}

TEST(Ascii85, whatCannotBeEndsTheData) {
    EXPECT_EQ(decoded("9jqo^{9jqo^~>"), cut("Man "));
    EXPECT_EQ(decoded("9jqo^9z~>"), cut("Man ")) << "z inside a group";
    EXPECT_EQ(decoded("9jqo^s8W-\"~>"), cut("Man ")) << "a group above 2^32 - 1";
    EXPECT_EQ(decoded("9jqo^9~>"), cut("Man ")) << "a last group of one digit";
}

TEST(Ascii85, limitIsKept) {
    EXPECT_EQ(decoded("9jqo^~>", 4), complete("Man "));
    EXPECT_EQ(decoded("9jqo^~>", 3), tooLong("Man"));
    EXPECT_EQ(decoded("9jqo~>", 2), tooLong("Ma"));
    EXPECT_EQ(decoded("zzzz", 5), tooLong("\0\0\0\0\0"s));
    EXPECT_EQ(decoded("z", 0), tooLong(""));
}

} // namespace
} // namespace quillow::pdf
