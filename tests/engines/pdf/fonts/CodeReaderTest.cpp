#include "engines/pdf/fonts/CodeReader.h"

#include <gtest/gtest.h>

#include <string_view>
#include <vector>

namespace quillow::pdf {
namespace {

std::vector<std::uint32_t> codesOf(const CodeReader& reader, std::string_view bytes) {
    std::vector<std::uint32_t> codes;
    const char* p = bytes.data();
    const char* const end = p + bytes.size();
    while (p != end)
        codes.push_back(reader.next(p, end));
    return codes;
}

using Codes = std::vector<std::uint32_t>;

TEST(CodeReader, readsTwoBytesWithoutRanges) {
    EXPECT_EQ(codesOf(CodeReader(), "AB\xFF\x01"), (Codes{0x4142, 0xFF01}));
}

TEST(CodeReader, codeThatTheEndCutsHasTheBytesThatAreThere) {
    EXPECT_EQ(codesOf(CodeReader(), "ABC"), (Codes{0x4142, 0x43}));
}

TEST(CodeReader, firstByteSaysHowLongCodesAre) {
    const std::vector<CodespaceRange> ranges{{0x00, 0x80, 1}, {0x8140, 0x9FFC, 2}, {0xA0, 0xDF, 1}};
    EXPECT_EQ(codesOf(CodeReader(ranges), "A\x81\x40\xA0"), (Codes{0x41, 0x8140, 0xA0}));
}

TEST(CodeReader, furtherBytesDecideIfTheFirstDoesNot) {
    const std::vector<CodespaceRange> ranges{{0x8140, 0xFEFE, 2}, {0x81308130, 0xFE39FE39, 4}};
    EXPECT_EQ(codesOf(CodeReader(ranges), "\x81\x40\x81\x30\x81\x31"), (Codes{0x8140, 0x81308131}));
}

TEST(CodeReader, knowsSingleBytes) {
    const std::vector<CodespaceRange> ranges{{0x00, 0x80, 1}, {0x8140, 0x9FFC, 2}};
    EXPECT_TRUE(CodeReader(ranges).isSingleByte(' '));
    EXPECT_FALSE(CodeReader(ranges).isSingleByte(0x81));
    EXPECT_FALSE(CodeReader().isSingleByte(' '));
}

} // namespace
} // namespace quillow::pdf
