// Form XObjects (ISO 32000-2, 8.10).
#include "tests/engines/pdf/content/ContentDump.h"

#include <gtest/gtest.h>

namespace quillow::pdf::test {
namespace {

constexpr const char* kForms = "/XObject<</X 5 0 R/Y 6 0 R>>";

std::string form(std::string_view entries, std::string_view data) {
    return streamOf("/Type/XObject/Subtype/Form/BBox[0 0 612 792]" + std::string(entries), data);
}

TEST(PdfForm, isShownWithItsMatrix) {
    EXPECT_EQ(dumpOfContent("/F 10 Tf 2 0 0 2 0 0 cm/X Do", kForms, {form("/Matrix[1 0 0 1 10 20]", "5 5 Td(a)Tj")}),
              "30,50 f0 20 \"a\"\n");
}

TEST(PdfForm, changesNothingOutside) {
    EXPECT_EQ(dumpOfContent("/F 10 Tf 9 9 Td(a)Tj/X Do(b)Tj", kForms,
                            {form("", "q q /F 20 Tf 3 Tr 0 50 Td /P<</MCID 1>>BDC (x)Tj 1 0 0 1 5 5 cm")}),
              "9,9 f0 10 \"a\"\n0,50 f0 20 invisible \"x\"\n15,9 f0 10 \"b\"\n");
}

TEST(PdfForm, cannotUndoWhatIsOutside) {
    EXPECT_EQ(dumpOfContent("q /F 10 Tf 2 0 0 2 0 0 cm /Artifact<</Subtype/Footer>>BDC 9 9 Td/X Do(b)Tj", kForms,
                            {form("", "Q Q EMC EMC 0 50 Td(x)Tj")}),
              "0,100 f0 20 running \"x\"\n18,18 f0 20 running \"b\"\n");
}

TEST(PdfForm, hasItsOwnFontsThenThoseOfItsPage) {
    const std::string own = "/Resources<</Font<</F<</Type/Font/Subtype/Type1/BaseFont/Courier"
                            "/Encoding<</Differences[97/x]>>>>>>>>";
    EXPECT_EQ(dumpOfContent("/X Do", kForms, {form(own, "/F 10 Tf 9 9 Td(a)Tj")}), "9,9 f0 10 \"x\"\n");
    EXPECT_EQ(dumpOfContent("/X Do", kForms, {form("", "/F 10 Tf 9 9 Td(a)Tj")}), "9,9 f0 10 \"a\"\n");
    EXPECT_EQ(dumpOfContent("/X Do", kForms, {form("/Resources<<>>", "/F 10 Tf 9 9 Td(a)Tj")}), "9,9 f0 10 \"a\"\n");
    EXPECT_EQ(dumpOfContent("/X Do", kForms, {form("/Resources<</ProcSet[/PDF/Text]>>", "/F 10 Tf 9 9 Td(a)Tj")}),
              "9,9 f0 10 \"a\"\n");
}

TEST(PdfForm, isNotReadIfItsResourcesHaveNoFont) {
    EXPECT_EQ(dumpOfContent("/X Do", kForms, {form("/Resources<</ProcSet[/PDF]>>", "/F 10 Tf 9 9 Td(a)Tj")}), "");
    EXPECT_EQ(dumpOfContent("/X Do", kForms,
                            {form("/Resources<</XObject<</I 6 0 R>>>>", "/F 10 Tf 9 9 Td(a)Tj"),
                             streamOf("/Subtype/Image/Width 1/Height 1", "x")}),
              "");
}

TEST(PdfForm, mayBeInAForm) {
    EXPECT_EQ(
        dumpOfContent("/F 10 Tf/X Do", kForms,
                      {form("/Resources<</XObject<</Z 6 0 R>>>>", "1 0 0 1 0 100 cm/Z Do"), form("", "9 9 Td(a)Tj")}),
        "9,109 f0 10 \"a\"\n");
}

TEST(PdfForm, cyclesEnd) {
    EXPECT_EQ(
        dumpOfContent("/F 10 Tf/X Do", kForms, {form("", "9 9 Td(a)Tj/X Do/Y Do"), form("", "9 50 Td(b)Tj/X Do/Y Do")}),
        "9,9 f0 10 \"a\"\n9,50 f0 10 \"b\"\n");
}

TEST(PdfForm, depthIsLimited) {
    std::vector<std::string> forms;
    for (std::size_t i = 0; i < 40; ++i)
        forms.push_back(
            form("/Resources<</XObject<</X " + std::to_string(i + 6) + " 0 R>>>>", "1 0 0 1 0 12 cm 9 9 Td(a)Tj/X Do"));
    const ReadPage read = readPage(onePagePdf("/F 10 Tf/X Do", resourcesWith(kForms), forms));
    EXPECT_EQ(read.page.runs.size(), 24U);
    EXPECT_EQ(read.loss.partsSkipped, 1U);
}

TEST(PdfForm, callsThatExplodeEnd) {
    std::vector<std::string> forms;
    for (std::size_t i = 0; i < 12; ++i) {
        std::string calls;
        for (int n = 0; n < 10; ++n)
            calls += "/X Do ";
        forms.push_back(form("/Resources<</XObject<</X " + std::to_string(i + 6) + " 0 R>>>>", calls));
    }
    const ReadPage read = readPage(onePagePdf("/F 10 Tf/X Do 9 9 Td(a)Tj", resourcesWith(kForms), forms));
    EXPECT_EQ(read.page.runs.size(), 0U); // the budget of the page is spent
    EXPECT_EQ(read.loss.partsSkipped, 1U);
}

TEST(PdfForm, textOutsideItsBoxIsLeftOut) {
    EXPECT_EQ(dumpOfContent("/F 10 Tf 1 0 0 1 100 100 cm/X Do", kForms,
                            {streamOf("/Subtype/Form/BBox[0 0 50 50]", "9 9 Td(in)Tj 0 200 Td(out)Tj")}),
              "109,109 f0 10 \"in\"\n");
}

TEST(PdfForm, marksInsideDoNotCountForThePage) {
    EXPECT_EQ(
        dumpOfContent("/F 10 Tf/P<</MCID 5>>BDC/X Do EMC", kForms, {form("", "/S<</MCID 0>>BDC 9 9 Td(a)Tj EMC")}),
        "9,9 f0 10 #5 \"a\"\n");
}

TEST(PdfForm, imagesAndOtherObjectsAreSkipped) {
    EXPECT_EQ(dumpOfContent("/F 10 Tf 9 9 Td/X Do/Y Do/None Do Do 5 Do(a)Tj", kForms,
                            {streamOf("/Subtype/Image", "(x)Tj"), "<</Subtype/Form>>"}),
              "9,9 f0 10 \"a\"\n");
}

TEST(PdfForm, isShownAgainOnOtherPages) {
    PdfBuilder pdf;
    pdf.object(1, "<</Type/Catalog/Pages 2 0 R>>")
        .object(2, "<</Type/Pages/Kids[3 0 R 3 0 R]/Count 2>>")
        .object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 99 99]/Contents 4 0 R/Resources " +
                       resourcesWith("/XObject<</X 5 0 R>>") + ">>")
        .stream(4, "", "/X Do/X Do")
        .stream(5, "/Subtype/Form", "/F 10 Tf 9 9 Td(a)Tj");
    const std::string bytes = pdf.table().bytes();
    auto document = Document::open(bytes);
    ASSERT_TRUE(document);
    FontCache fonts(*document.value());
    PageReader reader(*document.value(), fonts);
    Page page;
    for (const PageNode& node : pagesOf(*document.value())) {
        reader.read(node, page);
        EXPECT_EQ(dumpOf(page), "page 99x99\n9,9 f0 10 \"a\"\n9,9 f0 10 \"a\"\n");
    }
}

} // namespace
} // namespace quillow::pdf::test
