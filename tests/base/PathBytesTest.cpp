#include "base/PathBytes.h"

#include <gtest/gtest.h>

namespace quillow {
namespace {

TEST(PathBytes, everyByteSurvivesTheWayThereAndBack) {
    QByteArray all;
    for (int byte = 1; byte < 256; ++byte)
        all += static_cast<char>(byte);
    for (const QByteArray& bytes :
         {all, QByteArray("/a/\xF0\x9F\x98\x80\xC3\xA9"), QByteArray("\xED\xA0\x80\xC0\xAF\xF4\x90\x80\x80"),
          QByteArray("\xE2\x82"), QByteArray()})
        EXPECT_EQ(pathToBytes(pathFromBytes(bytes)), bytes);
    EXPECT_EQ(pathFromBytes("\xC3\xA9\xF0\x9F\x98\x80"), QStringLiteral("\u00E9\U0001F600"));
}

TEST(PathBytes, fileUrlsKeepEveryByteAndLoseTrailingSlashes) {
    const QString path = pathFromBytes("/a b/it's \"%41\"?#;caf\xE9");
    EXPECT_EQ(pathFromFileUrl(fileUrlFromPath(path)), path);
    EXPECT_EQ(pathFromFileUrl(QUrl(QStringLiteral("file:///x/Letter.rtfd//"))), QStringLiteral("/x/Letter.rtfd"));
    EXPECT_EQ(pathFromFileUrl(QUrl(QStringLiteral("file:///"))), QStringLiteral("/"));
}

TEST(PathBytes, aByteOrderMarkIsPartOfAName) {
    for (const QByteArray& name : {QByteArray("\xEF\xBB\xBFmarked.rtf"), QByteArray("\xE9\xEF\xBB\xBFmarked")})
        EXPECT_EQ(pathToBytes(pathFromBytes(name)), name);
}

} // namespace
} // namespace quillow
