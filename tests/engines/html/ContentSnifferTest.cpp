#include "tests/engines/html/TestSupport.h"

#include <gtest/gtest.h>

namespace quillow::html {
namespace {

struct ContentCase {
    std::string_view bytes;
    const char* detail;
};

class ForeignContent : public testing::TestWithParam<ContentCase> {};

TEST_P(ForeignContent, isNamedAndGivesNoText) {
    const Extraction result = readText(GetParam().bytes);
    EXPECT_EQ(result.reason, Reason::wrongType);
    EXPECT_EQ(result.text, std::nullopt);
    EXPECT_EQ(result.detail, GetParam().detail);
}

constexpr ContentCase kForeign[] = {
    {"%PDF-1.7\n", "the content is a PDF"},
    {" \n{\\rtf1 x}", "the content is RTF"},
    {"PK\x03\x04 x", "the content is a ZIP archive"},
    {"\x89PNG\r\n", "the content is a picture"},
    {std::string_view("\0\1\2\3\4abc\0\1\2\3\4def", 16), "the content is binary data"},
};
INSTANTIATE_TEST_SUITE_P(Kinds, ForeignContent, testing::ValuesIn(kForeign));

TEST(HtmlContent, mayHoldAStrayNul) {
    EXPECT_EQ(textOf(std::string_view("<p>a\0b is text all the same", 27)), "ab is text all the same");
}

TEST(HtmlContent, mayBePlainText) {
    EXPECT_EQ(textOf("1 < 2 & 3"), "1 < 2 & 3");
}

} // namespace
} // namespace quillow::html
