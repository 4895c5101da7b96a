#include "engines/rtf/CharacterDecoder.h"

#include "text/Utf8.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quillow::rtf {
namespace {

using namespace std::string_view_literals;

constexpr int kShiftJis = 932;

struct ByteCase {
    int codePage;
    std::string_view input;
    char32_t character;
    std::string_view rest;
};

constexpr ByteCase kBytes[] = {
    {1252, "\\'e9x", U'é', "x"},
    {1252, "\xE9x", U'é', "x"},
    {1251, "\\'cfx", U'П', "x"},
    {text::kUtf8CodePage, "\\'c3\\'a9x", U'é', "x"},
    {text::kUtf8CodePage, "\\'c3\r\n\xA9x", U'é', "x"},
    {text::kUtf8CodePage, "\\'c3x", U'\uFFFD', "x"},
    {kShiftJis, "\\'93\\'fax", U'日', "x"},
    {kShiftJis, "\x93\xFAx", U'日', "x"},
    {kShiftJis, "\x93\n\\'fax", U'日', "x"},
    {kShiftJis, "\\'83\\\\x", U'ソ', "x"}, // trail byte 0x5C, escaped
    {kShiftJis, "\x83\\x", U'ソ', "x"},    // the same, raw
    {kShiftJis, "\\'93}x", U'\uFFFD', "}x"},
    {kShiftJis, "\\'93\\'20", U'\uFFFD', "\\'20"},
    {1252, "\\'0d\\'0ax", U'\n', "x"},
    {1252, "\\'0dx", U'\n', "x"},
    {1252, "\\'09x", U'\t', "x"},
};

TEST(CharacterDecoder, bytesAreDecodedByTheirCharset) {
    CharsetPool pool;
    for (const ByteCase& byteCase : kBytes) {
        Scanner scanner(byteCase.input);
        CharacterDecoder decoder(scanner, CharacterDecoder::RawBytes::byFont);
        EXPECT_EQ(decoder.takeByte(*pool.forCodePage(byteCase.codePage)), byteCase.character) << byteCase.input;
        EXPECT_EQ(scanner.rest(), byteCase.rest) << byteCase.input;
    }
}

TEST(CharacterDecoder, nothingButBytesAndHexIsTaken) {
    CharsetPool pool;
    for (const std::string_view input : {""sv, "x"sv, "\\par"sv, "\\'4"sv, "\\'xy"sv, "{"sv}) {
        Scanner scanner(input);
        CharacterDecoder decoder(scanner, CharacterDecoder::RawBytes::unknown);
        EXPECT_EQ(decoder.takeByte(*pool.forCodePage(1252)), std::nullopt) << input;
        EXPECT_EQ(scanner.rest(), input);
    }
}

struct CopyCase {
    std::string_view input;
    std::string_view copied;
    std::string_view rest;
    bool goesOn;
};

TEST(CharacterDecoder, printableBytesAreCopiedUpToTheFirstOther) {
    constexpr CopyCase kCases[] = {
        {"\\'cf\xCF\\'f0x", "ППр", "x", false},
        {"\\'cf\\'0d", "П", "\\'0d", true},
        {"\\'cf\\'zz", "П", "\\'zz", true},
        {"\\'cf\\par", "П", "\\par", false},
        {"\xCF\x98", "П", "\x98", true}, // 0x98 has no character
        {"\\'cf", "П", "", false},
    };
    CharsetPool pool;
    for (const CopyCase& copyCase : kCases) {
        Scanner scanner(copyCase.input);
        CharacterDecoder decoder(scanner, CharacterDecoder::RawBytes::byFont);
        Output output(scanner);
        EXPECT_EQ(decoder.copyBytes(*pool.forCodePage(1251), output), copyCase.goesOn) << copyCase.input;
        EXPECT_EQ(output.view(), copyCase.copied);
        EXPECT_EQ(scanner.rest(), copyCase.rest);
    }
}

TEST(CharacterDecoder, rawBytesAreUtf8WhateverTheFontIfTheWholeFileIs) {
    CharsetPool pool;
    const Charset& latin = *pool.forCodePage(1252);
    for (const bool isUtf8 : {true, false}) {
        const std::string input = isUtf8 ? "\xC3\xA9 \\bin1 \xFF" : "\xC3\xA9 \xFF";
        Scanner scanner(input);
        CharacterDecoder decoder(scanner, CharacterDecoder::RawBytes::unknown);
        EXPECT_EQ(decoder.rawIsUtf8(), isUtf8);
        EXPECT_EQ(decoder.takeByte(latin), isUtf8 ? U'é' : U'Ã');
        EXPECT_EQ(decoder.rawPairs(*pool.forCodePage(kShiftJis)) == nullptr, isUtf8);
        EXPECT_EQ(decoder.work(), input.size()); // scanned once
    }
}

TEST(CharacterDecoder, escapedBinIsText) {
    Scanner scanner("\xC3\xA9 \\\\bin1 \xFF");
    CharacterDecoder decoder(scanner, CharacterDecoder::RawBytes::unknown);
    EXPECT_FALSE(decoder.rawIsUtf8());
}

struct FallbackCase {
    unsigned length;
    std::string_view input;
    std::string_view rest;
};

TEST(CharacterDecoder, fallbackCountsBytesWordsAndSymbols) {
    constexpr FallbackCase kCases[] = {
        {0, "ab", "ab"},       {1, "ab", "b"},           {2, "a\r\nbc", "c"},       {1, "\\'e9x", "x"},
        {1, "\\'zzx", "x"},    {1, "\\~x", "x"},         {1, "\\b x", "x"},         {2, "\\bin2 {}xy", "y"},
        {1, "}", "}"},         {1, "{x}", "{x}"},        {1, "\\par x", "\\par x"}, {1, "\\u945?", "\\u945?"},
        {1, "\\\nx", "\\\nx"}, {3, "a\\tab ", "\\tab "}, {1, "\xE9x", "x"},         {5, "ab", ""},
    };
    for (const FallbackCase& fallbackCase : kCases) {
        Scanner scanner(fallbackCase.input);
        CharacterDecoder decoder(scanner, CharacterDecoder::RawBytes::byFont);
        EXPECT_EQ(decoder.skipFallback(fallbackCase.length), Scanner::Completeness::whole) << fallbackCase.input;
        EXPECT_EQ(scanner.rest(), fallbackCase.rest) << fallbackCase.input;
    }
}

TEST(CharacterDecoder, fallbackThatEndsInsideBinaryDataIsCutShort) {
    Scanner scanner("\\bin9 abc");
    CharacterDecoder decoder(scanner, CharacterDecoder::RawBytes::byFont);
    EXPECT_EQ(decoder.skipFallback(1), Scanner::Completeness::cutShort);
}

TEST(CharacterDecoder, unicodeWordsAreTakenOnlyWithTheirNumber) {
    struct Case {
        std::string_view input;
        std::optional<std::int32_t> number;
        std::string_view rest;
    };
    constexpr Case kCases[] = {
        {"\\u945 ?", 945, "?"},           {"\\u-10179?", -10179, "?"},      {"\\u?", std::nullopt, "\\u?"},
        {"\\u-x", std::nullopt, "\\u-x"}, {"\\uc1", std::nullopt, "\\uc1"}, {"u945", std::nullopt, "u945"},
    };
    for (const Case& unicodeCase : kCases) {
        Scanner scanner(unicodeCase.input);
        CharacterDecoder decoder(scanner, CharacterDecoder::RawBytes::byFont);
        EXPECT_EQ(decoder.takeUnicode(), unicodeCase.number) << unicodeCase.input;
        EXPECT_EQ(scanner.rest(), unicodeCase.rest);
    }
}

TEST(CharacterDecoder, usualUnicodeWordsAreCopiedUpToTheFirstOther) {
    constexpr CopyCase kCases[] = {
        {"\\u945?\\u946 ?\\u-10179?.....", "αβ", "\\u-10179?.....", false},
        {"\\u945?\\u8232?............", "α", "\\u8232?............", false}, // a line separator
        {"\\u945?\\u55357?...........", "α", "\\u55357?...........", false}, // half a pair
        {"\\u945\\'3f............", "", "\\u945\\'3f............", false},
        {"\\u945?\\u946?", "α", "\\u946?", false}, // too near the end
    };
    for (const CopyCase& copyCase : kCases) {
        Scanner scanner(copyCase.input);
        CharacterDecoder decoder(scanner, CharacterDecoder::RawBytes::byFont);
        Output output(scanner);
        decoder.copyUnicode(output);
        EXPECT_EQ(output.view(), copyCase.copied) << copyCase.input;
        EXPECT_EQ(scanner.rest(), copyCase.rest);
    }
}

TEST(CharacterDecoder, negativeNumbersAre16BitValues) {
    EXPECT_EQ(codePointOfUnicode(945), U'α');
    EXPECT_EQ(codePointOfUnicode(-10179), char32_t{0xD83D});
    EXPECT_EQ(codePointOfUnicode(128512), U'\U0001F600');
    EXPECT_EQ(codePointOfUnicode(0), char32_t{0});
    EXPECT_EQ(codePointOfUnicode(-65537), text::kReplacementCharacter);
    EXPECT_EQ(codePointOfUnicode(INT32_MIN), text::kReplacementCharacter);
}

} // namespace
} // namespace quillow::rtf
