#include "engines/pdf/structure/RunningArtifacts.h"

#include "tests/engines/pdf/PdfBuilder.h"
#include "tests/engines/pdf/layout/PageBuilder.h"
#include "text/Utf8.h"

#include <gtest/gtest.h>

#include <string>

namespace quillow::pdf::test {
namespace {

/// The texts of the runs that stay.
std::string leftOf(const PageBuilder& builder) {
    Page page = builder.page();
    dropRunningArtifacts(page);
    std::string texts;
    for (const Run& run : page.runs) {
        for (const char32_t c : page.textOf(run))
            text::appendUtf8(texts, c);
        texts += '|';
    }
    return texts;
}

PageBuilder textWith(std::uint8_t flags, Point direction = {1, 0}) {
    PageBuilder builder;
    builder.direction(direction).flags(flags).text(10, 750, U"head").flags(0);
    builder.text(10, 700, U"text").text(10, 600, U" ").text(10, 500, U"more");
    return builder.flags(flags).text(200, 30, U"7");
}

TEST(PdfRunningArtifacts, aboveAndBelowAllTextAreDropped) {
    EXPECT_EQ(leftOf(textWith(kRunning)), "text| |more|");
    EXPECT_EQ(leftOf(textWith(0)), "head|text| |more|7|");
}

TEST(PdfRunningArtifacts, ofAnnotationsStay) {
    EXPECT_EQ(leftOf(textWith(kRunning | kFromAnnotation)), "head|text| |more|7|");
}

TEST(PdfRunningArtifacts, blanksAreNoTextBesideThem) {
    EXPECT_EQ(leftOf(textWith(kRunning).flags(0).text(10, 750, U" ").text(10, 20, U"\u00A0")), "text| |more| |\u00A0|");
}

TEST(PdfRunningArtifacts, besideTextStay) {
    PageBuilder builder;
    builder.text(50, 700, U"text").text(50, 500, U"more").flags(kRunning).text(300, 600, U"stamp");
    EXPECT_EQ(leftOf(builder.text(300, 505, U"near")), "text|more|stamp|near|");
}

TEST(PdfRunningArtifacts, inAColumnWithOthersBesideTextStay) {
    PageBuilder numbers;
    numbers.text(50, 700, U"text").flags(kRunning);
    EXPECT_EQ(leftOf(numbers.text(15, 700, U"9").text(10, 688, U"10").text(10, 676, U"11").text(90, 30, U"Foot")),
              "text|9|10|11|");
}

TEST(PdfRunningArtifacts, areAllThatAPageWithoutOtherTextHas) {
    PageBuilder builder;
    builder.text(50, 500, U" ").flags(kRunning).text(10, 750, U"head");
    EXPECT_EQ(leftOf(builder), " |head|");
}

TEST(PdfRunningArtifacts, areAboveTextInItsOwnDirection) {
    PageBuilder turned;
    turned.direction({0, 1}).text(100, 100, U"text").text(200, 100, U"more").flags(kRunning);
    EXPECT_EQ(leftOf(turned.text(50, 100, U"head").text(150, 400, U"beside").direction({1, 0}).text(10, 10, U"stamp")),
              "text|more|beside|stamp|");
}

TEST(PdfRunningArtifacts, areThoseOfTaggedDocuments) {
    const auto isTaggedWith = [](const std::string& entries) {
        PdfBuilder pdf;
        pdf.object(1, "<</Type/Catalog/Pages 2 0 R" + entries + ">>")
            .object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>")
            .object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]>>");
        const std::string file(pdf.table().bytes());
        const auto document = Document::open(file, {});
        return document && isTagged(*document.value());
    };
    EXPECT_TRUE(isTaggedWith("/MarkInfo<</Marked true>>"));
    EXPECT_FALSE(isTaggedWith("/MarkInfo<</Marked false>>"));
    EXPECT_FALSE(isTaggedWith(""));
}

} // namespace
} // namespace quillow::pdf::test
