#include "engines/pdf/fonts/fontfiles/CharacterMap.h"

#include "tests/engines/pdf/fonts/fontfiles/FontBuilders.h"

#include <gtest/gtest.h>

#include <ostream>

namespace quillow::pdf {
namespace {

using namespace build;

using Mapping = std::pair<std::uint32_t, unsigned>; // code and glyph
using Mappings = std::vector<Mapping>;

Mappings mappingsOf(const std::string& bytes, std::uint32_t glyphCount = 0xFFFF) {
    Mappings mappings;
    CharacterMap(bytes).forEach(glyphCount, [&](GlyphIndex glyph, char32_t code) {
        mappings.push_back({code, glyph});
    });
    return mappings;
}

struct Case {
    std::string_view name;
    std::string bytes;
    Mappings mappings;
    std::vector<std::uint32_t> unmapped;
};

std::ostream& operator<<(std::ostream& out, const Case& test) {
    return out << test.name;
}

class PdfCharacterMap : public testing::TestWithParam<Case> {};

TEST_P(PdfCharacterMap, codesHaveTheirGlyphs) {
    const CharacterMap map(GetParam().bytes);
    for (const auto& [code, glyph] : GetParam().mappings)
        EXPECT_EQ(map.glyphOf(code), glyph) << code;
    for (const std::uint32_t code : GetParam().unmapped)
        EXPECT_EQ(map.glyphOf(code), 0) << code;
}

TEST_P(PdfCharacterMap, everyCodeWithAGlyphIsVisited) {
    EXPECT_EQ(mappingsOf(GetParam().bytes), GetParam().mappings);
}

INSTANTIATE_TEST_SUITE_P(
    Formats, PdfCharacterMap,
    testing::Values(Case{"format 0", format0(std::string_view("\0\0\7", 3)), {{2, 7}}, {0, 1, 3, 256}},
                    Case{"format 4, ranges",
                         format4({{65, 67, 1}, {97, 98, 9}}),
                         {{65, 1}, {66, 2}, {67, 3}, {97, 9}, {98, 10}},
                         {64, 68, 99, 0xFFFF}},
                    Case{"format 4, array", format4WithArray(65, {5, 0, 4}), {{65, 5}, {67, 4}}, {66, 68}},
                    Case{"format 4, array and delta", format4WithArray(65, {5, 0, 4}, 10), {{65, 15}, {67, 14}}, {66}},
                    Case{"format 6", format6(0x20, {3, 0, 4}), {{0x20, 3}, {0x22, 4}}, {0x1F, 0x21, 0x23}},
                    Case{"format 6 without codes", format6(0, {}), {}, {0, 1}},
                    Case{"format 10", format10(0x1F600, {3, 4}), {{0x1F600, 3}, {0x1F601, 4}}, {0xF600, 0x1F602}},
                    Case{"format 12",
                         format12({{65, 66, 1}, {0x20000, 0x20001, 8}}),
                         {{65, 1}, {66, 2}, {0x20000, 8}, {0x20001, 9}},
                         {64, 67, 0x20002}},
                    Case{"format 14", u16(14) + u32(10) + u32(0), {}, {0, 65}},
                    Case{"unknown format", u16(5) + std::string(300, '\1'), {}, {0, 65}},
                    Case{"no bytes", "", {}, {0}}));

INSTANTIATE_TEST_SUITE_P(
    Damages, PdfCharacterMap,
    testing::Values(
        Case{"format 0, cut", format0("\1\2\3").substr(0, 8), {{0, 1}, {1, 2}}, {2, 255}},
        Case{"format 4 with more segments than bytes",
             u16s({4, 0, 0, 0xFFFE, 0, 0, 0}) + u16s({66, 0, 65, 0xFFFF, 0}),
             {},
             {65}},
        Case{"format 4, cut in the range offsets", format4({{65, 66, 1}}).substr(0, 28), {{65, 1}, {66, 2}}, {67}},
        Case{"format 4, cut in the differences",
             format4({{65, 66, 1}, {70, 70, 3}}).substr(0, 30),
             {{65, 1}, {66, 2}},
             {70}},
        Case{"format 4 with an array beyond the end", format4WithArray(65, {5, 6}).substr(0, 34), {{65, 5}}, {66}},
        Case{"format 6, cut", format6(0x20, {3, 4, 5}).substr(0, 14), {{0x20, 3}, {0x21, 4}}, {0x22}},
        Case{"format 10 with more codes than bytes",
             u16s({10, 0}) + u32(0) + u32(0) + u32(65) + u32(0xFFFFFFFF) + u16(7),
             {{65, 7}},
             {66}},
        Case{"format 12 with more groups than bytes",
             format12({{65, 65, 3}}).replace(12, 4, u32(0x7FFFFFFF)),
             {{65, 3}},
             {66}},
        Case{"format 12, a group twice", format12({{65, 65, 3}, {65, 65, 3}}), {{65, 3}}, {66}},
        Case{"format 12 with glyphs of over 16 bits", format12({{65, 65, 0x10003}}), {}, {65}}));

TEST(PdfCharacterMapFormat2, codesHaveOneByteOrTwo) {
    // High byte 0x81 has the second sub-header; all others have the first, for codes of one byte.
    std::string keys(512, '\0');
    keys.replace(0x81 * 2, 2, u16(8));
    const std::string singles = u16s({0x41, 2, 0, 10}); // 0x41 and 0x42; the array is behind both sub-headers
    const std::string pairs = u16s({0x40, 2, 100, 6});  // 0x8140 and 0x8141
    const std::string bytes = u16s({2, 0, 0}) + keys + singles + pairs + u16s({7, 8}) + u16s({1, 0});
    const CharacterMap map(bytes);
    EXPECT_EQ(map.glyphOf(0x41), 7);
    EXPECT_EQ(map.glyphOf(0x42), 8);
    EXPECT_EQ(map.glyphOf(0x43), 0);
    EXPECT_EQ(map.glyphOf(0x81), 0);
    EXPECT_EQ(map.glyphOf(0x8140), 101);
    EXPECT_EQ(map.glyphOf(0x8141), 0);
    EXPECT_EQ(map.glyphOf(0x8142), 0);
    EXPECT_EQ(map.glyphOf(0x10000), 0);
}

TEST(PdfCharacterMapFormat4, deltaIsModulo65536) {
    EXPECT_EQ(CharacterMap(format4({{0xF020, 0xF021, 3}})).glyphOf(0xF021), 4);
}

TEST(PdfCharacterMapFormat4, rangeOffsetOfAllOnesMeansNoGlyphs) {
    std::string bytes = format4WithArray(65, {5, 6});
    bytes.replace(bytes.size() - 8, 2, u16(0xFFFF));
    EXPECT_EQ(CharacterMap(bytes).glyphOf(65), 0);
}

TEST(PdfCharacterMapFormat13, allCodesOfAGroupHaveOneGlyphAndTheFirstIsVisited) {
    const std::string bytes = format12({{65, 0x10FFFF, 3}}, 13);
    EXPECT_EQ(CharacterMap(bytes).glyphOf(65), 3);
    EXPECT_EQ(CharacterMap(bytes).glyphOf(0x10FFFF), 3);
    EXPECT_EQ(mappingsOf(bytes), (Mappings{{65, 3}}));
}

TEST(PdfCharacterMap, visitsNoGlyphThatTheFontLacks) {
    EXPECT_EQ(mappingsOf(format4({{65, 70, 1}}), 3), (Mappings{{65, 1}, {66, 2}}));
    EXPECT_EQ(mappingsOf(format12({{65, 0x10FFFF, 1}}), 3), (Mappings{{65, 1}, {66, 2}}));
    EXPECT_EQ(mappingsOf(format6(65, {1, 3, 2}), 3), (Mappings{{65, 1}, {67, 2}}));
}

TEST(PdfCharacterMap, visitsNoCodeTwice) {
    // Every segment is for all codes and would alone cost 60,000 visits.
    constexpr std::size_t kSegments = 5000;
    std::size_t visits = 0;
    CharacterMap(format4(CodeRanges(kSegments, CodeRange{0, 0xFFFE, 1}))).forEach(0xFFFF, [&](GlyphIndex, char32_t) {
        ++visits;
    });
    EXPECT_LE(visits, 0xFFFFU);
    EXPECT_GT(visits, 0U);
}

} // namespace
} // namespace quillow::pdf
