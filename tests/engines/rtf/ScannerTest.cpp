#include "engines/rtf/Scanner.h"

#include "text/CodePage.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace quillow::rtf {
namespace {

using namespace std::string_view_literals;

constexpr std::string_view kPadding = "......................................"; // enough for the fast path

struct WordCase {
    std::string_view input;
    Action action;
    std::int32_t parameter;
    bool hasParameter;
    std::string_view rest;
};

constexpr WordCase kWords[] = {
    {"\\par", Action::paragraph, 0, false, ""},
    {"\\par x", Action::paragraph, 0, false, "x"},
    {"\\par  x", Action::paragraph, 0, false, " x"},
    {"\\u-10179?", Action::unicode, -10179, true, "?"},
    {"\\u233 ?", Action::unicode, 233, true, "?"},
    {"\\u-x", Action::unicode, 0, false, "-x"},
    {"\\u-", Action::unicode, 0, false, "-"},
    {"\\f99999999999999999999;", Action::font, 2147483647, true, ";"},
    {"\\f-99999999999999999999;", Action::font, -2147483647, true, ";"},
    {"\\f0000000000000000000000000000000000000001\\x", Action::font, 1, true, "\\x"},
    {"\\v0{", Action::hidden, 0, true, "{"},
    {"\\b\r\nold", Action::none, 0, false, "\r\nold"},
    {"\\listoverridetable{", Action::destination, 0, false, "{"},
    {"\\qqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqqq12 x", Action::none, 12, true, "x"},
    {"\\'e9", Action::notAWord, 0, false, "\\'e9"},
    {"\\", Action::notAWord, 0, false, "\\"},
};

TEST(Scanner, wordsEndAtTheirDelimiterOnBothRoads) {
    for (const WordCase& wordCase : kWords) {
        for (const std::string_view padding : {""sv, kPadding}) {
            const std::string input = std::string(wordCase.input) + std::string(padding);
            Scanner scanner(input);
            const Keyword keyword = scanner.readName();
            EXPECT_EQ(keyword.action, wordCase.action) << input;
            if (keyword.action == Action::notAWord) {
                EXPECT_EQ(scanner.rest(), input);
                continue;
            }
            Scanner skipping = scanner;
            const ControlWord word = scanner.readParameter(keyword);
            skipping.skipParameter();
            EXPECT_EQ(word.parameter, wordCase.parameter) << input;
            EXPECT_EQ(word.hasParameter, wordCase.hasParameter) << input;
            EXPECT_EQ(scanner.rest(), std::string(wordCase.rest) + std::string(padding)) << input;
            EXPECT_EQ(skipping.rest(), scanner.rest()) << input;
        }
    }
}

TEST(Scanner, hexadecimalBytesNeedTwoDigits) {
    const std::string_view input = "\\'e9\\'E9\\'4g\\'";
    const Scanner scanner(input);
    EXPECT_EQ(scanner.hexByteAt(input.data()), 0xE9);
    EXPECT_EQ(scanner.hexByteAt(input.data() + 4), 0xE9);
    EXPECT_EQ(scanner.hexByteAt(input.data() + 8), std::nullopt);
    EXPECT_EQ(scanner.hexByteAt(input.data() + 12), std::nullopt);
}

struct SkipCase {
    std::string_view input;
    Scanner::Completeness completeness;
    std::string_view rest;
};

TEST(Scanner, groupsAreSkippedToTheirOwnBrace) {
    using enum Scanner::Completeness;
    constexpr SkipCase kCases[] = {
        {"a{b}c}d", whole, "d"},    {"a\\}\\{\\\\}d", whole, "d"}, {"\\bin3 }}}}d", whole, "d"},
        {"\\bin-3 }d", whole, "d"}, {"\\bingo3 }d", whole, "d"},   {"\\bin9 }}", cutShort, ""},
        {"a{b}", cutShort, ""},     {"a\\", cutShort, ""},
    };
    for (const SkipCase& skipCase : kCases) {
        Scanner scanner(skipCase.input);
        EXPECT_EQ(scanner.skipGroup(nullptr), skipCase.completeness) << skipCase.input;
        EXPECT_EQ(scanner.rest(), skipCase.rest);
    }
}

TEST(Scanner, trailBytesThatLookLikeBracesAreSkippedInDoubleByteText) {
    const std::string_view input = "\x96{\x83}\x83\\}d"; // U+672C, U+30DE, U+30BD
    Scanner plain(input);
    EXPECT_EQ(plain.skipGroup(nullptr), Scanner::Completeness::cutShort);
    Scanner paired(input);
    EXPECT_EQ(paired.skipGroup(text::CodePage::forNumber(932)), Scanner::Completeness::whole);
    EXPECT_EQ(paired.rest(), "d");
}

TEST(Scanner, binaryDataIsClampedToTheInput) {
    Scanner scanner("abc");
    EXPECT_EQ(scanner.skipBinary(2), Scanner::Completeness::whole);
    EXPECT_EQ(scanner.rest(), "c");
    EXPECT_EQ(scanner.skipBinary(-1), Scanner::Completeness::whole);
    EXPECT_EQ(scanner.rest(), "c");
    EXPECT_EQ(scanner.skipBinary(2147483647), Scanner::Completeness::cutShort);
    EXPECT_TRUE(scanner.atEnd());
}

TEST(Scanner, blockScansAgreeWithByteScansAtEveryOffset) {
    for (unsigned value = 0; value < 256; ++value) {
        for (std::size_t at = 0; at < 70; ++at) {
            std::string input(80, 'x');
            input[at] = static_cast<char>(value);
            const char* begin = input.data();
            const char* end = begin + input.size();
            const char* mark = begin + at;
            EXPECT_EQ(findTextEnd(begin, end), isPlainText(*mark) ? end : mark);
            EXPECT_EQ(findSyntax(begin, end), isSyntax(*mark) ? mark : end);
            EXPECT_EQ(findHighByte(begin, end), isHigh(*mark) ? mark : end);
        }
    }
}

TEST(Scanner, codePointsAreCountedInLongText) {
    std::string text;
    for (int i = 0; i < 3000; ++i)
        text += "aé日😀";
    EXPECT_EQ(countCodePoints(text.data(), text.data() + text.size()), 12000U);
}

} // namespace
} // namespace quillow::rtf
