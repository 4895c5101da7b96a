#include "engines/html/parser/EncodingSniffer.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace quillow::html {
namespace {

using text::Encoding;

struct PrescanCase {
    const char* bytes;
    std::optional<Encoding> encoding;
    friend void PrintTo(const PrescanCase& prescanCase, std::ostream* out) {
        *out << testing::PrintToString(prescanCase.bytes);
    }
};

class Prescan : public testing::TestWithParam<PrescanCase> {};

TEST_P(Prescan, findsTheDeclaration) {
    EXPECT_EQ(prescanEncoding(GetParam().bytes), GetParam().encoding) << GetParam().bytes;
}

const PrescanCase kPrescans[] = {
    {"<meta charset=windows-1251>", Encoding::windows1251},
    {"<META CHARSET = 'Shift_JIS' >", Encoding::shiftJis},
    {"<meta/charset=koi8-r/>", std::nullopt},
    {"<meta charset='koi8-r'/>", Encoding::koi8R},
    {"<meta http-equiv=Content-Type content='text/html; charset=iso-8859-2'>", Encoding::iso8859_2},
    {"<meta content='text/html; charset=\"iso-8859-2\"' http-equiv=content-type>", Encoding::iso8859_2},
    {"<meta content='text/html; charset=iso-8859-2'>", std::nullopt},
    {"<!-- <meta charset=koi8-r> --><meta charset=big5>", Encoding::big5},
    {"<!--><meta charset=big5>", Encoding::big5},
    {"<p title='<meta charset=koi8-r>'><meta charset=big5>", Encoding::big5},
    {"<!doctype x><?x?></ x><meta charset=big5>", Encoding::big5},
    {"<meta charset=utf-16>", Encoding::utf8},
    {"<meta charset=x-user-defined>", Encoding::windows1252},
    {"<meta charset=nonsense><meta charset=euc-kr>", Encoding::eucKr},
    {"<metal charset=big5>", std::nullopt},
    {"<meta charset=big5", std::nullopt},
    {"", std::nullopt},
};
INSTANTIATE_TEST_SUITE_P(Declarations, Prescan, testing::ValuesIn(kPrescans));

class XmlDeclaration : public testing::TestWithParam<PrescanCase> {};

TEST_P(XmlDeclaration, namesItsEncoding) {
    EXPECT_EQ(xmlEncoding(GetParam().bytes), GetParam().encoding) << GetParam().bytes;
}

const PrescanCase kXmlDeclarations[] = {
    {"<?xml version=\"1.0\" encoding=\"windows-1250\"?>", Encoding::windows1250},
    {"<?xml version='1.0' encoding = 'KOI8-R' standalone='no'?>", Encoding::koi8R},
    {"<?xml encoding=\"koi8-r\">", Encoding::koi8R},
    {"<?xml encoding='utf-16'?>", Encoding::utf8},
    {"<?xml encoding='utf-16be'?>", Encoding::utf8},
    {"<?xml encoding=koi8-r?>", std::nullopt},
    {"<?xml encoding=' koi8-r'?>", std::nullopt},
    {"<?xml encoding='koi8-r?>'", std::nullopt},
    {"<?xml encoding 'koi8-r'?>", std::nullopt},
    {"<?xml encoding='nonsense'?>", std::nullopt},
    {"<?xml encoding=", std::nullopt},
    {"<?xml encoding='koi8-r'", std::nullopt},
    {"<?xml?><p encoding='koi8-r'>", std::nullopt},
    {" <?xml encoding='koi8-r'?>", std::nullopt},
    {"<?XML encoding='koi8-r'?>", std::nullopt},
    {"", std::nullopt},
};
INSTANTIATE_TEST_SUITE_P(Declarations, XmlDeclaration, testing::ValuesIn(kXmlDeclarations));

TEST(ContentType, isSearchedForACharset) {
    EXPECT_EQ(encodingFromContentType("text/html; CharSet = euc-jp ; x"), Encoding::eucJp);
    EXPECT_EQ(encodingFromContentType("charset charset=big5"), Encoding::big5);
    EXPECT_EQ(encodingFromContentType("charset='big5"), std::nullopt);
    EXPECT_EQ(encodingFromContentType("charset="), std::nullopt);
}

TEST(EncodingSniffer, aByteOrderMarkBeatsEverything) {
    const SniffedEncoding sniffed = sniffEncoding("\xEF\xBB\xBF<meta charset=big5>\xE4");
    EXPECT_EQ(sniffed.encoding, Encoding::utf8);
    EXPECT_EQ(sniffed.byteOrderMarkLength, 3U);
}

TEST(EncodingSniffer, multiByteUtf8BeatsALegacyLabel) {
    EXPECT_EQ(sniffEncoding("<meta charset=iso-8859-1>\xC3\xA4").encoding, Encoding::utf8);
    EXPECT_EQ(sniffEncoding("<meta charset=iso-8859-1>\xE4").encoding, Encoding::windows1252);
}

TEST(EncodingSniffer, aLateDeclarationIsBelieved) {
    const std::string late = "<p>" + std::string(5000, 'x') + "</p><meta charset=windows-1251>\xCF";
    EXPECT_EQ(sniffEncoding(late).encoding, Encoding::windows1251);
}

TEST(EncodingSniffer, aDeclaredUtf8StaysUtf8WithBadBytes) {
    EXPECT_EQ(sniffEncoding("<meta charset=utf-8>\xC3\xA4 \xE4").encoding, Encoding::utf8);
}

TEST(EncodingSniffer, utf16WithoutAMarkShowsInItsZeros) {
    EXPECT_EQ(sniffEncoding(std::string_view("<\0p\0>\0a\0b\0c\0", 12)).encoding, Encoding::utf16le);
    EXPECT_EQ(sniffEncoding(std::string_view("\0<\0p\0>\0a\0b\0c", 12)).encoding, Encoding::utf16be);
}

TEST(EncodingSniffer, anXmlDeclarationIsBelieved) {
    EXPECT_EQ(sniffEncoding("<?xml version='1.0' encoding='windows-1250'?><p>\xE8").encoding, Encoding::windows1250);
    EXPECT_EQ(sniffEncoding("<?xml encoding='windows-1250'?>\xC4\x8D").encoding, Encoding::utf8);
    EXPECT_EQ(sniffEncoding("\xEF\xBB\xBF<?xml encoding='windows-1250'?>\xE8").encoding, Encoding::utf8);
}

TEST(EncodingSniffer, anXmlDeclarationStandsBehindAnEarlyMetaAndBeforeALateOne) {
    const std::string declaration = "<?xml encoding='koi8-r'?>";
    const std::string meta = "<meta charset=big5>\xA4\xA4";
    EXPECT_EQ(sniffEncoding(declaration + meta).encoding, Encoding::big5);
    EXPECT_EQ(sniffEncoding(declaration + std::string(kPrescanBytes, ' ') + meta).encoding, Encoding::koi8R);
}

TEST(EncodingSniffer, anXmlDeclarationInUtf16IsUtf16) {
    // Chinese after it: hardly any byte is zero.
    std::string little("<\0?\0x\0m\0l\0?\0>\0", 14);
    std::string big("\0<\0?\0x\0m\0l\0?\0>", 14);
    for (int i = 0; i < 100; ++i) {
        little += "\x2D\x4E";
        big += "\x4E\x2D";
    }
    EXPECT_EQ(sniffEncoding(little).encoding, Encoding::utf16le);
    EXPECT_EQ(sniffEncoding(big).encoding, Encoding::utf16be);
}

} // namespace
} // namespace quillow::html
