#include "engines/Extract.h"

#include "tests/engines/DataFiles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <utility>

namespace quillow {
namespace {

using namespace std::string_view_literals;
using test::asBytes;

Extraction read(std::string_view bytes, DocumentKind kind) {
    return extract(asBytes(bytes), kind);
}

constexpr std::string_view kRtf = "{\\rtf1\\ansi Hello}";
constexpr std::string_view kHtml = "<!DOCTYPE html><p>Hello</p>";

std::string pdf() {
    return test::fileContent(test::dataFile("pdf/plain.in"));
}

TEST(Extract, eachKindReachesItsEngine) {
    EXPECT_EQ(read(kRtf, DocumentKind::rtf).text, "Hello\n");
    EXPECT_EQ(read(kRtf, DocumentKind::rtfd).text, "Hello\n");
    EXPECT_EQ(read(kHtml, DocumentKind::html).text, "Hello\n");
    EXPECT_EQ(read(pdf(), DocumentKind::pdf).reason, Reason::ok);
}

TEST(Extract, noBytesAreDamagedButForHtml) {
    EXPECT_EQ(read("", DocumentKind::rtf).reason, Reason::damaged);
    EXPECT_EQ(read("", DocumentKind::rtfd).reason, Reason::damaged);
    EXPECT_EQ(read("", DocumentKind::pdf).reason, Reason::damaged);
    EXPECT_EQ(read("", DocumentKind::pdf).detail, "the file is empty");
    EXPECT_EQ(read("", DocumentKind::html).reason, Reason::okEmpty);
    EXPECT_EQ(read("", DocumentKind::html).text, "");
}

TEST(Extract, mislabelledContentIsNamed) {
    const auto detail = [](std::string_view bytes, DocumentKind kind) {
        const Extraction extraction = read(bytes, kind);
        EXPECT_EQ(extraction.reason, Reason::wrongType);
        EXPECT_FALSE(extraction.text);
        return extraction.detail;
    };

    EXPECT_EQ(detail(pdf(), DocumentKind::rtf), "the content is a PDF");
    EXPECT_EQ(detail(pdf(), DocumentKind::html), "the content is a PDF");
    EXPECT_EQ(detail(kHtml, DocumentKind::rtf), "the content is an HTML page");
    EXPECT_EQ(detail(kHtml, DocumentKind::pdf), "the content is an HTML page");
    EXPECT_EQ(detail(kRtf, DocumentKind::html), "the content is an RTF document");
    EXPECT_EQ(detail(kRtf, DocumentKind::pdf), "the content is an RTF document");
    EXPECT_EQ(detail("\x89PNG\r\n\x1A\n", DocumentKind::html), "the content is a PNG image");
    EXPECT_EQ(detail("PK\x03\x04", DocumentKind::rtf), "the content is a ZIP archive or an office document");
    EXPECT_EQ(detail("GIF89a", DocumentKind::pdf), "the content is a GIF image");
    EXPECT_EQ(detail("MIME-Version: 1.0\nContent-Type: multipart/related\n\n<p>=20", DocumentKind::html),
              "the content is a MIME web archive");
}

TEST(Extract, binaryDataIsNoText) {
    constexpr std::string_view kBinary = "\0\1\2\3\4abc\0\1\2\3\4def"sv;
    for (const DocumentKind kind : {DocumentKind::rtf, DocumentKind::rtfd, DocumentKind::html}) {
        EXPECT_EQ(read(kBinary, kind).reason, Reason::wrongType);
        EXPECT_EQ(read(kBinary, kind).detail, "the content is binary data");
        EXPECT_EQ(read("a stray \0 in a text"sv, kind).reason, Reason::ok);
    }
}

TEST(Extract, binaryDataInAnRtfDocumentIsItsOwn) {
    const std::string document = "Subject: x\n\n{\\rtf1 a{\\pict\\bin20 " + std::string(20, '\1') + "}b}";
    EXPECT_EQ(read(document, DocumentKind::rtf).text, "ab\n");
}

TEST(Extract, xmlIsNoRtf) {
    constexpr std::string_view kXml = "<?xml version=\"1.0\"?><note>b</note>";
    EXPECT_EQ(read(kXml, DocumentKind::rtf).detail, "the content is an XML document");
    EXPECT_EQ(read(kXml, DocumentKind::html).text, "b\n");
}

TEST(Extract, textThatMentionsAPdfHeaderStaysText) {
    EXPECT_EQ(read("Files begin with %PDF-1.4", DocumentKind::html).text, "Files begin with %PDF-1.4\n");
}

TEST(Extract, pdfBehindJunkIsAPdf) {
    EXPECT_EQ(read("<html>" + pdf(), DocumentKind::pdf).reason, Reason::ok);
}

TEST(Extract, reasonsHaveNamesOfTheirOwn) {
    std::set<std::string_view> names;
    for (int i = 0; i <= static_cast<int>(Reason::skipped); ++i)
        names.insert(reasonName(static_cast<Reason>(i)));

    EXPECT_EQ(names.size(), 14U);
    EXPECT_EQ(reasonName(Reason::okEmpty), "ok-empty");
    EXPECT_EQ(reasonName(Reason::noTextLayer), "no-text-layer");
    EXPECT_EQ(reasonName(Reason::outOfMemory), "out-of-memory");
}

/// The text of a document whose bytes are overwritten as soon as bytesDone is called, and the number of those calls.
std::pair<std::optional<std::string>, int> readOnce(std::string document, DocumentKind kind) {
    int done = 0;
    Extraction extraction = extract(asBytes(document), kind, {}, [&] {
        ++done;
        std::fill(document.begin(), document.end(), '?');
    });
    return {std::move(extraction.text), done};
}

TEST(Extract, bytesAreDoneWhereADocumentIsWrittenOtherwiseFirst) {
    const std::pair once(std::optional<std::string>("f\u00F6x\njumps\n"), 1);

    EXPECT_EQ(readOnce("<pre>f\u00F6x\r\njumps</pre>", DocumentKind::html), once);
    EXPECT_EQ(readOnce("<meta charset=windows-1252><pre>f\xF6x\njumps</pre>", DocumentKind::html), once);
}

TEST(Extract, bytesAreNotDoneWhereTheyAreReadInPlace) {
    const std::pair never(std::optional<std::string>("Hello\n"), 0);

    EXPECT_EQ(readOnce(std::string(kHtml), DocumentKind::html), never);
    EXPECT_EQ(readOnce(std::string(kRtf), DocumentKind::rtf), never);
}

} // namespace
} // namespace quillow
