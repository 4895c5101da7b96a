#include "engines/pdf/content/PageReader.h"

#include "tests/engines/pdf/content/ContentDump.h"

#include <gtest/gtest.h>

namespace quillow::pdf::test {
namespace {

constexpr std::string_view kText = "/F 10 Tf 100 50 Td(a)Tj 20 30 200 4 re f";

TEST(PdfPageReader, coordinatesAreThoseOfTheDisplayedPage) {
    struct Case {
        const char* entries;
        const char* dump;
    };
    for (const Case& c : {
             Case{"", "page 612x792\n100,50 f0 10 \"a\"\nrectangle 20,30 220,34\n"},
             Case{"/Rotate 90", "page 792x612\n50,512 down f0 10 \"a\"\nrectangle 30,392 34,592\n"},
             Case{"/Rotate 180", "page 612x792\n512,742 left f0 10 \"a\"\nrectangle 392,758 592,762\n"},
             Case{"/Rotate 270", "page 792x612\n742,100 up f0 10 \"a\"\nrectangle 758,20 762,220\n"},
             Case{"/CropBox[10 20 310 420]", "page 300x400\n90,30 f0 10 \"a\"\nrectangle 10,10 210,14\n"},
             Case{"/CropBox[10 20 310 420]/Rotate 90",
                  "page 400x300\n30,210 down f0 10 \"a\"\nrectangle 10,90 14,290\n"},
             Case{"/CropBox[10 20 310 420]/Rotate 180",
                  "page 300x400\n210,370 left f0 10 \"a\"\nrectangle 90,386 290,390\n"},
             Case{"/CropBox[10 20 310 420]/Rotate 270",
                  "page 400x300\n370,90 up f0 10 \"a\"\nrectangle 386,10 390,210\n"},
             Case{"/UserUnit 2", "page 1224x1584\n200,100 f0 20 \"a\"\nrectangle 40,60 440,68\n"},
             Case{"/UserUnit 2/Rotate 90/CropBox[10 20 310 420]",
                  "page 800x600\n60,420 down f0 20 \"a\"\nrectangle 20,180 28,580\n"},
         })
        EXPECT_EQ(dumpOfPage(kText, c.entries, {}), c.dump) << c.entries;
}

TEST(PdfPageReader, glyphsWithTheirMiddleOutsideTheCropBoxAreLeftOut) {
    EXPECT_EQ(dumpOfPage("/F 10 Tf 1 0 0 1 96 50 Tm(abc)Tj 1 0 0 1 292 50 Tm(abc)Tj 1 0 0 1 150 -1 Tm(d)Tj "
                         "1 0 0 1 150 -5 Tm(e)Tj 1 0 0 1 150 300 Tm(f)Tj",
                         "/CropBox[100 0 300 300]", {}),
              "page 200x300\n2,50 f0 10 \"bc\"\n192,50 f0 10 \"a\"\n50,-1 f0 10 \"d\"\n");
}

/// A page with several content streams.
ReadPage readStreams(const std::string& contents, const std::vector<std::string>& objects) {
    PdfBuilder pdf;
    pdf.object(1, "<</Type/Catalog/Pages 2 0 R>>")
        .object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>")
        .object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 612 792]/Contents" + contents + "/Resources " +
                       resourcesWith("") + ">>");
    std::uint32_t number = 4;
    for (const std::string& body : objects)
        pdf.object(number++, body);
    return readPage(pdf.table().bytes());
}

TEST(PdfPageReader, contentStreamsAreOne) {
    const ReadPage read =
        readStreams("[4 0 R null 5 0 R 6 0 R]",
                    {streamOf("", "/F 10 Tf q 9 9 Td [(a)"), streamOf("", "-100(b)]TJ 0 50"), streamOf("", "Td(c)Tj")});
    EXPECT_EQ(dumpOf(read.page), "page 612x792\n9,9 f0 10 \"ab\"\n9,59 f0 10 \"c\"\n");
    EXPECT_EQ(read.loss.partsSkipped, 0U);
}

TEST(PdfPageReader, tokensEndWithTheirStream) {
    const ReadPage read = readStreams("[4 0 R 5 0 R]", {streamOf("", "/F 10 Tf 9 9"), streamOf("", "9 Td(c)Tj")});
    EXPECT_EQ(dumpOf(read.page), "page 612x792\n9,9 f0 10 \"c\"\n");
}

TEST(PdfPageReader, cutStreamDoesNotSwallowTheNextOne) {
    // Run lengths: seven bytes are announced in the last block, and two are there.
    const std::string cut = std::string("\x10") + "/F 10 Tf 9 9 Td  " + "\x06" + "(b";
    const ReadPage read =
        readStreams("[4 0 R 5 0 R]", {streamOf("/Filter/RunLengthDecode", cut), streamOf("", "(c)Tj")});
    EXPECT_EQ(dumpOf(read.page), "page 612x792\n9,9 f0 10 \"c\"\n");
    EXPECT_EQ(read.loss.partsSkipped, 1U);
}

TEST(PdfPageReader, pagesWithoutContentAreEmpty) {
    EXPECT_EQ(dumpOf(readStreams(" null", {}).page), "page 612x792\n");
    EXPECT_EQ(dumpOf(readStreams("[]", {}).page), "page 612x792\n");
}

TEST(PdfPageReader, countsCharactersWithoutUnicode) {
    const std::string font = "<</Type/Font/Subtype/Type1/BaseFont/ABCDEF+Own/Encoding<</Differences[97/g17/b]>>>>";
    const ReadPage read = readPage(onePagePdf("/F 10 Tf 9 9 Td(abaa)Tj", "<</Font<</F " + font + ">>>>"));
    EXPECT_EQ(read.page.text, U"\uFFFDb\uFFFD\uFFFD");
    EXPECT_EQ(read.page.charactersWithoutUnicode, 3U);
}

TEST(PdfPageReader, operatorsOfAPageAreLimited) {
    std::string content = "/F 10 Tf ";
    for (int i = 0; i < 2000; ++i)
        content += "n\n";
    const std::string file = onePagePdf(content + "9 9 Td(a)Tj", resourcesWith(""));
    const ReadPage whole = readPage(file);
    EXPECT_EQ(whole.page.runs.size(), 1U);
    EXPECT_EQ(whole.loss.partsSkipped, 0U);
    const ReadPage limited = readPage(file, {1000, 1'000'000});
    EXPECT_EQ(limited.page.runs.size(), 0U);
    EXPECT_EQ(limited.loss.partsSkipped, 1U);
}

TEST(PdfPageReader, operatorsOfADocumentAreLimited) {
    std::string content = "/F 10 Tf 9 9 Td(a)Tj ";
    for (int i = 0; i < 600; ++i)
        content += "n\n";
    PdfBuilder pdf;
    pdf.object(1, "<</Type/Catalog/Pages 2 0 R>>")
        .object(2, "<</Type/Pages/Kids[3 0 R 5 0 R 6 0 R]/Count 3>>")
        .stream(4, "", content);
    for (const std::uint32_t number : {3U, 5U, 6U})
        pdf.object(number, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 99 99]/Contents 4 0 R/Resources " +
                               resourcesWith("") + ">>");
    const std::string bytes = pdf.table().bytes();
    auto document = Document::open(bytes);
    ASSERT_TRUE(document);
    FontCache fonts(*document.value());
    PageReader reader(*document.value(), fonts, {1'000'000, 1000});
    Page page;
    std::vector<std::size_t> runs;
    std::vector<std::uint64_t> skipped;
    for (const PageNode& node : pagesOf(*document.value())) {
        skipped.push_back(reader.read(node, page).partsSkipped);
        runs.push_back(page.runs.size());
    }
    EXPECT_EQ(runs, (std::vector<std::size_t>{1, 1, 0}));
    EXPECT_EQ(skipped, (std::vector<std::uint64_t>{0, 1, 1}));
}

TEST(PdfPageReader, memoryOfAPageIsUsedAgain) {
    const std::string file = onePagePdf("/F 10 Tf 9 9 Td(a)Tj", resourcesWith(""));
    auto document = Document::open(file);
    ASSERT_TRUE(document);
    FontCache fonts(*document.value());
    PageReader reader(*document.value(), fonts);
    Page page;
    const std::vector<PageNode> pages = pagesOf(*document.value());
    reader.read(pages.front(), page);
    const std::string first = dumpOf(page, DumpDetail::glyphs);
    const Glyph* const memory = page.glyphs.data();
    reader.read(pages.front(), page);
    EXPECT_EQ(dumpOf(page, DumpDetail::glyphs), first);
    EXPECT_EQ(page.glyphs.data(), memory);
}

} // namespace
} // namespace quillow::pdf::test
