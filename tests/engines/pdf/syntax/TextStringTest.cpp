#include "engines/pdf/syntax/TextString.h"

#include <gtest/gtest.h>

namespace quillow::pdf {
namespace {

using namespace std::string_view_literals;

struct TextCase {
    std::string_view bytes;
    std::u32string_view text;
};

TEST(TextString, decodesEachEncoding) {
    const TextCase cases[] = {
        {"", U""},
        {"plain", U"plain"},
        {"\x18\x1F\x80\x92\x93\x9E\xA0\xE9"sv, U"\u02D8\u02DC\u2022\u2122\uFB01\u017E\u20AC\u00E9"},
        {"\x7F\x9F\xAD"sv, U"\uFFFD\uFFFD\uFFFD"},
        {"\xFE\xFF\0A\x20\xAC"sv, U"A\u20AC"},
        {"\xFF\xFE"
         "A\0\xAC\x20"sv,
         U"A\u20AC"},
        {"\xFE\xFF\xD8\x3D\xDE\x00"sv, U"\U0001F600"},
        {"\xFE\xFF\xD8\x3D\0A"sv, U"\uFFFDA"},
        {"\xFE\xFF\xDE\x00\0A"sv, U"\uFFFDA"},
        {"\xFE\xFF\xD8\x3D"sv, U"\uFFFD"},
        {"\xFE\xFF\0A\0"sv, U"A"},
        {"\xFE\xFF"sv, U""},
        {"\xEF\xBB\xBF\xE2\x82\xAC!"sv, U"\u20AC!"},
        {"\xEF\xBB\xBF\xFFx"sv, U"\uFFFDx"},
        {"\xFE\xFF\0\x1B\0d\0e\0\x1B\0A"sv, U"A"},
        {"\xFE\xFF\0\x1B\0A"sv, U"A"},
        {"\xEF\xBB\xBF\x1B"
         "deDE\x1B"
         "A"sv,
         U"A"},
        {"\xEF\xBB\xBF\x1B"
         "too long for one\x1B"
         "A"sv,
         U"too long for oneA"},
    };
    for (const TextCase& c : cases)
        EXPECT_EQ(decodeTextString(c.bytes), c.text) << testing::PrintToString(c.bytes);
}

} // namespace
} // namespace quillow::pdf
