#include "text/Utf8.h"

#include <gtest/gtest.h>

namespace quillow::text {
namespace {

std::string utf8Of(char32_t c) {
    std::string out;
    appendUtf8(out, c);
    return out;
}

TEST(Utf8, codePointsAreWrittenInOneToFourBytes) {
    EXPECT_EQ(utf8Of(0), std::string(1, '\0'));
    EXPECT_EQ(utf8Of(0x7F), "\x7F");
    EXPECT_EQ(utf8Of(0x80), "\xC2\x80");
    EXPECT_EQ(utf8Of(0x7FF), "\xDF\xBF");
    EXPECT_EQ(utf8Of(0x800), "\xE0\xA0\x80");
    EXPECT_EQ(utf8Of(0xFFFF), "\xEF\xBF\xBF");
    EXPECT_EQ(utf8Of(0x10000), "\xF0\x90\x80\x80");
    EXPECT_EQ(utf8Of(0x10FFFF), "\xF4\x8F\xBF\xBF");
}

TEST(Utf8, surrogatesAndValuesBeyondUnicodeAreReplacementCharacters) {
    for (const char32_t c : {0xD800, 0xDBFF, 0xDC00, 0xDFFF, 0x110000, 0x7FFFFFFF})
        EXPECT_EQ(utf8Of(c), "\uFFFD");
}

TEST(Utf8, everyCodePointIsReadBackAsItWasWritten) {
    for (char32_t c = 0; c <= 0x10FFFF; ++c) {
        if (c == 0xD800) c = 0xE000;
        const std::string utf8 = utf8Of(c);
        const DecodedCodePoint decoded = decodeUtf8(utf8);
        ASSERT_TRUE(decoded.wellFormed && decoded.codePoint == c && decoded.length == utf8.size()) << std::uint32_t{c};
    }
}

struct IllFormed {
    std::string_view bytes;
    std::size_t subpart;
};

// The Unicode Standard, section 3.9, tables 3-8 to 3-11, and similar sequences.
constexpr IllFormed kIllFormed[] = {
    {"\x80", 1},
    {"\xBF", 1},
    {"\xC0\x80", 1},
    {"\xC1\xBF", 1},
    {"\xC2", 1},
    {"\xC2\x41", 1},
    {"\xE0\x80\x80", 1},
    {"\xE0\x9F\xBF", 1},
    {"\xE1\x80", 2},
    {"\xE1\x80\x41", 2},
    {"\xED\xA0\x80", 1},
    {"\xED\xBF\xBF", 1},
    {"\xF0\x80\x80\x80", 1},
    {"\xF0\x8F\xBF\xBF", 1},
    {"\xF1\x80\x80", 3},
    {"\xF1\x80\xE1", 2},
    {"\xF4\x90\x80\x80", 1},
    {"\xF5\x80\x80\x80", 1},
    {"\xFE", 1},
    {"\xFF", 1},
};

TEST(Utf8, illFormedSequencesAreTakenByMaximalSubparts) {
    for (const IllFormed& c : kIllFormed) {
        const DecodedCodePoint decoded = decodeUtf8(c.bytes);
        EXPECT_FALSE(decoded.wellFormed) << testing::PrintToString(c.bytes);
        EXPECT_EQ(decoded.codePoint, kReplacementCharacter);
        EXPECT_EQ(decoded.length, c.subpart) << testing::PrintToString(c.bytes);
    }
}

TEST(Utf8, validPrefixEndsBeforeTheFirstError) {
    // At every distance from the start, so that the error is at every position of a block.
    for (std::size_t before = 0; before < 40; ++before) {
        for (const std::string_view filler : {"a", "é", "漢", "😀"}) {
            std::string prefix;
            for (std::size_t i = 0; i < before; ++i)
                prefix += filler;
            EXPECT_EQ(validUtf8PrefixLength(prefix), prefix.size());
            EXPECT_TRUE(isValidUtf8(prefix));
            for (const IllFormed& c : kIllFormed) {
                const std::string bytes = prefix + std::string(c.bytes) + "abcdefghijklmnopqrst";
                EXPECT_EQ(validUtf8PrefixLength(bytes), prefix.size()) << filler << testing::PrintToString(c.bytes);
                EXPECT_FALSE(isValidUtf8(bytes));
            }
        }
    }
}

TEST(Utf8, asciiPrefixEndsBeforeTheFirstHighByte) {
    for (std::size_t length = 0; length < 70; ++length) {
        const std::string ascii(length, 'x');
        EXPECT_EQ(asciiPrefixLength(ascii), length);
        EXPECT_EQ(asciiPrefixLength(ascii + "\x80" + ascii), length);
        EXPECT_EQ(asciiPrefixLength(ascii + "\xFF"), length);
    }
}

TEST(Utf8, multiByteTextIsToldFromAscii) {
    EXPECT_FALSE(isMultiByteUtf8(""));
    EXPECT_FALSE(isMultiByteUtf8("plain"));
    EXPECT_TRUE(isMultiByteUtf8("plain é"));
    EXPECT_FALSE(isMultiByteUtf8("plain \xE9"));
}

} // namespace
} // namespace quillow::text
