#include "engines/pdf/crypt/PasswordBytes.h"

#include <gtest/gtest.h>

namespace quillow::pdf {
namespace {

TEST(PasswordBytes, charactersOfTheEncodingAreOneByte) {
    struct Case {
        const char* utf8;
        const char* bytes;
    };
    const Case cases[] = {
        {"", ""},      {"user 1!~", "user 1!~"},     {"Zürich", "Z\xFCrich"}, {"ÿ¡", "\xFF\xA1"},
        {"€", "\xA0"}, {"•žœ†", "\x80\x9E\x9C\x81"}, {"˘˜", "\x18\x1F"},      {"\t", "\t"},
    };
    for (const Case& each : cases)
        EXPECT_EQ(pdfDocBytes(each.utf8), each.bytes) << each.utf8;
}

TEST(PasswordBytes, otherCharactersHaveNoBytes) {
    for (const char* utf8 : {"пароль", "a\u00A0", "a\u00AD", "\u0080", "\x7F", "\x18", "a\xFF", "中"})
        EXPECT_EQ(pdfDocBytes(utf8), std::nullopt) << utf8;
}

} // namespace
} // namespace quillow::pdf
