// Which reader a document goes to, and what comes of it.
#include "app/DocumentText.h"

#include "tests/fakes/FakeFileSystem.h"
#include "tests/fakes/FakeTextReaders.h"

#include <gtest/gtest.h>

namespace quillow {
namespace {

using namespace Qt::StringLiterals;
using End = DocumentText::End;

struct DocumentTextTest : testing::Test {
    Journal journal;
    FakeFileSystem files{journal};
    FakeRtfTextReader rtf{journal};
    FakeHtmlTextReader html{journal};
    FakePdfTextReader pdf{journal};
    DocumentText documents{{files, rtf, html, pdf}};
};

TEST_F(DocumentTextTest, eachKindGoesToItsReader) {
    for (const char16_t* name : {u"/in/a.rtf", u"/in/b.HTML", u"/in/c.htm", u"/in/d.Pdf", u"/in/e.rtfd/TXT.rtf"})
        files.addFile(QString::fromUtf16(name), QString::fromUtf16(name).toUtf8());

    EXPECT_EQ(documents.read(u"/in/a.rtf"_s).styledText, AttributedString{"/in/a.rtf"});
    EXPECT_EQ(documents.read(u"/in/b.HTML"_s).styledText, AttributedString{"/in/b.HTML"});
    EXPECT_EQ(documents.read(u"/in/c.htm"_s).styledText, AttributedString{"/in/c.htm"});
    EXPECT_EQ(documents.read(u"/in/d.Pdf"_s).pdfText, "/in/d.Pdf");
    EXPECT_EQ(documents.read(u"/in/e.rtfd"_s).styledText, AttributedString{"/in/e.rtfd/TXT.rtf"});
    EXPECT_EQ(rtf.read().size(), 2U);
    EXPECT_EQ(html.read().size(), 2U);
    EXPECT_EQ(pdf.read().size(), 1U);
}

TEST_F(DocumentTextTest, otherExtensionsAreNotRead) {
    files.addFile(u"/in/notes.txt"_s, "text");
    EXPECT_EQ(documents.read(u"/in/notes.txt"_s).end, End::noText);
    EXPECT_FALSE(DocumentText::kindOf(u"rtf"_s));
}

TEST_F(DocumentTextTest, unreadableBytesReachTheRtfReaderAsAbsentOnes) {
    EXPECT_EQ(documents.read(u"/in/gone.rtf"_s).end, End::noText);
    rtf.scriptAbsent("");
    EXPECT_EQ(documents.read(u"/in/gone.rtf"_s).end, End::text);
    EXPECT_EQ(documents.read(u"/in/gone.rtf"_s).styledText, AttributedString{""});
}

TEST_F(DocumentTextTest, unreadableBytesReachNoOtherReader) {
    for (const QString& path : {u"/in/gone.html"_s, u"/in/gone.htm"_s, u"/in/gone.pdf"_s})
        EXPECT_EQ(documents.read(path).end, End::bytesUnreadable);
    EXPECT_TRUE(html.read().empty());
    EXPECT_TRUE(pdf.read().empty());
}

TEST_F(DocumentTextTest, aReaderWithoutATextEndsWithoutOne) {
    files.addFile(u"/in/a.pdf"_s, "pictures");
    pdf.script("pictures", std::nullopt);
    files.addFile(u"/in/a.html"_s, "nothing");
    html.script("nothing", std::nullopt);
    EXPECT_EQ(documents.read(u"/in/a.pdf"_s).end, End::noText);
    EXPECT_EQ(documents.read(u"/in/a.html"_s).end, End::noText);
}

} // namespace
} // namespace quillow
