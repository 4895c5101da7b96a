#include "base/PathStrings.h"

#include "base/PathBytes.h"

#include <gtest/gtest.h>

namespace quillow {
namespace {

using namespace Qt::StringLiterals;

struct Row {
    QString path, lastComponent, extension, withoutExtension;
};

TEST(PathStrings, partsOfPaths) {
    const Row rows[] = {
        // path, last component, extension, without extension
        {u"/tmp/a.txt"_s, u"a.txt"_s, u"txt"_s, u"/tmp/a"_s},
        {u"/tmp/a.b.html"_s, u"a.b.html"_s, u"html"_s, u"/tmp/a.b"_s},
        {u"a.b.html"_s, u"a.b.html"_s, u"html"_s, u"a.b"_s},
        {u"/tmp/a"_s, u"a"_s, u""_s, u"/tmp/a"_s},
        {u"/tmp.d/a"_s, u"a"_s, u""_s, u"/tmp.d/a"_s},
        {u"/tmp/Letter.rtfd/"_s, u"Letter.rtfd"_s, u"rtfd"_s, u"/tmp/Letter"_s},
        {u"/tmp/a.txt///"_s, u"a.txt"_s, u"txt"_s, u"/tmp/a"_s},
        {u"/tmp/"_s, u"tmp"_s, u""_s, u"/tmp"_s},
        {u".pdf"_s, u".pdf"_s, u""_s, u".pdf"_s},
        {u"/tmp/.pdf"_s, u".pdf"_s, u""_s, u"/tmp/.pdf"_s},
        {u"/tmp/.a.pdf"_s, u".a.pdf"_s, u"pdf"_s, u"/tmp/.a"_s},
        {u"/tmp/a..pdf"_s, u"a..pdf"_s, u"pdf"_s, u"/tmp/a."_s},
        {u"/tmp/a."_s, u"a."_s, u""_s, u"/tmp/a."_s},
        {u"/tmp/a b.p df"_s, u"a b.p df"_s, u"p df"_s, u"/tmp/a b"_s},
        {u"/"_s, u"/"_s, u""_s, u"/"_s},
        {u"///"_s, u"/"_s, u""_s, u"/"_s},
        {u""_s, u""_s, u""_s, u""_s},
        {u"."_s, u"."_s, u""_s, u"."_s},
        {u".."_s, u".."_s, u""_s, u".."_s},
        {u"/tmp/\u00E4.\u00D6"_s, u"\u00E4.\u00D6"_s, u"\u00D6"_s, u"/tmp/\u00E4"_s},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(lastPathComponent(row.path), row.lastComponent) << row.path.toStdString();
        EXPECT_EQ(pathExtension(row.path), row.extension) << row.path.toStdString();
        EXPECT_EQ(stringByDeletingPathExtension(row.path), row.withoutExtension) << row.path.toStdString();
    }
}

TEST(PathStrings, pathOfUrlUndoesEscapesAndDropsTheTrailingSlash) {
    EXPECT_EQ(pathOfURL(QUrl(u"file:///tmp/a%20b/"_s)), u"/tmp/a b"_s);
    EXPECT_EQ(pathOfURL(QUrl::fromLocalFile(u"/tmp/100%@.rtf"_s)), u"/tmp/100%@.rtf"_s);
    EXPECT_EQ(pathOfURL(QUrl(u"file:///"_s)), u"/"_s);
    EXPECT_EQ(pathOfURL(QUrl(u"http://example.org/a"_s)), u""_s);
}

TEST(PathStrings, pathOfUrlKeepsBytesThatAreNotUtf8) {
    const QString path = pathOfURL(QUrl::fromEncoded("file:///d%E9p%F4t/%C3%A9t%E9/"));
    EXPECT_EQ(pathToBytes(path), QByteArray("/d\xE9p\xF4t/\xC3\xA9t\xE9"));
    EXPECT_EQ(pathOfURL(fileUrlFromPath(path)), path);
    EXPECT_EQ(pathToBytes(stringByDeletingPathExtension(lastPathComponent(pathFromBytes("/a/\xE9.\xFF.rtf")))),
              QByteArray("\xE9.\xFF"));
}

TEST(PathStrings, lowerCaseIsUnicodesAndKnowsNoLocale) {
    EXPECT_EQ(lowercaseString(u"PDF HTML I"_s), u"pdf html i"_s);
    EXPECT_EQ(lowercaseString(u"\u00C4\u0416\u03A9"_s), u"\u00E4\u0436\u03C9"_s);
    EXPECT_EQ(lowercaseString(u"\u0130"_s), u"i\u0307"_s);
    EXPECT_EQ(lowercaseString(u"\U00010400"_s), u"\U00010428"_s);
}

} // namespace
} // namespace quillow
