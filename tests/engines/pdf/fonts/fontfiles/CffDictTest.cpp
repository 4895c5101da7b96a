#include "engines/pdf/fonts/fontfiles/CffDict.h"

#include "engines/pdf/fonts/fontfiles/CffIndex.h"
#include "tests/engines/pdf/fonts/fontfiles/FontBuilders.h"

#include <gtest/gtest.h>

#include <ostream>

namespace quillow::pdf {
namespace {

using namespace build;

struct OperandCase {
    std::string bytes;
    double value;
    friend void PrintTo(const OperandCase& operandCase, std::ostream* out) {
        *out << testing::PrintToString(operandCase.bytes);
    }
};

class PdfCffDictOperands : public testing::TestWithParam<OperandCase> {};

TEST_P(PdfCffDictOperands, operandHasItsValue) {
    const std::string bytes = GetParam().bytes + "\x0F";
    CffDictReader dict(bytes);
    ASSERT_TRUE(dict.next());
    EXPECT_EQ(dict.operation(), CffOperator::charset);
    EXPECT_EQ(dict.operandCount(), 1U);
    EXPECT_DOUBLE_EQ(dict.operand(0), GetParam().value);
    EXPECT_EQ(dict.operand(1), 0);
}

// The examples of Technical Note 5176, table 4 and 5, and the ends of the ranges.
INSTANTIATE_TEST_SUITE_P(
    Numbers, PdfCffDictOperands,
    testing::Values(OperandCase{"\x8B", 0}, OperandCase{"\xEF", 100}, OperandCase{"\x27", -100},
                    OperandCase{"\x20", -107}, OperandCase{"\xF6", 107}, OperandCase{"\xFA\x7C", 1000},
                    OperandCase{"\xFE\x7C", -1000}, OperandCase{std::string("\xF7\0", 2), 108},
                    OperandCase{std::string("\xFB\0", 2), -108}, OperandCase{"\x1C\x27\x10", 10000},
                    OperandCase{"\x1C\xD8\xF0", -10000}, OperandCase{std::string("\x1D\0\1\x86\xA0", 5), 100000},
                    OperandCase{"\x1D\xFF\xFE\x79\x60", -100000}, OperandCase{"\x1E\xE2\xA2\x5F", -2.25},
                    OperandCase{"\x1E\x0A\x14\x05\x41\xC3\xFF", 0.140541e-3}, OperandCase{"\x1E\x1B\x2F", 100},
                    OperandCase{"\x1E\x5F", 5}, OperandCase{"\x1E\xD5\xFF", 5},            // a reserved half byte
                    OperandCase{"\x1E\x1B\x99\x9F", 1e30},                                 // the largest exponent
                    OperandCase{"\x1E\xA3" + std::string(20, '\x33') + "\xFF", 1.0 / 3})); // more decimals than count

TEST(PdfCffDict, operatorsOfTwoBytesAreTheirOwn) {
    const std::string bytes = cffInteger(7) + "\x0C\x1E" + "\x11";
    CffDictReader dict(bytes);
    ASSERT_TRUE(dict.next());
    EXPECT_EQ(dict.operation(), CffOperator::registryOrderingSupplement);
    EXPECT_EQ(dict.operand(0), 7);
    ASSERT_TRUE(dict.next());
    EXPECT_EQ(dict.operation(), CffOperator::charStrings);
    EXPECT_EQ(dict.operandCount(), 0U);
    EXPECT_FALSE(dict.next());
}

TEST(PdfCffDict, operandsWithoutOperatorAreNoEntry) {
    const std::string bytes = cffInteger(7);
    EXPECT_FALSE(CffDictReader(bytes).next());
    EXPECT_FALSE(CffDictReader("").next());
    EXPECT_FALSE(CffDictReader("\x1E\x12").next()); // a real number without end
}

TEST(PdfCffDict, operandsBeyondTheLimitAreDropped) {
    constexpr std::size_t kMostOperands = 48;
    std::string bytes(kMostOperands + 1, '\x8C');
    bytes.back() = '\x8D';
    bytes += "\x0F";
    CffDictReader dict(bytes);
    ASSERT_TRUE(dict.next());
    EXPECT_EQ(dict.operandCount(), kMostOperands);
    EXPECT_EQ(dict.operand(kMostOperands - 1), 1);
}

TEST(PdfCffDict, operandsThatAreNoOffsetsAreZero) {
    const std::string digits(40, '\x99'); // far beyond any offset
    const std::string bytes = cffInteger(-1) + "\x1E\x1A\x5F" + "\x1E" + digits + "\xFF" + cffInteger(9) + "\x12";
    CffDictReader dict(bytes);
    ASSERT_TRUE(dict.next());
    EXPECT_EQ(dict.offset(0), 0U);
    EXPECT_EQ(dict.offset(1), 1U); // 1.5
    EXPECT_EQ(dict.offset(2), 0U);
    EXPECT_EQ(dict.offset(3), 9U);
    EXPECT_EQ(dict.offset(4), 0U);
}

CffIndex indexOf(std::string_view bytes) {
    text::ByteCursor cursor(bytes);
    return CffIndex(cursor);
}

TEST(PdfCffIndex, hasItsElementsAndEndsBehindThem) {
    const std::string bytes = cffIndex({"one", "", "three"}) + "rest";
    text::ByteCursor cursor(bytes);
    const CffIndex index(cursor);
    EXPECT_EQ(index.count(), 3U);
    EXPECT_EQ(index[0], "one");
    EXPECT_EQ(index[1], "");
    EXPECT_EQ(index[2], "three");
    EXPECT_EQ(index[3], "");
    EXPECT_EQ(cursor.take(4), "rest");
}

TEST(PdfCffIndex, withoutElementsIsTwoBytes) {
    const std::string bytes = cffIndex({}) + "rest";
    text::ByteCursor cursor(bytes);
    EXPECT_EQ(CffIndex(cursor).count(), 0U);
    EXPECT_EQ(cursor.take(4), "rest");
}

TEST(PdfCffIndex, damagedElementsAreEmpty) {
    EXPECT_EQ(indexOf(u16(1) + u8(5) + "\1\2data").count(), 0U);                    // offsets of five bytes
    EXPECT_EQ(indexOf(u16(1) + u8(0) + "\1\2data").count(), 0U);                    // of none
    EXPECT_EQ(indexOf(u16(2) + u8(1) + std::string("\1\5\3") + "data")[1], "");     // backwards
    EXPECT_EQ(indexOf(u16(2) + u8(1) + std::string("\1\3\x7F") + "data")[1], "ta"); // beyond the end
    EXPECT_EQ(indexOf(u16(1) + u8(1) + std::string("\0\3", 2) + "data")[0], "da");  // an offset of 0
    EXPECT_EQ(indexOf(u16(0xFFFF) + u8(1) + std::string("\1\1\1")).count(), 2U);    // more than there are bytes
}

} // namespace
} // namespace quillow::pdf
