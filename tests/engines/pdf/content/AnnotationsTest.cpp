// Annotations of a page (ISO 32000-2, 12.5) and form fields without an appearance (12.7).
#include "tests/engines/pdf/content/ContentDump.h"

#include <gtest/gtest.h>

namespace quillow::pdf::test {
namespace {

/// The page's dump with an annotation as object 5; object 6 is an appearance of 100 by 20 that shows "a".
std::string dumpWith(const std::string& annotation, const std::string& catalogEntries = "") {
    const std::string dump = dumpOfPage(
        "", "/Annots[5 0 R]",
        {annotation, streamOf("/Subtype/Form/BBox[0 0 100 20]/Resources<</Font<</F 7 0 R>>>>", "/F 10 Tf 2 5 Td(a)Tj"),
         std::string(kCourier),
         streamOf("/Subtype/Form/BBox[0 0 100 20]/Matrix[0 1 -1 0 0 0]/Resources<</Font<</F 7 0 R>>>>",
                  "/F 10 Tf 2 5 Td(r)Tj"),
         streamOf("/Subtype/Form/BBox[0 0 100 20]", "/Tx BMC EMC")},
        catalogEntries);
    return dump.substr(dump.find('\n') + 1);
}

TEST(PdfAnnotations, appearanceIsShownInItsRectangle) {
    const std::string rect = "/Rect[50 600 150 620]";
    EXPECT_EQ(dumpWith("<</Subtype/Widget" + rect + "/AP<</N 6 0 R>>>>"), "52,605 f0 10 annotation \"a\"\n");
    EXPECT_EQ(dumpWith("<</Subtype/FreeText" + rect + "/AP<</N 6 0 R>>>>"), "52,605 f0 10 annotation \"a\"\n");
    EXPECT_EQ(dumpWith("<</Subtype/Stamp/Rect[50 600 250 640]/AP<</N 6 0 R>>>>"), "54,610 f0 20 annotation \"a\"\n");
    EXPECT_EQ(dumpWith("<</Subtype/Stamp/Rect[50 600 70 700]/AP<</N 8 0 R>>>>"), "65,602 up f0 10 annotation \"r\"\n");
}

TEST(PdfAnnotations, pageNeedsNoContent) {
    PdfBuilder pdf;
    pdf.object(1, "<</Type/Catalog/Pages 2 0 R>>")
        .object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>")
        .object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 99 99]/Resources " + resourcesWith("") + "/Annots[4 0 R]>>")
        .object(4, "<</Subtype/Stamp/Rect[0 0 50 50]/AP<</N 5 0 R>>>>")
        .stream(5, "/Subtype/Form/BBox[0 0 50 50]", "/F 10 Tf 9 9 Td(a)Tj");
    EXPECT_EQ(dumpOf(readPage(pdf.table().bytes()).page), "page 99x99\n9,9 f0 10 annotation \"a\"\n");
}

TEST(PdfAnnotations, stateNamesTheAppearance) {
    const std::string widget = "<</Subtype/Widget/Rect[50 600 150 620]/AP<</N<</On 6 0 R/Off 9 0 R>>>>/AS";
    EXPECT_EQ(dumpWith(widget + "/On>>"), "52,605 f0 10 annotation \"a\"\n");
    EXPECT_EQ(dumpWith(widget + "/Off>>"), "");
    EXPECT_EQ(dumpWith(widget + "/Other>>"), "");
}

TEST(PdfAnnotations, othersAreLeftOut) {
    for (const char* entries : {"/Subtype/Link", "/Subtype/Text", "/Subtype/Popup", "/Subtype/FileAttachment", "",
                                "/Subtype/Widget/F 2", "/Subtype/Widget/F 32", "/Subtype/Widget/F 34"})
        EXPECT_EQ(dumpWith("<<" + std::string(entries) + "/Rect[50 600 150 620]/AP<</N 6 0 R>>>>"), "") << entries;
    EXPECT_NE(dumpWith("<</Subtype/Screen/Rect[50 600 150 620]/AP<</N 6 0 R>>>>"), "");
    EXPECT_NE(dumpWith("<</Subtype/Widget/F 4/Rect[50 600 150 620]/AP<</N 6 0 R>>>>"), "");
}

TEST(PdfAnnotations, optionalContentHidesThem) {
    EXPECT_EQ(dumpWith("<</Subtype/Widget/OC 7 0 R/Rect[50 600 150 620]/AP<</N 6 0 R>>>>",
                       "/OCProperties<</D<</OFF[7 0 R]>>>>"),
              "");
}

TEST(PdfAnnotations, comeAfterThePageWithAStateOfTheirOwn) {
    EXPECT_EQ(dumpOfPage("/F 10 Tf 9 9 Td 2 0 0 2 0 0 cm 3 Tr/P<</MCID 1>>BDC 0 0 9 9 re W n", "/Annots[5 0 R]",
                         {"<</Subtype/Stamp/Rect[50 600 150 620]/AP<</N 6 0 R>>>>",
                          streamOf("/Subtype/Form/BBox[0 0 100 20]", "/F 10 Tf 2 5 Td(a)Tj")}),
              "page 612x792\n52,605 f0 10 annotation \"a\"\n");
}

TEST(PdfAnnotations, damagedListsAreSkipped) {
    EXPECT_EQ(dumpOfPage("", "/Annots[null 5 (x) 99 0 R[]]", {}), "page 612x792\n");
    EXPECT_EQ(dumpOfPage("", "/Annots 5", {}), "page 612x792\n");
    EXPECT_EQ(dumpWith("<</Subtype/Widget/AP<</N 6 0 R>>>>"), "");                    // no rectangle: nothing to see
    EXPECT_EQ(dumpWith("<</Subtype/Widget/Rect[1 1 9 9]/AP<</N 7 0 R>>/AS/X>>"), ""); // the appearance is no stream
}

TEST(PdfAnnotations, freeTextWithoutAnAppearanceShowsItsContents) {
    const std::string note = "<</Subtype/FreeText/Rect[50 600 150 640]/DA(/H 10 Tf)/Contents(a\\rb)";
    EXPECT_EQ(dumpWith(note + ">>"),
              "52,630.5 f4294967295 10 annotation \"a\"\n52,619 f4294967295 10 annotation \"b\"\n");
    EXPECT_EQ(dumpWith(note + "/AP<</N 9 0 R>>>>"), "");
    EXPECT_EQ(dumpWith("<</Subtype/Stamp/Rect[50 600 150 640]/Contents(a)>>"), "");
}

std::string fieldDump(const std::string& entries, const std::string& catalogEntries = "") {
    return dumpWith("<</Subtype/Widget/Rect[50 600 150 620]" + entries + ">>", catalogEntries);
}

TEST(PdfFields, valueWithoutAnAppearanceIsShown) {
    EXPECT_EQ(fieldDump("/FT/Tx/V(Hello)/DA(/Helv 10 Tf 0 g)"), "52,607.5 f4294967295 10 annotation \"Hello\"\n");
    EXPECT_EQ(fieldDump("/FT/Tx/V<FEFF00E4>/DA(/Helv 0 Tf)"), "52,607 f4294967295 12 annotation \"ä\"\n");
    EXPECT_EQ(fieldDump("/FT/Tx/V(a)"), "52,607 f4294967295 12 annotation \"a\"\n");
    EXPECT_EQ(fieldDump("/FT/Tx/V(a)", "/AcroForm<</DA(/Helv 8 Tf)>>"), "52,608 f4294967295 8 annotation \"a\"\n");
    EXPECT_EQ(fieldDump("/FT/Ch/V(a)/DA(/H 10 Tf)"), "52,607.5 f4294967295 10 annotation \"a\"\n");
    EXPECT_EQ(fieldDump("/FT/Ch/V(a)/Opt[(b)[(a)(Shown)]]/DA(/H 10 Tf)"),
              "52,607.5 f4294967295 10 annotation \"Shown\"\n");
}

TEST(PdfFields, valuesOfSeveralLines) {
    EXPECT_EQ(fieldDump("/FT/Tx/V(a\\rb\\r\\n\\nc)/DA(/H 4 Tf)"),
              "52,615 f4294967295 4 annotation \"a\"\n52,610.4 f4294967295 4 annotation \"b\"\n"
              "52,601.2 f4294967295 4 annotation \"c\"\n");
    EXPECT_EQ(fieldDump("/FT/Tx/Ff 4096/V(a)/DA(/H 4 Tf)"), "52,615 f4294967295 4 annotation \"a\"\n");
    EXPECT_EQ(fieldDump("/FT/Ch/V[(a)(b)]/DA(/H 4 Tf)"),
              "52,615 f4294967295 4 annotation \"a\"\n52,610.4 f4294967295 4 annotation \"b\"\n");
}

TEST(PdfFields, longValuesAreFittedIntoTheField) {
    const Page page = readPage([] {
                          PdfBuilder pdf;
                          pdf.object(1, "<</Type/Catalog/Pages 2 0 R>>")
                              .object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>")
                              .object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 612 792]/Annots[4 0 R]>>")
                              .object(4, "<</Subtype/Widget/Rect[50 600 150 620]/FT/Tx/V(" + std::string(100, 'a') +
                                             ")/DA(/H 10 Tf)>>");
                          return pdf.table().bytes();
                      }())
                          .page;
    ASSERT_EQ(page.runs.size(), 1U);
    EXPECT_FLOAT_EQ(boundsOf(page, page.runs[0]).right, 148);
}

/// The only run of a page with a widget or another annotation whose appearance clips to its box.
Page pageWithAppearance(const std::string& subtype, const std::string& content) {
    PdfBuilder pdf;
    pdf.object(1, "<</Type/Catalog/Pages 2 0 R>>")
        .object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>")
        .object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 612 792]/Annots[4 0 R]>>")
        .object(4, "<</Subtype/" + subtype + "/Rect[50 600 150 620]/AP<</N 5 0 R>>>>")
        .stream(5, "/Subtype/Form/BBox[0 0 100 20]/Resources<</Font<</F 6 0 R>>>>",
                "/Tx BMC q 1 1 98 18 re W n BT/F 10 Tf " + content + " ET Q EMC")
        .object(6, std::string(kCourier));
    return readPage(pdf.table().bytes()).page;
}

TEST(PdfFields, valueThatTheAppearanceClipsIsFittedIntoTheField) {
    const std::string letters = "abcdefghijklmnopqrstuvwxyz"; // 156 wide
    const Page page = pageWithAppearance("Widget", "2 5 Td(" + letters + ")Tj");
    ASSERT_EQ(page.runs.size(), 1U);
    EXPECT_EQ(page.text.size(), letters.size());
    const Box bounds = boundsOf(page, page.runs[0]);
    EXPECT_NEAR(bounds.left, 50, 0.01);
    EXPECT_NEAR(bounds.right, 150, 0.01);
    EXPECT_FLOAT_EQ(page.runs[0].origin.y, 605);
    EXPECT_EQ(pageWithAppearance("Stamp", "2 5 Td(" + letters + ")Tj").text.size(), 17U);
}

TEST(PdfFields, linesThatTheAppearanceClipsAreFittedIntoTheField) {
    const Page page = pageWithAppearance("Widget", "10 TL 2 12 Td(a)Tj(b)'(c)'(d)'");
    ASSERT_EQ(page.runs.size(), 4U);
    EXPECT_EQ(page.runs[0].origin.x, 52);
    EXPECT_NEAR(boundsOf(page, page.runs[0]).top, 620, 0.01);
    EXPECT_NEAR(boundsOf(page, page.runs[3]).bottom, 600, 0.01);
    EXPECT_LT(page.runs[3].fontSize, 6);
}

TEST(PdfFields, valueThatReachesOnlyPartlyOutOfTheFieldStays) {
    EXPECT_EQ(pageWithAppearance("Widget", "2 5 Td(abcdefghijklmnopq)Tj").runs.at(0).fontSize, 10);
    EXPECT_EQ(pageWithAppearance("Widget", "2 -2 Td(a)Tj").runs.at(0).origin, (Point{52, 598}));
}

TEST(PdfFields, ancestorsHaveTheMissingEntries) {
    EXPECT_EQ(fieldDump("/Parent<</Parent<</FT/Tx/DA(/H 10 Tf)>>/V(Up)>>"),
              "52,607.5 f4294967295 10 annotation \"Up\"\n");
    EXPECT_EQ(fieldDump("/Parent 5 0 R"), ""); // a cycle
}

TEST(PdfFields, ancestorsAreLookedAtAsFarAsAllowed) {
    constexpr int kMaximumFieldDepth = 32;
    const auto dumpBelow = [](int ancestors) {
        std::string entries;
        for (int i = 0; i < ancestors; ++i)
            entries += "/Parent<<";
        entries += "/V(a)";
        for (int i = 0; i < ancestors; ++i)
            entries += ">>";
        return fieldDump("/FT/Tx/DA(/H 10 Tf)" + entries);
    };
    EXPECT_EQ(dumpBelow(kMaximumFieldDepth - 1), "52,607.5 f4294967295 10 annotation \"a\"\n");
    EXPECT_EQ(dumpBelow(kMaximumFieldDepth), "");
}

TEST(PdfFields, othersHaveNoText) {
    for (const char* entries : {"/FT/Btn/V/On", "/FT/Btn/V(x)", "/FT/Sig/V<<>>", "/FT/Tx/Ff 8192/V(secret)", "/FT/Tx",
                                "/FT/Tx/V()", "/FT/Tx/V/Name", "/V(x)", "/FT/Ch/V[]"})
        EXPECT_EQ(fieldDump(entries), "") << entries;
    EXPECT_EQ(dumpWith("<</Subtype/Widget/Rect[50 600 150 600]/FT/Tx/V(a)>>"), ""); // no height
    EXPECT_EQ(dumpWith("<</Subtype/FreeText/Rect[50 600 150 620]/FT/Tx/V(a)>>"), "");
}

TEST(PdfFields, appearanceCountsUnlessItIsEmptyAndToBeReplaced) {
    const std::string value = "/FT/Tx/V(v)/DA(/H 10 Tf)";
    EXPECT_EQ(fieldDump(value + "/AP<</N 6 0 R>>"), "52,605 f0 10 annotation \"a\"\n");
    EXPECT_EQ(fieldDump(value + "/AP<</N 6 0 R>>", "/AcroForm<</NeedAppearances true>>"),
              "52,605 f0 10 annotation \"a\"\n");
    EXPECT_EQ(fieldDump(value + "/AP<</N 9 0 R>>"), "");
    EXPECT_EQ(fieldDump(value + "/AP<</N 9 0 R>>", "/AcroForm<</NeedAppearances true>>"),
              "52,607.5 f4294967295 10 annotation \"v\"\n");
}

} // namespace
} // namespace quillow::pdf::test
