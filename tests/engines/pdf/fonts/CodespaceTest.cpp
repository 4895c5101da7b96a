#include "engines/pdf/fonts/Codespace.h"

#include <gtest/gtest.h>

#include <string_view>
#include <vector>

namespace quillow::pdf {
namespace {

using Codes = std::vector<CharacterCode>;

Codes codesOf(std::span<const CodespaceRange> ranges, std::string_view bytes) {
    Codes codes;
    const char* p = bytes.data();
    const char* const end = p + bytes.size();
    while (p < end)
        codes.push_back(nextCode(ranges, p, end));
    EXPECT_EQ(p, end);
    return codes;
}

constexpr CodespaceRange kShiftJis[] = {{0x00, 0x80, 1}, {0x8140, 0x9FFC, 2}, {0xA0, 0xDF, 1}, {0xE040, 0xFCFC, 2}};
constexpr CodespaceRange kEuc[] = {{0x00, 0x80, 1}, {0x8EA1A1A1, 0x8EA1FEFE, 4}, {0xA1A1, 0xFEFE, 2}};
constexpr CodespaceRange kTwoBytes[] = {{0x0000, 0xFFFF, 2}};

struct CodespaceCase {
    std::string_view what;
    std::span<const CodespaceRange> ranges;
    std::string_view bytes;
    Codes codes;
};

using namespace std::string_view_literals;

const CodespaceCase kCases[] = {
    {"two bytes", kTwoBytes, "\0A\x12\xFF"sv, {{0x41, 2, true}, {0x12FF, 2, true}}},
    {"one and two bytes", kShiftJis, "A\x82\xA0\xB1"sv, {{0x41, 1, true}, {0x82A0, 2, true}, {0xB1, 1, true}}},
    {"four bytes", kEuc, "\x8E\xA1\xA1\xA2z"sv, {{0x8EA1A1A2, 4, true}, {0x7A, 1, true}}},
    {"a wrong second byte is consumed with its lead", kShiftJis, "\x82\x10z"sv, {{0x8210, 2, false}, {0x7A, 1, true}}},
    {"each byte has limits of its own", kEuc, "\xA2\x40\xA2\xA1"sv, {{0xA240, 2, false}, {0xA2A1, 2, true}}},
    {"a wrong third byte of four", kEuc, "\x8E\xA1\x41\x42z"sv, {{0x8EA14142, 4, false}, {0x7A, 1, true}}},
    {"a first byte of no range takes the shortest code", kShiftJis, "\xFDz"sv, {{0xFD, 1, false}, {0x7A, 1, true}}},
    {"a code is cut", kTwoBytes, "\x12"sv, {{0x12, 1, false}}},
    {"a code of four is cut", kEuc, "\x8E\xA1\xA1"sv, {{0x8EA1A1, 3, false}}},
    {"without ranges codes are bytes", {}, "ab"sv, {{0x61, 1, false}, {0x62, 1, false}}},
};

TEST(Codespace, stringsAreCutIntoCodes) {
    for (const CodespaceCase& c : kCases) {
        const Codes codes = codesOf(c.ranges, c.bytes);
        ASSERT_EQ(codes.size(), c.codes.size()) << c.what;
        for (std::size_t i = 0; i < codes.size(); ++i) {
            EXPECT_EQ(codes[i].value, c.codes[i].value) << c.what;
            EXPECT_EQ(codes[i].bytes, c.codes[i].bytes) << c.what;
            EXPECT_EQ(codes[i].isInCodespace, c.codes[i].isInCodespace) << c.what;
        }
    }
}

TEST(Codespace, rangesOfImpossibleLengthAreIgnored) {
    constexpr CodespaceRange kRanges[] = {{0, 0xFF, 0}, {0, 0xFF, 5}, {0x00, 0xFF, 1}};
    EXPECT_EQ(codesOf(kRanges, "ab").size(), 2U);
}

} // namespace
} // namespace quillow::pdf
