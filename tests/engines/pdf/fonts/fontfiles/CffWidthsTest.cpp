#include "engines/pdf/fonts/fontfiles/CffFile.h"
#include "tests/engines/pdf/fonts/fontfiles/FontBuilders.h"

#include <gtest/gtest.h>

#include <ostream>

namespace quillow::pdf {
namespace {

using namespace build;
using namespace std::string_literals;

/// A font whose glyphs have the width 500, or 600 and a difference.
Cff fontWith(const std::string& charstring) {
    Cff font;
    font.charStrings = {"\x0E", charstring};
    font.privateDict = cffInteger(500) + "\x14" + cffInteger(600) + "\x15";
    return font;
}

std::optional<float> widthOf(const Cff& font) {
    const std::string bytes = cff(font);
    return CffFile(bytes).width(1);
}

const std::string kTwo = charstringNumber(20) + charstringNumber(30);
constexpr auto kNumber = charstringNumber;

struct WidthCase {
    std::string_view name;
    std::string charstring;
    std::optional<float> width;
    friend void PrintTo(const WidthCase& widthCase, std::ostream* out) { *out << widthCase.name; }
};

class PdfCffWidths : public testing::TestWithParam<WidthCase> {};

TEST_P(PdfCffWidths, oneOperandTooManyIsTheWidth) {
    EXPECT_EQ(widthOf(fontWith(GetParam().charstring)), GetParam().width) << GetParam().name;
}

INSTANTIATE_TEST_SUITE_P(
    Operators, PdfCffWidths,
    testing::Values(
        WidthCase{"endchar", "\x0E", 0.5F}, WidthCase{"endchar with width", kNumber(-50) + "\x0E", 0.55F},
        WidthCase{"accented character", kTwo + kTwo + "\x0E", 0.5F},
        WidthCase{"accented character with width", kNumber(9) + kTwo + kTwo + "\x0E", 0.609F},
        WidthCase{"rmoveto", kTwo + "\x15", 0.5F}, WidthCase{"rmoveto with width", kNumber(9) + kTwo + "\x15", 0.609F},
        WidthCase{"hmoveto", kNumber(1) + "\x16", 0.5F}, WidthCase{"hmoveto with width", kTwo + "\x16", 0.62F},
        WidthCase{"vmoveto", kNumber(1) + "\x04", 0.5F}, WidthCase{"vmoveto with width", kTwo + "\x04", 0.62F},
        WidthCase{"hstem", kTwo + "\x01", 0.5F}, WidthCase{"hstem with width", kNumber(9) + kTwo + "\x01", 0.609F},
        WidthCase{"vstemhm", kTwo + kTwo + "\x17", 0.5F}, WidthCase{"hintmask", "\x13\x80", 0.5F},
        WidthCase{"hintmask with width", kNumber(9) + "\x13\x80", 0.609F},
        WidthCase{"numbers of one byte", "\x9F\x0E", 0.62F}, WidthCase{"of two bytes", "\xF7\x01\x0E", 0.709F},
        WidthCase{"of two bytes, negative", "\xFB\x01\x0E", 0.491F},
        WidthCase{"fixed-point", "\xFF"s + u32(0x00148000) + "\x0E", 0.6205F},
        WidthCase{"a curve first", kTwo + kTwo + kTwo + "\x08", std::nullopt},
        WidthCase{"arithmetic first", kTwo + "\x0C\x0A\x0E", std::nullopt},
        WidthCase{"no operator", kTwo, std::nullopt}, WidthCase{"nothing", "", std::nullopt},
        WidthCase{"return from no subroutine", "\x0B\x0E", std::nullopt},
        WidthCase{"subroutine without number", "\x0A\x0E", std::nullopt},
        WidthCase{"subroutine that is not there", kNumber(0) + "\x0A\x0E", std::nullopt}));

TEST(PdfCffWidths, subroutinesAreFollowed) {
    // Numbers count from -107.
    Cff font = fontWith(kNumber(9) + kNumber(-107) + "\x0A" + "\x0E");
    font.subroutines = {kTwo + kNumber(-106) + "\x1D\x0B"};
    font.globalSubroutines = {"", "\x0B"};
    EXPECT_EQ(widthOf(font), 0.5F); // the three operands before endchar are no width
    font.globalSubroutines[1] = "\x15";
    EXPECT_EQ(widthOf(font), 0.609F);
    font.globalSubroutines[1] = "";
    font.charStrings[1] = kNumber(9) + kNumber(-107) + "\x0A" + "\x15";
    EXPECT_EQ(widthOf(font), 0.609F); // without "return"
}

TEST(PdfCffWidths, subroutinesCallOneAnotherUpToTheLimit) {
    constexpr int kMostCalls = 10;
    Cff font = fontWith(kNumber(9) + kNumber(-107) + "\x0A");
    for (int i = 1; i < kMostCalls; ++i)
        font.subroutines.push_back(kNumber(i - 107) + "\x0A");
    font.subroutines.push_back("\x0E");
    EXPECT_EQ(widthOf(font), 0.609F);
    font.subroutines.back() = kNumber(kMostCalls - 107) + "\x0A";
    font.subroutines.push_back("\x0E");
    EXPECT_EQ(widthOf(font), std::nullopt);
    font.subroutines = {kNumber(-107) + "\x0A"}; // itself
    EXPECT_EQ(widthOf(font), std::nullopt);
}

TEST(PdfCffWidths, beginningEndsAtTheLimitOfSteps) {
    constexpr std::size_t kMostSteps = 1000;
    // Returns at once, again and again; each call is three steps: number, call, return.
    Cff font = fontWith("");
    font.subroutines = {"\x0B"};
    std::string calls;
    while (calls.size() < kMostSteps) // 500 calls
        calls += "\x20\x0A";          // -107
    font.charStrings[1] = calls + "\x0E";
    EXPECT_EQ(widthOf(font), std::nullopt);
    font.charStrings[1] = calls.substr(0, 600) + "\x0E"; // 300 calls, 900 steps
    EXPECT_EQ(widthOf(font), 0.5F);
}

TEST(PdfCffWidths, operandsBeyondTheLimitAreDropped) {
    constexpr std::size_t kMostOperands = 48;
    EXPECT_EQ(widthOf(fontWith(std::string(kMostOperands - 1, '\x95') + "\x01")), 0.61F);
    EXPECT_EQ(widthOf(fontWith(std::string(kMostOperands + 1, '\x95') + "\x01")), 0.5F);
}

TEST(PdfCffWidths, matrixGivesTheScale) {
    Cff font = fontWith("\x0E");
    font.topDict = "\x1E\xA0\x00\x5F\x8B\x8B\x1E\xA0\x00\x5F\x8B\x8B\x0C\x07"s; // 0.0005
    EXPECT_EQ(widthOf(font), 0.25F);
}

TEST(PdfCffWidths, senselessWidthsAreUnknown) {
    Cff font = fontWith("\x0E");
    font.privateDict = cffInteger(0x7FFFFFFF) + "\x14";
    EXPECT_EQ(widthOf(font), std::nullopt);
    font.topDict = "\x1E"s + std::string(200, '\x99') + "\x1B\x99\x9F\x0C\x07"; // an infinite scale
    font.privateDict = cffInteger(500) + "\x14";
    EXPECT_EQ(widthOf(font), std::nullopt);
}

/// Three glyphs of a CID-keyed font in two parts, whose matrices differ.
Cff cidFont(const std::string& select) {
    Cff font = fontWith("\x0E");
    font.charStrings = emptyCharStrings(3);
    font.strings = {"Adobe", "Identity"};
    font.isCidKeyed = true;
    font.fontDicts = {"", "\x1E\xA0\x02\xFF"s + "\x8B\x8B" + "\x1E\xA0\x02\xFF"s + "\x8B\x8B" + "\x0C\x07"}; // 0.002
    font.fontDictSelect = select;
    return font;
}

std::vector<std::optional<float>> widthsOf(const Cff& cffFont) {
    const std::string bytes = cff(cffFont);
    CffFile font(bytes);
    return {font.width(0), font.width(1), font.width(2)};
}

using Widths = std::vector<std::optional<float>>;

TEST(PdfCffWidths, partOfACidKeyedFontHasItsOwnMatrix) {
    EXPECT_EQ(widthsOf(cidFont("\0\0\0\1"s)), (Widths{0.5F, 0.5F, 1.0F}));
    EXPECT_EQ(widthsOf(cidFont(u8(3) + u16(2) + u16(0) + u8(0) + u16(1) + u8(1) + u16(3))), (Widths{0.5F, 1.0F, 1.0F}));
    EXPECT_EQ(widthsOf(cidFont("\0\0\2\xFF"s)), (Widths{0.5F, std::nullopt, std::nullopt}));
}

TEST(PdfCffWidths, matricesOfFontAndPartAreMultiplied) {
    Cff font = cidFont("\0\0\0\1"s);
    font.topDict = "\x1E\xA5\xFF\x8B\x8B\x1E\xA5\xFF\x8B\x8B\x0C\x07"s; // 0.5
    EXPECT_EQ(widthsOf(font)[2], 0.5F);
}

} // namespace
} // namespace quillow::pdf
