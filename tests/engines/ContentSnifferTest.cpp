#include "engines/ContentSniffer.h"

#include "engines/Extract.h"
#include "tests/engines/DataFiles.h"

#include <gtest/gtest.h>

namespace quillow {
namespace {

using namespace std::string_view_literals;

std::optional<DocumentKind> sniff(std::string_view bytes) {
    return sniffDocumentKind(test::asBytes(bytes));
}

std::string utf16(std::string_view ascii, bool bigEndian) {
    std::string out;
    for (const char c : ascii) {
        if (bigEndian) out.push_back('\0');
        out.push_back(c);
        if (!bigEndian) out.push_back('\0');
    }
    return out;
}

TEST(ContentSniffer, rtfByItsHeader) {
    EXPECT_EQ(sniff("{\\rtf1\\ansi x}"), DocumentKind::rtf);
    EXPECT_EQ(sniff("\xEF\xBB\xBF \r\n\t{\\rtf1 x}"), DocumentKind::rtf);
    EXPECT_EQ(sniff("\xFF\xFE" + utf16("{\\rtf1 x}", false)), DocumentKind::rtf);
    EXPECT_EQ(sniff("{\\rt"), std::nullopt);
}

TEST(ContentSniffer, pdfByAHeaderWithinTheFirstKilobyte) {
    EXPECT_EQ(sniff("%PDF-1.4\n"), DocumentKind::pdf);
    EXPECT_EQ(sniff(std::string(kPdfHeaderWindow - 5, 'x') + "%PDF-1.4"), DocumentKind::pdf);
    EXPECT_EQ(sniff(std::string(kPdfHeaderWindow - 4, 'x') + "%PDF-1.4"), std::nullopt);
}

TEST(ContentSniffer, htmlByEveryPatternOfTheStandard) {
    for (const std::string_view tag :
         {"<!DOCTYPE HTML", "<HTML", "<HEAD", "<SCRIPT", "<IFRAME", "<H1", "<DIV", "<FONT", "<TABLE", "<A", "<STYLE",
          "<TITLE", "<B", "<BODY", "<BR", "<P", "<html", "<Body"}) {
        SCOPED_TRACE(tag);
        EXPECT_EQ(sniff(std::string(tag) + ">"), DocumentKind::html);
        EXPECT_EQ(sniff(" \n" + std::string(tag) + " x"), DocumentKind::html);
        EXPECT_EQ(sniff(std::string(tag) + "xyz>"), std::nullopt);
        EXPECT_EQ(sniff(tag), std::nullopt) << "the tag must end";
    }
    EXPECT_EQ(sniff("<!-- a page -->"), DocumentKind::html);
}

TEST(ContentSniffer, htmlAfterByteOrderMarksAndXmlDeclaration) {
    EXPECT_EQ(sniff("\xEF\xBB\xBF<html>"), DocumentKind::html);
    EXPECT_EQ(sniff("\xFF\xFE" + utf16("<html>", false)), DocumentKind::html);
    EXPECT_EQ(sniff("\xFE\xFF" + utf16("<html>", true)), DocumentKind::html);
    EXPECT_EQ(sniff(utf16("<html>", true)), DocumentKind::html);
    EXPECT_EQ(sniff(utf16("<html>", false)), DocumentKind::html);
    EXPECT_EQ(sniff("<?xml version=\"1.0\"?>\n<!DOCTYPE html PUBLIC>"), DocumentKind::html);
}

TEST(ContentSniffer, otherXmlIsNotHtml) {
    EXPECT_EQ(sniff("<?xml version=\"1.0\"?><svg>"), std::nullopt);
    EXPECT_EQ(sniff("<?xml version"), std::nullopt);
}

TEST(ContentSniffer, pageThatMentionsAPdfHeaderIsAPage) {
    EXPECT_EQ(sniff("<p>%PDF-1.4 is how it begins"), DocumentKind::html);
}

TEST(ContentSniffer, plainTextAndNothingAreNoKind) {
    EXPECT_EQ(sniff("hello"), std::nullopt);
    EXPECT_EQ(sniff(""), std::nullopt);
    EXPECT_EQ(sniff("\xFF\xFE"sv), std::nullopt);
}

std::optional<std::string_view> foreign(std::string_view bytes) {
    return describeForeignContent(test::asBytes(bytes));
}

TEST(ContentSniffer, foreignContentHasAName) {
    EXPECT_EQ(foreign("\x89PNG\r\n\x1A\n..."), "a PNG image");
    EXPECT_EQ(foreign("PK\x03\x04...."), "a ZIP archive or an office document");
    EXPECT_EQ(foreign("RIFF\1\2\3\4WEBP"sv), "a WebP image");
    EXPECT_EQ(foreign("RIFF"), std::nullopt);
    EXPECT_EQ(foreign("hello"), std::nullopt);
    EXPECT_EQ(foreign(""), std::nullopt);
}

TEST(ContentSniffer, mimeWebArchiveHasAName) {
    const std::string saved =
        "From: <Saved by a browser>\r\nSubject: A page\r\n that goes on\r\nMIME-Version: 1.0\r\n"
        "Content-Type: multipart/related;\r\n\ttype=\"text/html\";\r\n\tboundary=\"x\"\r\n\r\n--x\r\n";
    EXPECT_EQ(foreign(saved), "a MIME web archive");
    EXPECT_EQ(foreign("\xEF\xBB\xBF\n" + saved), "a MIME web archive");
    EXPECT_EQ(foreign("mime-version: 1.0\ncontent-type:text/html\n\n<p>=20"), "a MIME web archive");
    EXPECT_EQ(foreign("MIME-Version: 1.0"), "a MIME message");
    EXPECT_EQ(foreign("To: a@example.org\nMIME-Version: 1.0\nContent-Type: text/plain\n\nHi"), "a MIME message");
}

TEST(ContentSniffer, textThatSpeaksOfMimeIsNoMessage) {
    EXPECT_EQ(foreign("Content-Type: text/html\n\n<p>x"), std::nullopt);
    EXPECT_EQ(foreign("A header:\nMIME-Version: 1.0\n"), std::nullopt);
    EXPECT_EQ(foreign("Note: x\n\nMIME-Version: 1.0\n"), std::nullopt);
    EXPECT_EQ(foreign(": x\nMIME-Version: 1.0\n"), std::nullopt);
    EXPECT_EQ(foreign("<p>a: b</p>\nMIME-Version: 1.0\n"), std::nullopt);
}

} // namespace
} // namespace quillow
