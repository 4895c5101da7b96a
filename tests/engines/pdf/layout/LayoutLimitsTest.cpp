// Pages that are made to take long.
#include "engines/pdf/layout/PageText.h"
#include "tests/engines/pdf/layout/PageBuilder.h"

#include <gtest/gtest.h>

#include <string>

namespace quillow::pdf {
namespace {

/// A matrix without an inverse leaves letters their widths. Gaps are measured in heights.
TEST(PdfLayoutLimits, lettersWithoutHeightAreWords) {
    Page page = PageBuilder().text(10, 700, U"letters").page();
    page.runs.front().fontSize = 0;

    std::u32string text;
    appendPageText(page, text);

    EXPECT_TRUE(text == U"letters\n");
}

} // namespace
} // namespace quillow::pdf
