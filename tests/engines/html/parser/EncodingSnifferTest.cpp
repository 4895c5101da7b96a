#include "engines/html/parser/EncodingSniffer.h"

#include <gtest/gtest.h>

#include <string>

namespace quillow::html {
namespace {

using text::Encoding;

struct PrescanCase {
    const char* bytes;
    std::optional<Encoding> encoding;
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

} // namespace
} // namespace quillow::html
