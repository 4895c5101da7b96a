#include "engines/pdf/fonts/PredefinedCMaps.h"

#include "engines/pdf/fonts/PredefinedCMapsTables.h"

#include <gtest/gtest.h>

namespace quillow::pdf {
namespace {

using namespace std::string_view_literals;

// ISO 32000-2, table 116
constexpr std::string_view kStandardNames[] = {
    "GB-EUC-H",
    "GB-EUC-V",
    "GBpc-EUC-H",
    "GBpc-EUC-V",
    "GBK-EUC-H",
    "GBK-EUC-V",
    "GBKp-EUC-H",
    "GBKp-EUC-V",
    "GBK2K-H",
    "GBK2K-V",
    "UniGB-UCS2-H",
    "UniGB-UCS2-V",
    "UniGB-UTF16-H",
    "UniGB-UTF16-V",
    "B5pc-H",
    "B5pc-V",
    "HKscs-B5-H",
    "HKscs-B5-V",
    "ETen-B5-H",
    "ETen-B5-V",
    "ETenms-B5-H",
    "ETenms-B5-V",
    "CNS-EUC-H",
    "CNS-EUC-V",
    "UniCNS-UCS2-H",
    "UniCNS-UCS2-V",
    "UniCNS-UTF16-H",
    "UniCNS-UTF16-V",
    "83pv-RKSJ-H",
    "90ms-RKSJ-H",
    "90ms-RKSJ-V",
    "90msp-RKSJ-H",
    "90msp-RKSJ-V",
    "90pv-RKSJ-H",
    "Add-RKSJ-H",
    "Add-RKSJ-V",
    "EUC-H",
    "EUC-V",
    "Ext-RKSJ-H",
    "Ext-RKSJ-V",
    "H",
    "V",
    "UniJIS-UCS2-H",
    "UniJIS-UCS2-V",
    "UniJIS-UCS2-HW-H",
    "UniJIS-UCS2-HW-V",
    "UniJIS-UTF16-H",
    "UniJIS-UTF16-V",
    "KSC-EUC-H",
    "KSC-EUC-V",
    "KSCms-UHC-H",
    "KSCms-UHC-V",
    "KSCms-UHC-HW-H",
    "KSCms-UHC-HW-V",
    "KSCpc-EUC-H",
    "UniKS-UCS2-H",
    "UniKS-UCS2-V",
    "UniKS-UTF16-H",
    "UniKS-UTF16-V",
    "Identity-H",
    "Identity-V",
};

TEST(PredefinedCMaps, theStandardsNamesAreAllKnown) {
    for (const std::string_view name : kStandardNames) {
        const PredefinedCMap* cmap = predefinedCMap(name);
        ASSERT_TRUE(cmap) << name;
        EXPECT_EQ(cmap->name, name);
        EXPECT_EQ(cmap->isVertical, name.ends_with('V')) << name;
        EXPECT_FALSE(cmap->codespace.empty()) << name;
    }
}

TEST(PredefinedCMaps, otherNamesAreUnknown) {
    for (const std::string_view name :
         {""sv, "Identity"sv, "identity-h"sv, "H "sv, "Zzz"sv, "Adobe-Japan1-UCS2"sv, "GBpc-EUC-UCS2"sv})
        EXPECT_EQ(predefinedCMap(name), nullptr) << name;
}

struct CodeCase {
    std::string_view cmap;
    std::string_view code;
    std::uint32_t cid;
    std::u32string_view text;
};

constexpr CodeCase kCodes[] = {
    {"H", "\x24\x22", 843, U"\u3042"},
    {"V", "\x24\x22", 843, U"\u3042"},
    {"H", "\x21\x22", 634, U"\u3001"},
    {"V", "\x21\x22", 7887, U"\u3001"},
    {"90ms-RKSJ-H", "\x82\xA0", 843, U"\u3042"},
    {"90ms-RKSJ-V", "\x82\xA0", 843, U"\u3042"},
    {"90ms-RKSJ-H", "A", 264, U"A"},
    {"90msp-RKSJ-H", "A", 34, U"A"},
    {"90ms-RKSJ-H", "\xB1", 343, U"\uFF71"},
    {"90ms-RKSJ-H", "\x10", 231, U" "},
    {"EUC-H", "\xA4\xA2", 843, U"\u3042"},
    {"UniJIS-UCS2-H", "\x30\x42", 843, U"\u3042"},
    {"UniJIS-UTF16-H", "\x30\x42", 843, U"\u3042"},
    {"UniJIS-UTF16-H", "\xD8\x42\xDF\xB7", 13706, U"\U00020BB7"},
    {"UniJIS-UTF8-H", "\xE3\x81\x82", 843, U"\u3042"},
    {"UniJIS-UTF8-V", "\xE3\x80\x81", 7887, U"\u3001"},
    {"UniJIS-UTF32-H", "\0\0\x30\x42"sv, 843, U"\u3042"},
    {"UniJIS-UCS2-HW-H", "\0A"sv, 264, U"A"},
    {"Adobe-Japan1-2", "\x03\x4B", 843, U"\u3042"},
    {"GBK-EUC-H", "\xB0\xA1", 940, U"\u554A"},
    {"GBK2K-H", "\xB0\xA1", 940, U"\u554A"},
    {"GBK2K-H", "\x81\x39\xEF\x30", 22530, U"\u3401"},
    {"UniGB-UTF16-H", "\x55\x4A", 940, U"\u554A"},
    {"ETen-B5-H", "\xA4\x40", 595, U"\u4E00"},
    {"HKscs-B5-H", "\xA4\x40", 595, U"\u4E00"},
    {"CNS-EUC-H", "\xC4\xA1", 595, U"\u4E00"},
    {"CNS-EUC-H", "\x8E\xA2\xA1\xA1", 5996, U"\u4E42"},
    {"UniCNS-UTF16-H", "\x4E\x00"sv, 595, U"\u4E00"},
    {"KSCms-UHC-H", "\xB0\xA1", 1086, U"\uAC00"},
    {"KSC-Johab-H", "\x88\x61", 1086, U"\uAC00"},
    {"UniKS-UTF16-H", "\xAC\x00"sv, 1086, U"\uAC00"},
    {"UniAKR-UTF8-H", "\xEA\xB0\x80", 221, U"\uAC00"},
    // Codes without a CID
    {"H", "\x7E\x7E", 0, U""},
    {"H", "\x20\x20", 0, U""},
    {"UniJIS-UTF8-H", "\xC1\x81", 0, U""},
    {"UniJIS-UTF16-H", "\xFF\xFF", 0, U""},
};

CharacterCode codeOf(const PredefinedCMap& cmap, std::string_view bytes) {
    const char* p = bytes.data();
    return cmap.next(p, p + bytes.size());
}

TEST(PredefinedCMaps, codesHaveTheirCidsAndCharacters) {
    for (const CodeCase& c : kCodes) {
        const PredefinedCMap* cmap = predefinedCMap(c.cmap);
        ASSERT_TRUE(cmap) << c.cmap;
        const CharacterCode code = codeOf(*cmap, c.code);
        EXPECT_EQ(cmap->cidOf(code), c.cid) << c.cmap << ' ' << code.value;
        EXPECT_EQ(unicodeOfCid(cmap->collection, c.cid).view(), c.text) << c.cmap << ' ' << code.value;
    }
}

TEST(PredefinedCMaps, identityTakesCodesAsCids) {
    const PredefinedCMap* cmap = predefinedCMap("Identity-V");
    ASSERT_TRUE(cmap);
    EXPECT_EQ(cmap->collection, CharacterCollection::Unknown);
    EXPECT_EQ(cmap->cidOf(codeOf(*cmap, "\x12\x34")), 0x1234U);
    EXPECT_EQ(cmap->cidOf(codeOf(*cmap, "\x12")), 0U);
}

struct UnicodeCase {
    std::string_view cmap;
    std::string_view code;
    char32_t c;
};

TEST(PredefinedCMaps, codesOfUnicodesFormsAreCharacters) {
    constexpr UnicodeCase kCases[] = {
        {"UniJIS-UTF16-H", "\x30\x42", 0x3042},
        {"UniJIS-UTF16-V", "\xD8\x42\xDF\xB7", 0x20BB7},
        {"UniJIS-UTF16-H", "\xD8\x42", 0},
        {"UniJIS-UTF16-H", "\xE0\x00"sv, 0},
        {"UniGB-UCS2-H", "\x55\x4A", 0x554A},
        {"UniKS-UTF8-H", "a", 'a'},
        {"UniKS-UTF8-H", "\xC3\xA9", 0xE9},
        {"UniKS-UTF8-H", "\xEA\xB0\x80", 0xAC00},
        {"UniKS-UTF8-H", "\xF0\xA0\xAE\xB7", 0x20BB7},
        {"UniKS-UTF8-H", "\xC1\x81", 0},
        {"UniKS-UTF8-H", "\xE0\x81\x81", 0},
        {"UniKS-UTF8-H", "\xF0\x81\x81\x81", 0},
        {"UniKS-UTF8-H", "\xED\xA0\x80", 0},
        {"UniKS-UTF8-H", "\xF7\xBF\xBF\xBF", 0},
        {"UniCNS-UTF32-H", "\0\2\x0B\xB7"sv, 0x20BB7},
        {"UniCNS-UTF32-H", "\0\x11\0\0"sv, 0},
        {"90ms-RKSJ-H", "a", 0},
    };
    for (const UnicodeCase& c : kCases) {
        const PredefinedCMap* cmap = predefinedCMap(c.cmap);
        ASSERT_TRUE(cmap) << c.cmap;
        EXPECT_EQ(cmap->unicodeOf(codeOf(*cmap, c.code)), c.c) << c.cmap << ' ' << c.code;
    }
}

TEST(PredefinedCMaps, tablesAreSortedAndTheirParentsEnd) {
    constexpr int kMaxDepth = 8;
    const auto all = allPredefinedCMaps();
    for (std::size_t i = 0; i < all.size(); ++i) {
        const PredefinedCMap& cmap = all[i];
        if (i > 0) {
            EXPECT_LT(all[i - 1].name, cmap.name);
        }
        for (std::size_t k = 1; k < cmap.segments.size(); ++k)
            EXPECT_GT(cmap.segments[k].firstCode, cmap.segments[k - 1].lastCode()) << cmap.name;
        int depth = 0;
        for (const PredefinedCMap* parent = cmap.parent; parent; parent = parent->parent) {
            EXPECT_EQ(parent->collection, cmap.collection) << cmap.name;
            EXPECT_EQ(parent->isUnicode(), cmap.isUnicode()) << cmap.name;
            ASSERT_LT(++depth, kMaxDepth) << cmap.name;
        }
    }
}

} // namespace
} // namespace quillow::pdf
