#include "engines/pdf/syntax/Lexer.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace quillow::pdf {
namespace {

using namespace std::string_view_literals;

struct NumberCase {
    std::string_view bytes;
    double value;
    bool isInteger;
    std::size_t length;
};

TEST(Lexer, readsNumbersAsKnownReadersDo) {
    const NumberCase cases[] = {
        {"0", 0, true, 1},
        {"17 ", 17, true, 2},
        {"+17", 17, true, 3},
        {"-98", -98, true, 3},
        {"34.5/", 34.5, false, 4},
        {"-3.62", -3.62, false, 5},
        {"4.", 4, false, 2},
        {"-.002", -.002, false, 5},
        {"--5", -5, true, 3},
        {"+-5", -5, true, 3},
        {"1.2.3", 1.2, false, 5},
        {"4-5", 4, true, 3},
        {"4.5-6", 4.5, false, 5},
        {".", 0, false, 1},
        {"+", 0, true, 1},
        {"-", 0, true, 1},
        {"1e5", 1, true, 1},
        {"00012", 12, true, 5},
        {"x", 0, true, 0},
        {"", 0, true, 0},
        {"2147483648", 2147483648.0, true, 10},
        {"123456789012345678", 123456789012345678.0, true, 18},
        {"0.000000000000000000000000000000125", 1.25e-31, false, 35},
    };
    for (const NumberCase& c : cases) {
        const NumberToken number = readNumber(c.bytes.data(), c.bytes.data() + c.bytes.size());
        EXPECT_DOUBLE_EQ(number.value, c.value) << c.bytes;
        EXPECT_EQ(number.isInteger, c.isInteger) << c.bytes;
        EXPECT_EQ(number.end, c.bytes.data() + c.length) << c.bytes;
    }
}

TEST(Lexer, numbersAreNeverInfinite) {
    for (const std::string& digits : {std::string(5000, '9'), "." + std::string(5000, '0') + "1"}) {
        const NumberToken number = readNumber(digits.data(), digits.data() + digits.size());
        EXPECT_TRUE(std::isfinite(number.value));
        EXPECT_EQ(number.end, digits.data() + digits.size());
    }
}

struct StringCase {
    std::string_view bytes;
    std::string_view text;
    bool isPlain;
    std::size_t length;
};

TEST(Lexer, readsStrings) {
    const StringCase cases[] = {
        {"(abc)d", "abc", true, 5},
        {"()", "", true, 2},
        {"(a(b)c)", "a(b)c", true, 7},
        {"(a\nb)", "a\nb", true, 5},
        {"(a\r\nb)", "a\nb", false, 6},
        {"(a\rb)", "a\nb", false, 5},
        {"(a\\\r\nb)", "ab", false, 7},
        {"(a\\\nb)", "ab", false, 6},
        {"(\\n\\r\\t\\b\\f\\(\\)\\\\\\x)", "\n\r\t\b\f()\\x", false, 20},
        {"(\\101\\53\\0539\\8)", "A++98", false, 16},
        {"(\\501)", "A", false, 6},
        {"(\\)", ")", false, 3},
        {"(abc", "abc", true, 4},
        {"(a\\", "a", false, 3},
        {"<48 65\n6C>", "Hel", false, 10},
        {"<487>", "Hp", false, 5},
        {"<4x8>", "H", false, 5},
        {"<>", "", false, 2},
        {"<48", "H", false, 3},
    };
    text::ByteBuffer out;
    for (const StringCase& c : cases) {
        const StringToken token = readString(c.bytes.data(), c.bytes.data() + c.bytes.size());
        out.clear();
        unescapeString(token.raw, c.bytes.front(), out);
        EXPECT_EQ(out.view(), c.text) << c.bytes;
        EXPECT_EQ(token.isPlain, c.isPlain) << c.bytes;
        EXPECT_EQ(token.end, c.bytes.data() + c.length) << c.bytes;
        if (token.isPlain) {
            EXPECT_EQ(token.raw, c.text) << c.bytes;
        }
    }
}

TEST(Lexer, passesOverWhiteSpaceAndComments) {
    const std::string_view bytes = "\0\t\n\f\r % (not a string)\r%\n/x"sv;
    const char* const end = bytes.data() + bytes.size();

    EXPECT_EQ(std::string_view(skipWhiteSpace(bytes.data(), end)), "/x");
    EXPECT_EQ(skipWhiteSpace(end, end), end);
    const std::string_view comment = "% no end";
    EXPECT_EQ(skipWhiteSpace(comment.data(), comment.data() + comment.size()), comment.data() + comment.size());
}

TEST(Lexer, namesEndAtWhiteSpaceAndDelimiters) {
    const auto nameOf = [](std::string_view bytes) { return readRawName(bytes.data(), bytes.data() + bytes.size()); };

    EXPECT_EQ(nameOf("A;Name_With-Various***Characters? "), "A;Name_With-Various***Characters?");
    EXPECT_EQ(nameOf("A#20B/C"), "A#20B");
    EXPECT_EQ(nameOf("A(B"), "A");
    EXPECT_EQ(nameOf("/"), "");
    EXPECT_EQ(nameOf("\xC3\xA9"), "\xC3\xA9");
}

} // namespace
} // namespace quillow::pdf
