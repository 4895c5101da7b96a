#include "engines/pdf/fonts/GlyphNames.h"

#include "engines/pdf/fonts/GlyphNamesTables.h"
#include "text/Unicode.h"

#include <gtest/gtest.h>

#include <string>

namespace quillow::pdf {
namespace {

struct NameCase {
    std::string_view name;
    std::u32string_view characters;
    GlyphNameTable table = GlyphNameTable::Adobe;
};

constexpr NameCase kNames[] = {
    {"A", U"A"},
    {"a", U"a"},
    {"Aacute", U"\u00C1"},
    {"space", U" "},
    {"nbspace", U"\u00A0"},
    {"nonbreakingspace", U"\u00A0"},
    {"sfthyphen", U"\u00AD"},
    {"softhyphen", U"\u00AD"},
    {"afii10017", U"\u0410"},
    {"zukatakana", U"\u30BA"},
    {"dalethatafpatah", U"\u05D3\u05B2"},
    {"Euro", U"\u20AC"},
    {"fi", U"\uFB01"},
    // Rules of the list
    {"uni0041", U"A"},
    {"uni004100420043", U"ABC"},
    {"uni20ac", U"\u20AC"},
    {"uniD83DDE00", U"\U0001F600"},
    {"uni1F600", U"\U0001F600"},
    {"u1F600", U"\U0001F600"},
    {"u0041", U"A"},
    {"u10FFFD", U""},
    {"u110000", U""},
    {"uniD800", U""},
    {"uniDC00", U""},
    {"uniE000", U""},
    {"uniFFFF", U""},
    {"uni0000", U""},
    {"uni004", U""},
    {"uni00G1", U""},
    {"uni", U""},
    {"u", U"u"},
    {"a.sc", U"a"},
    {"one.oldstyle", U"1"},
    {"uni0041.alt.2", U"A"},
    {".notdef", U""},
    {".null", U""},
    {"", U""},
    {"f_f_i", U"ffi"},
    {"T_h.liga", U"Th"},
    {"uni0061_acute", U"a\u00B4"},
    {"f_", U"f"},
    {"f_nothing", U""},
    {"_", U""},
    // No private use
    {"Asmall", U"a"},
    {"AEsmall", U"\u00E6"},
    {"zerooldstyle", U"0"},
    {"dollaroldstyle", U"$"},
    {"rupiah", U"Rp"},
    {"apple", U""},
    {"saraiileftthai", U"\u0E35"},
    {"parenlefttp", U"\u239B"},
    {"controlSTX", U""},
    // Variants
    {"Gamma1", U"\u0393"},
    {"sevensuperior", U"\u2077"},
    {"csuperior", U"c"},
    {"threefitted", U"3"},
    {"G1", U""},
    {"a1", U""},
    {"g12", U""},
    {"cid12", U""},
    {"glyph12", U""},
    // Greek instead of the signs that look like it
    {"Delta", U"\u0394"},
    {"Omega", U"\u03A9"},
    {"mu", U"\u00B5"},
    // TeX
    {"ff", U"\uFB00"},
    {"dotlessj", U"\u0237"},
    {"arrowdblright", U"\u21D2"},
    {"parenleftBigg", U"("},
    {"summationdisplay", U"\u2211"},
    {"lessorequalslant", U"\u2A7D"},
    {"mu", U"\u03BC", GlyphNameTable::Tex},
    {"phi", U"\u03D5", GlyphNameTable::Tex},
    {"phi1", U"\u03C6", GlyphNameTable::Tex},
    {"phi", U"\u03C6"},
    {"Germandbls", U"SS", GlyphNameTable::Tex},
    {"bell", U"\U0001F514", GlyphNameTable::Tex},
    {"eacute", U"\u00E9", GlyphNameTable::Tex},
    // ZapfDingbats
    {"a1", U"\u2701", GlyphNameTable::ZapfDingbats},
    {"a206", U"\u2770", GlyphNameTable::ZapfDingbats},
    {"a109", U"\u2660", GlyphNameTable::ZapfDingbats},
    {"a110", U"\u2665", GlyphNameTable::ZapfDingbats},
    {"a207", U"", GlyphNameTable::ZapfDingbats},
    {"space", U" ", GlyphNameTable::ZapfDingbats},
};

TEST(GlyphNames, namesMeanTheirCharacters) {
    for (const NameCase& c : kNames)
        EXPECT_EQ(unicodeOfGlyphName(c.name, c.table).view(), c.characters) << c.name << ' ' << int(c.table);
}

TEST(GlyphNames, charactersBeyondTheLimitAreDropped) {
    std::string name = "a";
    for (std::size_t i = 0; i < kMaxCharactersOfGlyph; ++i)
        name += "_a";
    EXPECT_EQ(unicodeOfGlyphName(name).view(), std::u32string(kMaxCharactersOfGlyph, U'a'));
}

void expectSoundList(const GlyphNameList& list, GlyphNameTable table) {
    for (std::size_t i = 0; i < list.names.count; ++i) {
        if (i > 0) {
            EXPECT_LT(list.names[i - 1], list.names[i]);
        }
        for (const char32_t c : unicodeOfGlyphName(list.names[i], table))
            EXPECT_TRUE(text::isInterchangeable(c) && c >= 0x20) << list.names[i];
    }
}

TEST(GlyphNames, listsAreSortedAndInterchangeable) {
    expectSoundList(kAdobeNames, GlyphNameTable::Adobe);
    expectSoundList(kTexNames, GlyphNameTable::Tex);
    expectSoundList(kDingbatNames, GlyphNameTable::ZapfDingbats);
}

struct NumberCase {
    std::string_view name;
    std::optional<std::uint32_t> number;
};

TEST(GlyphNames, namesWithANumberAreIndexesOfGlyphs) {
    constexpr NumberCase kCases[] = {
        {"g12", 12},
        {"g0", 0},
        {"glyph65535", 65535},
        {"glyph65536", std::nullopt},
        {"gid7", 7},
        {"index3", 3},
        {"cid123", 123},
        {"cid_123", 123},
        {"cid:123", 123},
        {"CID+5", 5},
        {"Glyph9", 9},
        {"g", std::nullopt},
        {"G12", std::nullopt},
        {"gamma", std::nullopt},
        {"glyph", std::nullopt},
        {"g1.alt", std::nullopt},
        {"cid_", std::nullopt},
        {"gg1", std::nullopt},
        {"g99999999999999999999", std::nullopt},
        {"", std::nullopt},
    };
    for (const NumberCase& c : kCases)
        EXPECT_EQ(glyphIndexOfName(c.name), c.number) << c.name;
}

TEST(GlyphNames, namesWithACodeAreCodes) {
    constexpr NumberCase kCases[] = {
        {"a65", 65},           {"C65", 65},         {"c255", 255},         {"c256", std::nullopt},
        {"G41", 0x41},         {"xFf", 0xFF},       {"x4", std::nullopt},  {"x041", std::nullopt},
        {"GG1", std::nullopt}, {"a", std::nullopt}, {"aa1", std::nullopt}, {"acute", std::nullopt},
        {"b65", std::nullopt}, {"", std::nullopt},
    };
    for (const NumberCase& c : kCases)
        EXPECT_EQ(codeOfName(c.name), c.number) << c.name;
}

} // namespace
} // namespace quillow::pdf
