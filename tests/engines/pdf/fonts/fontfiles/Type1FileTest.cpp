#include "engines/pdf/fonts/fontfiles/Type1File.h"

#include "tests/engines/pdf/fonts/fontfiles/FontBuilders.h"

#include <gtest/gtest.h>

#include <ostream>

namespace quillow::pdf {
namespace {

using namespace build;
using namespace std::string_literals;

constexpr std::string_view kOwnEncoding =
    "/Encoding 256 array\n0 1 255 {1 index exch /.notdef put} for\ndup 65 /A put\ndup 66/own put\nreadonly def";

/// A charstring that sets a width.
std::string hsbw(int width) {
    return "\x8B\xFF" + u32(static_cast<std::uint64_t>(width)) + "\x0D\x0E";
}

std::vector<Type1Glyph> glyphs() {
    return {{".notdef", hsbw(250)}, {"A", hsbw(600)}, {"own", hsbw(700)}};
}

struct EncodingCase {
    std::string_view encoding;
    unsigned code;
    std::string_view name;
    friend void PrintTo(const EncodingCase& encodingCase, std::ostream* out) { *out << encodingCase.encoding; }
};

class PdfType1Encodings : public testing::TestWithParam<EncodingCase> {};

TEST_P(PdfType1Encodings, codeHasItsName) {
    const std::string bytes = type1(GetParam().encoding, glyphs());
    Type1File font(bytes);
    EXPECT_EQ(font.nameOfCode(static_cast<std::uint8_t>(GetParam().code)), GetParam().name) << GetParam().encoding;
}

INSTANTIATE_TEST_SUITE_P(
    Forms, PdfType1Encodings,
    testing::Values(
        EncodingCase{kOwnEncoding, 65, "A"}, EncodingCase{kOwnEncoding, 66, "own"}, EncodingCase{kOwnEncoding, 67, ""},
        EncodingCase{"/Encoding StandardEncoding def", 0xAE, "fi"},
        EncodingCase{"/Encoding StandardEncoding def", 0, ""},
        EncodingCase{"/Encoding 256 array dup 8#101 /octal put dup 16#42 /hex put def", 65, "octal"},
        EncodingCase{"/Encoding 256 array dup 8#101 /octal put dup 16#42 /hex put def", 66, "hex"},
        EncodingCase{"/Encoding 256 array dup 8#109 /bad put dup 99#1 /bad put dup 65 /good put def", 65, "good"},
        EncodingCase{"/Encoding 256 array dup 256 /far put dup -1 /before put dup 0 /first put def", 0, "first"},
        EncodingCase{"/Encoding 256 array dup 99999999999 /far put dup 65 /A put def", 65, "A"},
        EncodingCase{"/Encoding[/zero/one/.notdef/three]def", 1, "one"},
        EncodingCase{"/Encoding[/zero/one/.notdef/three]def", 2, ""},
        EncodingCase{"/Encoding[/zero/one/.notdef/three]def", 3, "three"},
        EncodingCase{"/Encoding 256 array % dup 65 /no put\ndup 65 /yes put def", 65, "yes"},
        EncodingCase{"/Encoding 256 array dup 65 /A put def dup 65 /late put", 65, "A"},
        EncodingCase{"/Encoding 256 array dup 65 /A put", 65, "A"},
        EncodingCase{"/EncodingScheme /None def /Encoding 256 array dup 65 /A put def", 65, "A"},
        EncodingCase{"/Encoding 256 array dup 65 /A put def /Encoding 9 array dup 65 /B put def", 65, "B"},
        EncodingCase{"/Encoding 256 array dup 65 /A put def /Encoding 256 array def", 65, "A"},
        EncodingCase{"/Encoding OtherEncoding def", 65, ""}, EncodingCase{"/Encoding", 65, ""},
        EncodingCase{"", 65, ""}));

TEST(PdfType1File, readsNoMoreEncodingsThanItsLimit) {
    constexpr int kMostEncodings = 8;
    std::string encodings = "/Encoding [/last] def";
    for (int i = 1; i < kMostEncodings; ++i)
        encodings.insert(0, "/Encoding [/before] def ");
    const std::string most = type1Clear(encodings);
    const std::string more = type1Clear("/Encoding [/first] def " + encodings);
    EXPECT_EQ(Type1File(most).nameOfCode(0), "last");
    EXPECT_EQ(Type1File(more).nameOfCode(0), "before");
}

TEST(PdfType1File, codeHasTheGlyphOfItsName) {
    const std::string bytes = type1(kOwnEncoding, glyphs());
    Type1File font(bytes);
    EXPECT_EQ(font.glyphCount(), 3U);
    EXPECT_EQ(font.glyphOfCode(65), 1);
    EXPECT_EQ(font.glyphOfCode(66), 2);
    EXPECT_EQ(font.glyphOfCode(67), 0);
    EXPECT_EQ(font.nameOfGlyph(0), ".notdef");
    EXPECT_EQ(font.nameOfGlyph(2), "own");
    EXPECT_EQ(font.nameOfGlyph(3), "");
    EXPECT_EQ(font.glyphOfName("own"), 2);
    EXPECT_EQ(font.glyphOfName(".notdef"), 0);
    EXPECT_EQ(font.glyphOfCid(2), 2);
    EXPECT_FALSE(font.isCidKeyed());
}

TEST(PdfType1File, codeMayNameAGlyphThatTheFontLacks) {
    const std::string bytes = type1("/Encoding StandardEncoding def", glyphs());
    Type1File font(bytes);
    EXPECT_EQ(font.nameOfCode('B'), "B");
    EXPECT_EQ(font.glyphOfCode('B'), 0);
}

TEST(PdfType1File, notdefIsGlyph0WhereverItComes) {
    const std::string bytes = type1(kOwnEncoding, {{"A", hsbw(600)}, {".notdef", hsbw(250)}});
    Type1File font(bytes);
    EXPECT_EQ(font.glyphCount(), 2U);
    EXPECT_EQ(font.glyphOfName("A"), 1);
    EXPECT_EQ(font.width(0), 0.25F);
    EXPECT_EQ(font.width(1), 0.6F);
}

struct ContainerCase {
    std::string_view name;
    std::string bytes;
    friend void PrintTo(const ContainerCase& containerCase, std::ostream* out) { *out << containerCase.name; }
};

class PdfType1Containers : public testing::TestWithParam<ContainerCase> {};

TEST_P(PdfType1Containers, glyphsAndWidthsAreFound) {
    ASSERT_TRUE(Type1File::isOne(GetParam().bytes)) << GetParam().name;
    Type1File font(GetParam().bytes);
    EXPECT_EQ(font.nameOfCode(66), "own") << GetParam().name;
    EXPECT_EQ(font.glyphOfCode(66), 2) << GetParam().name;
    EXPECT_EQ(font.width(2), 0.7F) << GetParam().name;
}

const std::string kClear = type1Clear(kOwnEncoding);
const std::string kPrivate = type1Private(glyphs());
INSTANTIATE_TEST_SUITE_P(
    Kinds, PdfType1Containers,
    testing::Values(ContainerCase{"binary", kClear + type1Encrypted(kPrivate)},
                    ContainerCase{"hexadecimal", kClear + hexadecimal(type1Encrypted(kPrivate)) + "\n0000"},
                    ContainerCase{"segments", segment(1, kClear) + segment(2, type1Encrypted(kPrivate)) +
                                                  segment(1, "cleartomark") + "\x80\x03"},
                    ContainerCase{"several binary segments", segment(1, kClear) +
                                                                 segment(2, type1Encrypted(kPrivate).substr(0, 50)) +
                                                                 segment(2, type1Encrypted(kPrivate).substr(50))},
                    ContainerCase{"a segment longer than the file",
                                  segment(1, kClear) + "\x80\x02" + "\xFF\xFF\xFF\x7F" + type1Encrypted(kPrivate)},
                    ContainerCase{"a segment without header", segment(1, kClear) + type1Encrypted(kPrivate)},
                    ContainerCase{"line end of two bytes",
                                  kClear.substr(0, kClear.size() - 1) + "\r\n" + type1Encrypted(kPrivate)},
                    ContainerCase{"junk in front", std::string(100, '\n') + kClear + type1Encrypted(kPrivate)},
                    ContainerCase{"no header comment", kClear.substr(kClear.find('\n')) + type1Encrypted(kPrivate)},
                    ContainerCase{"the word in a procedure before",
                                  "%!PS /x {currentfile eexec } def\n" + kClear + type1Encrypted(kPrivate)},
                    ContainerCase{"nothing encrypted", kClear.substr(0, kClear.find("currentfile")) + kPrivate},
                    ContainerCase{"nothing encrypted but the word", kClear + kPrivate},
                    ContainerCase{"encoding encrypted",
                                  type1Clear("") + type1Encrypted(std::string(kOwnEncoding) + "\n" + kPrivate)},
                    ContainerCase{"no random bytes", kClear + type1Encrypted(type1Private(glyphs(), 0))},
                    ContainerCase{"charstrings not encrypted", kClear + type1Encrypted(type1Private(glyphs(), -1))}));

TEST(PdfType1File, bytesOfAnotherKindAreNone) {
    EXPECT_FALSE(Type1File::isOne(""));
    EXPECT_FALSE(Type1File::isOne("Arial"));
    EXPECT_TRUE(Type1File::isOne(std::string(1020, ' ') + "%!PS"));
    EXPECT_FALSE(Type1File::isOne(std::string(1021, ' ') + "%!PS"));
    EXPECT_FALSE(Type1File::isOne(std::string(std::size_t{1} << 16, ' ') + "eexec"));
    Type1File font("");
    EXPECT_EQ(font.glyphCount(), 1U);
    EXPECT_EQ(font.nameOfCode(65), "");
    EXPECT_EQ(font.width(0), std::nullopt);
    EXPECT_EQ(font.ascent(), std::nullopt);
}

TEST(PdfType1File, encryptedPartIsFoundAtTheFourthPlaceAtMost) {
    constexpr int kMostStarts = 4;
    std::string bytes = kClear + type1Encrypted(kPrivate);
    for (int i = 1; i < kMostStarts; ++i)
        bytes.insert(0, "% eexec\n");
    EXPECT_EQ(Type1File(bytes).glyphCount(), 3U);
    EXPECT_EQ(Type1File("% eexec\n" + bytes).glyphCount(), 1U);
}

TEST(PdfType1File, everyCutIsReadAsFarAsItGoes) {
    const std::string bytes = kClear + type1Encrypted(kPrivate);
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        Type1File font(std::string_view(bytes).substr(0, size));
        const std::string_view name = font.nameOfCode(65);
        EXPECT_EQ(name, std::string_view("A").substr(0, name.size()));
        EXPECT_LE(font.glyphCount(), 3U);
    }
}

TEST(PdfType1File, charstringLongerThanTheFontEndsTheGlyphs) {
    const std::string bytes =
        kClear + type1Encrypted("/CharStrings 3 dict dup begin /A 4 RD 1234 ND /B 999 RD 12 ND /C 1 RD x");
    Type1File font(bytes);
    EXPECT_EQ(font.glyphOfName("A"), 1);
    EXPECT_EQ(font.glyphOfName("C"), 0);
    EXPECT_EQ(font.width(1), std::nullopt);
}

TEST(PdfType1File, readsNoMoreGlyphsThanItsLimit) {
    constexpr std::size_t kMostGlyphs = 0xFFFF; // with ".notdef"
    std::string bytes = "%!PS /CharStrings 70000 dict dup begin ";
    for (std::size_t i = 1; i < kMostGlyphs; ++i)
        bytes += "/g 0 RD  ND ";
    EXPECT_EQ(Type1File(bytes + "/last 0 RD  ND end").glyphCount(), kMostGlyphs);
    EXPECT_EQ(Type1File(bytes.substr(0, bytes.size() - 12) + "/last 0 RD  ND end").glyphOfName("last"),
              kMostGlyphs - 1);
}

TEST(PdfType1File, namesOfMoreThan127BytesAreNone) {
    const std::string longest(127, 'a');
    const std::string longer(128, 'b');
    const std::string bytes = type1("/Encoding [/" + longest + "/" + longer + "] def", {{longest, ""}, {longer, ""}});
    Type1File font(bytes);
    EXPECT_EQ(font.nameOfCode(0), longest);
    EXPECT_EQ(font.nameOfCode(1), "");
    EXPECT_EQ(font.glyphOfName(longest), 1);
    EXPECT_EQ(font.glyphCount(), 2U);
}

struct WidthCase {
    std::string_view name;
    std::string charstring;
    std::optional<float> width;
    friend void PrintTo(const WidthCase& widthCase, std::ostream* out) { *out << widthCase.name; }
};

class PdfType1Widths : public testing::TestWithParam<WidthCase> {};

TEST_P(PdfType1Widths, firstOperatorSetsTheWidth) {
    const std::string bytes = type1(kOwnEncoding, {{"A", GetParam().charstring}});
    EXPECT_EQ(Type1File(bytes).width(1), GetParam().width) << GetParam().name;
}

INSTANTIATE_TEST_SUITE_P(Charstrings, PdfType1Widths,
                         testing::Values(WidthCase{"hsbw", "\x8B\xEF\x0D", 0.1F},
                                         WidthCase{"two bytes", "\x8B\xFA\x7C\x0D", 1.0F},
                                         WidthCase{"two bytes, negative", "\x8B\xFE\x7C\x0D", -1.0F},
                                         WidthCase{"sbw", "\x8B\x8B\xEF\x8B\x0C\x07", 0.1F},
                                         WidthCase{"quotient", "\x8B\xFA\x7C\x8D\x0C\x0C\x0D", 0.5F},
                                         WidthCase{"quotient of nothing", "\x8B\x0C\x0C\x0D", std::nullopt},
                                         WidthCase{"quotient by 0", "\x8B\xEF\x8B\x0C\x0C\x0D", std::nullopt},
                                         WidthCase{"operand missing", "\x8B\x0D", std::nullopt},
                                         WidthCase{"another operator", "\x8B\xEF\x15", std::nullopt},
                                         WidthCase{"empty", "", std::nullopt},
                                         WidthCase{"senseless", "\x8B\xFF\x7F\xFF\xFF\xFF\x0D", std::nullopt},
                                         WidthCase{"too many operands", std::string(40, '\x8B') + "\x0D", std::nullopt},
                                         WidthCase{"too late", std::string(64, '\x8B') + "\x0D", std::nullopt}));

TEST(PdfType1File, matrixAndBoxAreScaled) {
    const std::string bytes = type1(kOwnEncoding, glyphs());
    EXPECT_EQ(Type1File(bytes).ascent(), 0.8F);
    EXPECT_EQ(Type1File(bytes).descent(), -0.2F);
    std::string half = bytes;
    half.replace(half.find("0.001"), 5, "5e-4 ");
    EXPECT_EQ(Type1File(half).width(2), 0.35F);
    std::string none = bytes;
    none.replace(none.find("/FontMatrix"), 11, "/FontMetric");
    EXPECT_EQ(Type1File(none).width(2), 0.7F);
}

} // namespace
} // namespace quillow::pdf
