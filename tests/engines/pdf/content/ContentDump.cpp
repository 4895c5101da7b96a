#include "tests/engines/pdf/content/ContentDump.h"

#include <gtest/gtest.h>

namespace quillow::pdf::test {

namespace {

std::string withoutFirstLine(const std::string& dump) {
    return dump.substr(dump.find('\n') + 1);
}

} // namespace

ReadPage readPage(std::string_view file, const ContentLimits& limits) {
    ReadPage result;
    auto opened = Document::open(file);
    if (!opened) {
        ADD_FAILURE() << "the file does not open";
        return result;
    }
    FontCache fonts(*opened.value());
    PageReader reader(*opened.value(), fonts, limits);
    const auto pages = pagesOf(*opened.value());
    if (!pages.empty()) result.loss = reader.read(pages.front(), result.page);
    return result;
}

std::string resourcesWith(std::string_view entries) {
    return "<</Font<</F" + std::string(kCourier) + ">>" + std::string(entries) + ">>";
}

std::string dumpOfContent(std::string_view content, std::string_view resources, const std::vector<std::string>& objects,
                          DumpDetail detail) {
    return withoutFirstLine(dumpOf(readPage(onePagePdf(content, resourcesWith(resources), objects)).page, detail));
}

std::string dumpOfPage(std::string_view content, std::string_view pageEntries, const std::vector<std::string>& objects,
                       std::string_view catalogEntries) {
    PdfBuilder pdf;
    pdf.object(1, "<</Type/Catalog/Pages 2 0 R" + std::string(catalogEntries) + ">>")
        .object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>")
        .object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 612 792]/Contents 4 0 R/Resources " + resourcesWith("") +
                       std::string(pageEntries) + ">>")
        .stream(4, "", content);
    std::uint32_t number = 5;
    for (const std::string& body : objects)
        pdf.object(number++, body);
    return dumpOf(readPage(pdf.table().bytes()).page);
}

std::string streamOf(std::string_view entries, std::string_view data) {
    return "<<" + std::string(entries) + "/Length " + std::to_string(data.size()) + ">>stream\n" + std::string(data) +
           "\nendstream";
}

void expectDumps(const std::vector<ContentCase>& cases) {
    for (const ContentCase& c : cases)
        EXPECT_EQ(dumpOfContent(std::string("/F 10 Tf 1 0 0 1 100 700 Tm ") + c.content), c.dump) << c.name;
}

} // namespace quillow::pdf::test
