#include "text/Encoding.h"

#include "text/Utf8.h"

#include <gtest/gtest.h>

#include <vector>

namespace quillow::text {
namespace {

struct EncodingLabels {
    Encoding encoding;
    std::string_view name;
    std::vector<std::string_view> labels;
};

// The whole of section 4.2 of the Encoding Standard.
const std::vector<EncodingLabels> kStandardLabels = {
    {Encoding::utf8,
     "UTF-8",
     {"unicode-1-1-utf-8", "utf-8", "utf8", "unicode11utf8", "unicode20utf8", "x-unicode20utf8"}},
    {Encoding::ibm866, "IBM866", {"866", "cp866", "csibm866", "ibm866"}},
    {Encoding::iso8859_2,
     "ISO-8859-2",
     {"csisolatin2", "iso-8859-2", "iso-ir-101", "iso8859-2", "iso88592", "iso_8859-2", "iso_8859-2:1987", "l2",
      "latin2"}},
    {Encoding::iso8859_3,
     "ISO-8859-3",
     {"csisolatin3", "iso-8859-3", "iso-ir-109", "iso8859-3", "iso88593", "iso_8859-3", "iso_8859-3:1988", "l3",
      "latin3"}},
    {Encoding::iso8859_4,
     "ISO-8859-4",
     {"csisolatin4", "iso-8859-4", "iso-ir-110", "iso8859-4", "iso88594", "iso_8859-4", "iso_8859-4:1988", "l4",
      "latin4"}},
    {Encoding::iso8859_5,
     "ISO-8859-5",
     {"csisolatincyrillic", "cyrillic", "iso-8859-5", "iso-ir-144", "iso8859-5", "iso88595", "iso_8859-5",
      "iso_8859-5:1988"}},
    {Encoding::iso8859_6,
     "ISO-8859-6",
     {"arabic", "asmo-708", "csiso88596e", "csiso88596i", "csisolatinarabic", "ecma-114", "iso-8859-6", "iso-8859-6-e",
      "iso-8859-6-i", "iso-ir-127", "iso8859-6", "iso88596", "iso_8859-6", "iso_8859-6:1987"}},
    {Encoding::iso8859_7,
     "ISO-8859-7",
     {"csisolatingreek", "ecma-118", "elot_928", "greek", "greek8", "iso-8859-7", "iso-ir-126", "iso8859-7", "iso88597",
      "iso_8859-7", "iso_8859-7:1987", "sun_eu_greek"}},
    {Encoding::iso8859_8,
     "ISO-8859-8",
     {"csiso88598e", "csisolatinhebrew", "hebrew", "iso-8859-8", "iso-8859-8-e", "iso-ir-138", "iso8859-8", "iso88598",
      "iso_8859-8", "iso_8859-8:1988", "visual"}},
    {Encoding::iso8859_8i, "ISO-8859-8-I", {"csiso88598i", "iso-8859-8-i", "logical"}},
    {Encoding::iso8859_10,
     "ISO-8859-10",
     {"csisolatin6", "iso-8859-10", "iso-ir-157", "iso8859-10", "iso885910", "l6", "latin6"}},
    {Encoding::iso8859_13, "ISO-8859-13", {"iso-8859-13", "iso8859-13", "iso885913"}},
    {Encoding::iso8859_14, "ISO-8859-14", {"iso-8859-14", "iso8859-14", "iso885914"}},
    {Encoding::iso8859_15,
     "ISO-8859-15",
     {"csisolatin9", "iso-8859-15", "iso8859-15", "iso885915", "iso_8859-15", "l9"}},
    {Encoding::iso8859_16, "ISO-8859-16", {"iso-8859-16"}},
    {Encoding::koi8R, "KOI8-R", {"cskoi8r", "koi", "koi8", "koi8-r", "koi8_r"}},
    {Encoding::koi8U, "KOI8-U", {"koi8-ru", "koi8-u"}},
    {Encoding::macintosh, "macintosh", {"csmacintosh", "mac", "macintosh", "x-mac-roman"}},
    {Encoding::windows874,
     "windows-874",
     {"dos-874", "iso-8859-11", "iso8859-11", "iso885911", "tis-620", "windows-874"}},
    {Encoding::windows1250, "windows-1250", {"cp1250", "windows-1250", "x-cp1250"}},
    {Encoding::windows1251, "windows-1251", {"cp1251", "windows-1251", "x-cp1251"}},
    {Encoding::windows1252,
     "windows-1252",
     {"ansi_x3.4-1968", "ascii", "cp1252", "cp819", "csisolatin1", "ibm819", "iso-8859-1", "iso-ir-100", "iso8859-1",
      "iso88591", "iso_8859-1", "iso_8859-1:1987", "l1", "latin1", "us-ascii", "windows-1252", "x-cp1252"}},
    {Encoding::windows1253, "windows-1253", {"cp1253", "windows-1253", "x-cp1253"}},
    {Encoding::windows1254,
     "windows-1254",
     {"cp1254", "csisolatin5", "iso-8859-9", "iso-ir-148", "iso8859-9", "iso88599", "iso_8859-9", "iso_8859-9:1989",
      "l5", "latin5", "windows-1254", "x-cp1254"}},
    {Encoding::windows1255, "windows-1255", {"cp1255", "windows-1255", "x-cp1255"}},
    {Encoding::windows1256, "windows-1256", {"cp1256", "windows-1256", "x-cp1256"}},
    {Encoding::windows1257, "windows-1257", {"cp1257", "windows-1257", "x-cp1257"}},
    {Encoding::windows1258, "windows-1258", {"cp1258", "windows-1258", "x-cp1258"}},
    {Encoding::xMacCyrillic, "x-mac-cyrillic", {"x-mac-cyrillic", "x-mac-ukrainian"}},
    {Encoding::gbk,
     "GBK",
     {"chinese", "csgb2312", "csiso58gb231280", "gb2312", "gb_2312", "gb_2312-80", "gbk", "iso-ir-58", "x-gbk"}},
    {Encoding::gb18030, "gb18030", {"gb18030"}},
    {Encoding::big5, "Big5", {"big5", "big5-hkscs", "cn-big5", "csbig5", "x-x-big5"}},
    {Encoding::eucJp, "EUC-JP", {"cseucpkdfmtjapanese", "euc-jp", "x-euc-jp"}},
    {Encoding::iso2022Jp, "ISO-2022-JP", {"csiso2022jp", "iso-2022-jp"}},
    {Encoding::shiftJis,
     "Shift_JIS",
     {"csshiftjis", "ms932", "ms_kanji", "shift-jis", "shift_jis", "sjis", "windows-31j", "x-sjis"}},
    {Encoding::eucKr,
     "EUC-KR",
     {"cseuckr", "csksc56011987", "euc-kr", "iso-ir-149", "korean", "ks_c_5601-1987", "ks_c_5601-1989", "ksc5601",
      "ksc_5601", "windows-949"}},
    {Encoding::replacement,
     "replacement",
     {"csiso2022kr", "hz-gb-2312", "iso-2022-cn", "iso-2022-cn-ext", "iso-2022-kr", "replacement"}},
    {Encoding::utf16be, "UTF-16BE", {"utf-16be", "unicodefffe"}},
    {Encoding::utf16le,
     "UTF-16LE",
     {"utf-16", "utf-16le", "csunicode", "iso-10646-ucs-2", "ucs-2", "unicode", "unicodefeff"}},
    {Encoding::xUserDefined, "x-user-defined", {"x-user-defined"}},
};

struct DecodeCase {
    Encoding encoding;
    std::string_view bytes;
    std::string_view utf8;
    std::uint64_t replacements;
};

void expectDecoded(const std::vector<DecodeCase>& cases) {
    for (const DecodeCase& c : cases) {
        const DecodedText decoded = decode(c.bytes, c.encoding);
        EXPECT_EQ(decoded.utf8, c.utf8) << encodingName(c.encoding) << ' ' << testing::PrintToString(c.bytes);
        EXPECT_EQ(decoded.replacements, c.replacements)
            << encodingName(c.encoding) << ' ' << testing::PrintToString(c.bytes);
    }
}

TEST(EncodingLabels, everyLabelOfTheStandardNamesItsEncoding) {
    std::size_t count = 0;
    for (const EncodingLabels& entry : kStandardLabels) {
        EXPECT_EQ(encodingName(entry.encoding), entry.name);
        for (const std::string_view label : entry.labels) {
            EXPECT_EQ(encodingForLabel(label), entry.encoding) << label;
            ++count;
        }
    }
    EXPECT_EQ(count, 228U);
    EXPECT_EQ(kStandardLabels.size(), 40U);
}

TEST(EncodingLabels, caseAndSurroundingWhiteSpaceDoNotMatter) {
    EXPECT_EQ(encodingForLabel(" \t\n\f\rUtF-8 \n"), Encoding::utf8);
    EXPECT_EQ(encodingForLabel(" utf-8 "), Encoding::utf8);
    EXPECT_EQ(encodingForLabel("SHIFT_JIS"), Encoding::shiftJis);
    EXPECT_EQ(encodingForLabel("CSEUCPKDFMTJAPANESE"), Encoding::eucJp);
}

TEST(EncodingLabels, otherLabelsNameNothing) {
    for (const std::string_view label : {"", " ", "utf 8", "utf-7", "utf-32", "\vutf-8", "utf-8\xC2\xA0", "iso-8859-1x",
                                         "windows-1259", "cseucpkdfmtjapanesex"})
        EXPECT_EQ(encodingForLabel(label), std::nullopt) << label;
}

TEST(ByteOrderMark, threeMarksAreTold) {
    const auto utf8 = byteOrderMark("\xEF\xBB\xBFx");
    ASSERT_TRUE(utf8);
    EXPECT_EQ(utf8->encoding, Encoding::utf8);
    EXPECT_EQ(utf8->length, 3U);
    EXPECT_EQ(byteOrderMark("\xFE\xFF")->encoding, Encoding::utf16be);
    EXPECT_EQ(byteOrderMark("\xFF\xFEx")->encoding, Encoding::utf16le);
    EXPECT_EQ(byteOrderMark("\xFF\xFEx")->length, 2U);
}

TEST(ByteOrderMark, partsOfMarksAreNone) {
    for (const std::string_view bytes : {"", "\xEF", "\xEF\xBB", "\xFE", "\xFF", "x\xFE\xFF"})
        EXPECT_FALSE(byteOrderMark(bytes)) << testing::PrintToString(bytes);
}

TEST(Decode, utf8MaximalSubpartsAreOneErrorEach) {
    expectDecoded({
        {Encoding::utf8, {}, "", 0},
        {Encoding::shiftJis, {}, "", 0},
        {Encoding::windows1252, {}, "", 0},
        {Encoding::utf16le, {}, "", 0},
        {Encoding::utf8, "aé漢😀", "aé漢😀", 0},
        {Encoding::utf8, "\xEF\xBB\xBFx", "\uFEFFx", 0},
        {Encoding::utf8, "a\x80z", "a\uFFFDz", 1},
        {Encoding::utf8, "\xC0\x80", "\uFFFD\uFFFD", 2},
        {Encoding::utf8, "\xC2", "\uFFFD", 1},
        {Encoding::utf8, "\xE2\x82x", "\uFFFDx", 1},
        {Encoding::utf8, "\xE0\x80\x80", "\uFFFD\uFFFD\uFFFD", 3},
        {Encoding::utf8, "\xED\xA0\x80", "\uFFFD\uFFFD\uFFFD", 3},
        {Encoding::utf8, "\xF0\x9F\x98", "\uFFFD", 1},
        {Encoding::utf8, "\xF4\x90\x80\x80", "\uFFFD\uFFFD\uFFFD\uFFFD", 4},
        {Encoding::utf8, "\xF8\xFF", "\uFFFD\uFFFD", 2},
        {Encoding::utf8, "\xF1\x80\x80\xE1\x80\xC3", "\uFFFD\uFFFD\uFFFD", 3},
    });
}

TEST(Decode, singleByteEncodingsFollowTheirIndex) {
    expectDecoded({
        {Encoding::ibm866, "\x8F\xE0", "Пр", 0},
        {Encoding::iso8859_2, "\xB1\x80", "ą\u0080", 0},
        {Encoding::iso8859_3, "\xA1\xA5", "Ħ\uFFFD", 1},
        {Encoding::iso8859_4, "\xA2", "ĸ", 0},
        {Encoding::iso8859_5, "\xBF\xE0", "Пр", 0},
        {Encoding::iso8859_6, "\xC7\xA1", "ا\uFFFD", 1},
        {Encoding::iso8859_7, "\xC1\xA4\xAE", "Α€\uFFFD", 1},
        {Encoding::iso8859_8, "\xE0\xA1", "א\uFFFD", 1},
        {Encoding::iso8859_8i, "\xE0\xFD", "א\u200E", 0},
        {Encoding::iso8859_10, "\xBD", "―", 0},
        {Encoding::iso8859_13, "\xE0", "ą", 0},
        {Encoding::iso8859_14, "\xA1", "Ḃ", 0},
        {Encoding::iso8859_15, "\xA4", "€", 0},
        {Encoding::iso8859_16, "\xAA", "Ș", 0},
        {Encoding::koi8R, "\xF0\xD2\xAE", "Пр╝", 0},
        {Encoding::koi8U, "\xA4\xAE", "єў", 0},
        {Encoding::macintosh, "\x8E\xF0", "é\uF8FF", 0},
        {Encoding::windows874, "\xA1\xDB", "ก\uFFFD", 1},
        {Encoding::windows1250, "\x8C\x81", "Ś\u0081", 0},
        {Encoding::windows1251, "\xCF\xF0", "Пр", 0},
        {Encoding::windows1252, "\x80\x81\xE9", "€\u0081é", 0},
        {Encoding::windows1253, "\xC1\xAA", "Α\uFFFD", 1},
        {Encoding::windows1254, "\xFD", "ı", 0},
        {Encoding::windows1255, "\xE0\xCA\xD9", "א\u05BA\uFFFD", 1},
        {Encoding::windows1256, "\xC7", "ا", 0},
        {Encoding::windows1257, "\xE0\xA1", "ą\uFFFD", 1},
        {Encoding::windows1258, "\xCC", "\u0300", 0},
        {Encoding::xMacCyrillic, "\x80\xFF", "А€", 0},
        {Encoding::windows1252, std::string_view("\0a\x7F", 3), std::string_view("\0a\x7F", 3), 0},
    });
}

TEST(Decode, gb18030HasPairsQuadruplesAndTheStandardsErrors) {
    expectDecoded({
        {Encoding::gb18030, "\xD6\xD0\xCE\xC4", "中文", 0},
        {Encoding::gbk, "\x80", "€", 0},
        {Encoding::gb18030, "\xA6\xD9\xFE\x59", "\uFE10\u9FB4", 0},
        {Encoding::gb18030, "\x81\x30\x81\x30", "\u0080", 0},
        {Encoding::gb18030, "\x81\x35\xF4\x37", "\uE7C7", 0},
        {Encoding::gb18030, "\x90\x30\x81\x30", "𐀀", 0},
        {Encoding::gb18030, "\x94\x39\xDA\x33", "💩", 0},
        {Encoding::gbk, "\xE3\x32\x9A\x35", "\U0010FFFF", 0},
        {Encoding::gb18030, "\xE3\x32\x9A\x36", "\uFFFD", 1},
        {Encoding::gb18030, "\x84\x31\xA4\x3A", "\uFFFD1\uFFFD:", 2},
        {Encoding::gb18030, "\x84\x31\xA4\x40", "\uFFFD1\uE5E6", 1},
        {Encoding::gb18030, "\x81", "\uFFFD", 1},
        {Encoding::gb18030, "\x81\x30", "\uFFFD", 1},
        {Encoding::gb18030, "\x81\x30\x81", "\uFFFD", 1},
        {Encoding::gb18030, "\x81\x30zz", "\uFFFD0zz", 1},
        {Encoding::gb18030, "\xFFx", "\uFFFDx", 1},
        {Encoding::gb18030, "\xFF\xD6\xD0", "\uFFFD中", 1},
        {Encoding::gb18030, "\x81\x7F", "\uFFFD\x7F", 1},
        {Encoding::gb18030, "\x81\xFFx", "\uFFFDx", 1},
    });
}

TEST(Decode, big5HasTheHongKongCharactersAndFourCompounds) {
    expectDecoded({
        {Encoding::big5, "\xA4\xA4\xA4\xE5", "中文", 0},
        {Encoding::big5, "\x88\x62\x88\x64\x88\xA3\x88\xA5", "Ê̄Ê̌ê̄ê̌", 0},
        {Encoding::big5, "\x87\x45", "𧉧", 0},
        {Encoding::big5, "\xC6\xA1", "①", 0},
        {Encoding::big5, "\x81\x40", "\uFFFD@", 1},
        {Encoding::big5, "\xA4\x80x", "\uFFFDx", 1},
        {Encoding::big5, "\x80\xFFx", "\uFFFD\uFFFDx", 2},
        {Encoding::big5, "\xA4", "\uFFFD", 1},
        {Encoding::big5, "\xA4\x0A", "\uFFFD\n", 1},
    });
}

TEST(Decode, eucJpHasThreeSets) {
    expectDecoded({
        {Encoding::eucJp, "\xC6\xFC\xCB\xDC", "日本", 0},
        {Encoding::eucJp, "\x8E\xB1", "ｱ", 0},
        {Encoding::eucJp, "\x8F\xB0\xA1", "丂", 0},
        {Encoding::eucJp, "\x8F\xA2\xB7", "～", 0},
        {Encoding::eucJp, "\xAD\xA1", "①", 0},
        {Encoding::eucJp, "\x8E\xE0x", "\uFFFDx", 1},
        {Encoding::eucJp, "\x8Ex", "\uFFFDx", 1},
        {Encoding::eucJp, "\x8F", "\uFFFD", 1},
        {Encoding::eucJp, "\x8F\xB0", "\uFFFD", 1},
        {Encoding::eucJp, "\x8F\xB0x", "\uFFFDx", 1},
        {Encoding::eucJp, "\x8F\xA1\xA1x", "\uFFFDx", 1},
        {Encoding::eucJp, "\xC6", "\uFFFD", 1},
        {Encoding::eucJp, "\xC6<", "\uFFFD<", 1},
        {Encoding::eucJp, "\xC6\x8Ex", "\uFFFDx", 1},
        {Encoding::eucJp, "\x80\xA0\xFF", "\uFFFD\uFFFD\uFFFD", 3},
    });
}

TEST(Decode, shiftJisHasHalfwidthKatakanaAndUserDefinedRows) {
    expectDecoded({
        {Encoding::shiftJis, "\x93\xFA\x96\x7B", "日本", 0},
        {Encoding::shiftJis, "\x83\x5C\xB1", "ソｱ", 0},
        {Encoding::shiftJis, "\xF0\x40\xF9\xFC", "\uE000\uE757", 0},
        {Encoding::shiftJis, "\x80", "\u0080", 0},
        {Encoding::shiftJis, "\xFA\x40", "ⅰ", 0},
        {Encoding::shiftJis, "\xA0\xFD\xFE\xFF", "\uFFFD\uFFFD\uFFFD\uFFFD", 4},
        {Encoding::shiftJis, "\x82", "\uFFFD", 1},
        {Encoding::shiftJis, "\x82\"", "\uFFFD\"", 1},
        {Encoding::shiftJis, "\x85\x40", "\uFFFD@", 1},
        {Encoding::shiftJis, "\x85\x80x", "\uFFFDx", 1},
    });
}

TEST(Decode, eucKrIsTheUnifiedHangulCode) {
    expectDecoded({
        {Encoding::eucKr, "\xC7\xD1\xB1\xDB", "한글", 0},
        {Encoding::eucKr, "\x81\x41", "갂", 0},
        {Encoding::eucKr, "\xC7\x41", "\uFFFDA", 1},
        {Encoding::eucKr, "\x80\xFFx", "\uFFFD\uFFFDx", 2},
        {Encoding::eucKr, "\xC7", "\uFFFD", 1},
        {Encoding::eucKr, "\xC7\xFFx", "\uFFFDx", 1},
    });
}

TEST(Decode, iso2022JpFollowsItsEscapeSequences) {
    expectDecoded({
        {Encoding::iso2022Jp, "a\x1B$BF|K\\\x1B(Bz", "a日本z", 0},
        {Encoding::iso2022Jp, "\x1B$@F|\x1B(J\\~\x1B(B\\~", "日¥‾\\~", 0},
        {Encoding::iso2022Jp, "\x1B(I1", "ｱ", 0},
        {Encoding::iso2022Jp, "\x1B(I`", "\uFFFD", 1},
        {Encoding::iso2022Jp, "\x0E\x0F\x80", "\uFFFD\uFFFD\uFFFD", 3},
        {Encoding::iso2022Jp, "\x1B$B0\xA1\x1B(Bz", "\uFFFDz", 1},
        {Encoding::iso2022Jp, "\x1B", "\uFFFD", 1},
        {Encoding::iso2022Jp, "\x1B$", "\uFFFD$", 1},
        {Encoding::iso2022Jp, "\x1B(Xa", "\uFFFD(Xa", 1},
        {Encoding::iso2022Jp, "\x1B$B\x1B(Bx", "\uFFFDx", 1},
        {Encoding::iso2022Jp, "\x1B$BF", "\uFFFD", 1},
        {Encoding::iso2022Jp, "\x1B$BF\x1B(Bx", "\uFFFDx", 1},
        {Encoding::iso2022Jp, "\x1B$BF\nF|", "\uFFFD日", 1},
        {Encoding::iso2022Jp, "\x1B$B\nF|", "\uFFFD日", 1},
        {Encoding::iso2022Jp, "\x1B$B~~", "\uFFFD", 1},
    });
}

TEST(Decode, utf16PairsSurrogatesAndReplacesLoneOnes) {
    expectDecoded({
        {Encoding::utf16le, std::string_view("a\0\x3D\xD8\x00\xDE", 6), "a😀", 0},
        {Encoding::utf16be, std::string_view("\0a\xD8\x3D\xDE\x00", 6), "a😀", 0},
        {Encoding::utf16le,
         std::string_view("\x3D\xD8"
                          "a\0",
                          4),
         "\uFFFDa", 1},
        {Encoding::utf16le,
         std::string_view("\x00\xDE"
                          "a\0",
                          4),
         "\uFFFDa", 1},
        {Encoding::utf16le, std::string_view("\x3D\xD8\x3D\xD8\x00\xDE", 6), "\uFFFD😀", 1},
        {Encoding::utf16le, "\x3D\xD8", "\uFFFD", 1},
        {Encoding::utf16le, "\x3D\xD8x", "\uFFFD", 1},
        {Encoding::utf16be, std::string_view("\0ab", 3), "a\uFFFD", 1},
    });
}

TEST(Decode, replacementIsOneErrorAndUserDefinedIsPrivate) {
    expectDecoded({
        {Encoding::replacement, "abc\xFF", "\uFFFD", 1},
        {Encoding::replacement, "", "", 0},
        {Encoding::xUserDefined, "a\x80\xFF", "a\uF780\uF7FF", 0},
    });
}

TEST(Decode, longInputsPassTheBuffersEdgesWhole) {
    for (const EncodingLabels& entry : kStandardLabels) {
        if (entry.encoding == Encoding::replacement) continue;
        // A piece of three bytes or units, so that the buffer's edge falls on each of them. It must decode as it
        // does alone.
        const std::string piece = entry.encoding == Encoding::utf16be || entry.encoding == Encoding::utf16le
                                      ? std::string("\x4E\x2D\x30\x42\x41\x42", 6)
                                      : std::string("a\xC3\xA9");
        const DecodedText one = decode(piece, entry.encoding);
        std::string bytes;
        std::string expected;
        for (int i = 0; i < 5000; ++i) {
            bytes += piece;
            expected += one.utf8;
        }
        const DecodedText whole = decode(bytes, entry.encoding);
        EXPECT_TRUE(whole.utf8 == expected) << entry.name;
        EXPECT_EQ(whole.replacements, 5000 * one.replacements) << entry.name;
    }
}

TEST(Decode, everyPairOfBytesGivesWellFormedTextWithinBounds) {
    for (const EncodingLabels& entry : kStandardLabels) {
        const bool singleByte = entry.encoding >= Encoding::ibm866 && entry.encoding <= Encoding::xMacCyrillic;
        if (singleByte && entry.encoding != Encoding::windows1253) continue; // one table-driven encoding is enough
        for (unsigned first = 0; first < 0x100; ++first) {
            for (unsigned second = 0; second < 0x100; ++second) {
                const char bytes[] = {static_cast<char>(first), static_cast<char>(second)};
                const DecodedText decoded = decode({bytes, 2}, entry.encoding);
                ASSERT_TRUE(isValidUtf8(decoded.utf8)) << entry.name << ' ' << first << ' ' << second;
                ASSERT_LE(decoded.utf8.size(), 6U) << entry.name << ' ' << first << ' ' << second;
            }
        }
    }
}

} // namespace
} // namespace quillow::text
