// Property lists from real servers on this machine. Most of the servers misbehave.
#include "platform/qt/network/HttpDownload.h"
#include "platform/qt/services/QtBackgroundQueue.h"
#include "tests/platform/BinaryListWriter.h"
#include "tests/platform/LocalWebServer.h"
#include "tests/platform/Waiting.h"

#include <QTemporaryFile>
#include <QUrl>

#include <gtest/gtest.h>

#include <atomic>

namespace quillow {
namespace {

using Scheme = LocalWebServer::Scheme;

const QByteArray kList = "<plist version=\"1.0\"><dict><key>LRA</key><integer>10502</integer></dict></plist>";
const Boxed::Dictionary kDictionary{{QStringLiteral("LRA"), 10502}};
/// A key made for these tests, and the signature of kList by its owner.
const QByteArray kPublicKey = QByteArray::fromHex("c2d0592c696ff01e6feb626fe71f4f9741e9c1d5755b48dcf93ad1faf6201e75");
const QByteArray kSignature = QByteArray::fromHex("bc8ff66e2b8c481757f3fdbeab3e5efd50c0b227e5cb24427f73ca53dc11efa5"
                                                  "9375cf6fa227b3534a24b143f7d43f4a094c24a0352c037e35e5ed8815446209");
/// A timeout in milliseconds, so long that a test fails if it waits for it.
constexpr int kHour = 3'600'000;

/// A loader that downloads in this process.
struct DirectLoader {
    explicit DirectLoader(int timeoutMilliseconds, const QByteArray& publicKey = {})
        : loader([timeoutMilliseconds](const QUrl& url) { return httpDownload(url, timeoutMilliseconds); }, publicKey) {
    }
    [[nodiscard]] std::optional<Boxed::Dictionary> dictionaryWithContentsOfURL(const QString& url) const {
        return loader.dictionaryWithContentsOfURL(url);
    }

    QtPropertyListLoader loader;
};

class Loader : public testing::Test {
protected:
    [[nodiscard]] std::optional<Boxed::Dictionary> load(const QByteArray& path) const {
        return loader.dictionaryWithContentsOfURL(server.url(path));
    }
    /// The loader's result for one answer.
    [[nodiscard]] std::optional<Boxed::Dictionary> loadAnswer(const QByteArray& answer) {
        server.answer("/list", answer);
        return load("/list");
    }

    LocalWebServer server;
    DirectLoader loader{kHour};
};

TEST_F(Loader, readsAListInEitherForm) {
    EXPECT_EQ(loadAnswer(httpAnswer("200 OK", kList)), kDictionary);
    BinaryListWriter writer;
    writer.addValue(kDictionary);
    EXPECT_EQ(loadAnswer(httpAnswer("200 OK", writer.list())), kDictionary);
    EXPECT_TRUE(server.lastRequest().contains("User-Agent: Quillow/1.5.1\r\n"));
}

TEST_F(Loader, readsABodyWithoutToldLengthAndInChunks) {
    EXPECT_EQ(loadAnswer("HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n" + kList), kDictionary);
    EXPECT_EQ(loadAnswer("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n5\r\n" + kList.left(5) + "\r\n" +
                         QByteArray::number(kList.size() - 5, 16) + "\r\n" + kList.mid(5) + "\r\n0\r\n\r\n"),
              kDictionary);
}

TEST_F(Loader, asksAnewEachTime) {
    server.answer("/list", httpAnswer("200 OK", kList, "Cache-Control: max-age=3600\r\nSet-Cookie: a=b\r\n"));
    EXPECT_EQ(load("/list"), kDictionary);
    EXPECT_EQ(load("/list"), kDictionary);
    EXPECT_EQ(server.requestCount(), 2);
    EXPECT_FALSE(server.lastRequest().toLower().contains("cookie"));
}

TEST_F(Loader, aClosedPortGivesNothing) {
    server.close();
    EXPECT_EQ(load("/list"), std::nullopt);
}

TEST_F(Loader, aHostThatDoesNotExistGivesNothing) {
    EXPECT_EQ(DirectLoader(2000).dictionaryWithContentsOfURL(QStringLiteral("http://nowhere.invalid/list")),
              std::nullopt);
}

TEST_F(Loader, aServerThatDoesNotAnswerIsGivenUp) {
    server.handle("/list", [](QTcpSocket&) {});
    EXPECT_EQ(DirectLoader(100).dictionaryWithContentsOfURL(server.url("/list")), std::nullopt);
    EXPECT_EQ(server.requestCount(), 1);
}

TEST_F(Loader, aServerThatDripsIsGivenUp) {
    server.handle("/list", [](QTcpSocket& socket) {
        socket.write("HTTP/1.1 200 OK\r\n\r\n<plist>");
        auto* timer = new QTimer(&socket);
        QObject::connect(timer, &QTimer::timeout, &socket, [&socket] { socket.write(" "); });
        timer->start(10);
    });
    EXPECT_EQ(DirectLoader(300).dictionaryWithContentsOfURL(server.url("/list")), std::nullopt);
}

TEST_F(Loader, whatIsNoDictionaryGivesNothing) {
    EXPECT_EQ(loadAnswer(httpAnswer("200 OK", "<html><body>Welcome</body></html>")), std::nullopt);
    EXPECT_EQ(loadAnswer(httpAnswer("200 OK", "")), std::nullopt);
    EXPECT_EQ(loadAnswer(httpAnswer("200 OK", "<plist><array/></plist>")), std::nullopt);
    EXPECT_EQ(loadAnswer(httpAnswer("200 OK", kList.chopped(9))), std::nullopt);
}

TEST_F(Loader, answersThatAreNoSuccessGiveNothing) {
    for (const char* status : {"404 Not Found", "500 Internal Server Error", "401 Unauthorized", "304 Not Modified",
                               "407 Proxy Authentication Required", "503 Service Unavailable", "300 Multiple Choices"})
        EXPECT_EQ(loadAnswer(httpAnswer(status, kList)), std::nullopt) << status;
    EXPECT_EQ(loadAnswer("HTTP/1.1 204 No Content\r\n\r\n"), std::nullopt);
    EXPECT_EQ(loadAnswer("no answer of this protocol\r\n\r\n" + kList), std::nullopt);
    EXPECT_EQ(loadAnswer(""), std::nullopt);
}

TEST_F(Loader, aBodyUpToTheLimitIsRead) {
    const auto padded = [](qint64 size) { return kList + QByteArray(size - kList.size(), ' '); };
    EXPECT_EQ(loadAnswer(httpAnswer("200 OK", padded(kPropertyListDownloadLimit))), kDictionary);
    EXPECT_EQ(loadAnswer(httpAnswer("200 OK", padded(kPropertyListDownloadLimit + 1))), std::nullopt);
}

TEST_F(Loader, aHugeBodyIsNotWaitedFor) {
    for (const char* headers : {"Content-Length: 1099511627776\r\n", "Connection: close\r\n"}) {
        // Sends without end, as fast as the client reads.
        server.handle("/list", [headers](QTcpSocket& socket) {
            QObject::connect(&socket, &QTcpSocket::bytesWritten, &socket,
                             [&socket] { socket.write(QByteArray(1 << 16, ' ')); });
            socket.write(QByteArray("HTTP/1.1 200 OK\r\n") + headers + "\r\n" + kList);
        });
        EXPECT_EQ(load("/list"), std::nullopt) << headers;
    }
}

TEST_F(Loader, hugeHeadersAreNotWaitedFor) {
    server.handle("/list", [](QTcpSocket& socket) {
        QObject::connect(&socket, &QTcpSocket::bytesWritten, &socket,
                         [&socket] { socket.write("X-Filler: " + QByteArray(1 << 12, 'x') + "\r\n"); });
        socket.write("HTTP/1.1 200 OK\r\n");
    });
    EXPECT_EQ(DirectLoader(3000).dictionaryWithContentsOfURL(server.url("/list")), std::nullopt);
}

TEST_F(Loader, whatUnpacksToMoreThanTheLimitGivesNothing) {
    // "deflate" means the zlib format. The list is followed by 100 MiB of blanks, some hundred kilobytes compressed.
    const QByteArray packed = qCompress(kList + QByteArray(100 << 20, ' '), 9).mid(4);
    EXPECT_EQ(loadAnswer(httpAnswer("200 OK", packed, "Content-Encoding: deflate\r\n")), std::nullopt);
    const QByteArray small = qCompress(kList, 9).mid(4);
    EXPECT_EQ(loadAnswer(httpAnswer("200 OK", small, "Content-Encoding: deflate\r\n")), kDictionary);
    EXPECT_EQ(loadAnswer(httpAnswer("200 OK", small.chopped(6), "Content-Encoding: deflate\r\n")), std::nullopt);
    EXPECT_EQ(loadAnswer(httpAnswer("200 OK", kList, "Content-Encoding: gzip\r\n")), std::nullopt);
}

TEST_F(Loader, deepNestingGivesNothing) {
    EXPECT_EQ(loadAnswer(httpAnswer("200 OK", "<plist>" + QByteArray("<dict><key>k</key>").repeated(3000))),
              std::nullopt);
}

TEST_F(Loader, aConnectionCutInTheBodyGivesNothing) {
    for (qsizetype length = 0; length < kList.size(); length += 7)
        EXPECT_EQ(loadAnswer(httpAnswer("200 OK", kList).chopped(kList.size() - length)), std::nullopt) << length;
    EXPECT_EQ(loadAnswer("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n" +
                         QByteArray::number(kList.size(), 16) + "\r\n" + kList.chopped(3)),
              std::nullopt);
}

TEST_F(Loader, followsARedirect) {
    server.answer("/list", httpAnswer("200 OK", kList));
    server.answer("/old", redirectTo(server.url("/list")));
    EXPECT_EQ(load("/old"), kDictionary);
    server.answer("/old", redirectTo(QStringLiteral("/list")));
    EXPECT_EQ(load("/old"), kDictionary);
}

TEST_F(Loader, redirectsInACircleEnd) {
    server.answer("/a", redirectTo(server.url("/b")));
    server.answer("/b", redirectTo(server.url("/a")));
    EXPECT_EQ(load("/a"), std::nullopt);
    EXPECT_LE(server.requestCount(), 10);
}

TEST_F(Loader, redirectsOutOfTheWebGiveNothing) {
    QTemporaryFile file;
    ASSERT_TRUE(file.open());
    file.write(kList);
    file.flush();
    for (const QString& target : {QStringLiteral("file://") + file.fileName(), QStringLiteral("data:text/xml,<plist/>"),
                                  QStringLiteral("ftp://127.0.0.1/list"), QStringLiteral("http://"), QString()})
        EXPECT_EQ(loadAnswer(redirectTo(target)), std::nullopt) << target.toStdString();
}

TEST_F(Loader, addressesOutOfTheWebGiveNothing) {
    QTemporaryFile file;
    ASSERT_TRUE(file.open());
    file.write(kList);
    file.flush();
    for (const QString& address :
         {QStringLiteral("file://") + file.fileName(), file.fileName(), QStringLiteral("qrc:/list"),
          QStringLiteral("data:text/xml;base64,") + QString::fromLatin1(kList.toBase64()),
          QStringLiteral("ftp://127.0.0.1/list"), QStringLiteral("http://"), QStringLiteral("http:///list"),
          QStringLiteral("http://a b/"), QStringLiteral("127.0.0.1/list"), QString()})
        EXPECT_EQ(loader.dictionaryWithContentsOfURL(address), std::nullopt) << address.toStdString();
}

TEST_F(Loader, aCertificateThatNobodyVouchesForGivesNothing) {
    LocalWebServer encrypted(Scheme::https);
    encrypted.answer("/list", httpAnswer("200 OK", kList));
    EXPECT_EQ(loader.dictionaryWithContentsOfURL(encrypted.url("/list")), std::nullopt);
    EXPECT_EQ(encrypted.requestCount(), 0);
}

TEST_F(Loader, readsOverAnEncryptedConnection) {
    const TrustedOwnCertificate trusted;
    LocalWebServer encrypted(Scheme::https);
    encrypted.answer("/list", httpAnswer("200 OK", kList));
    EXPECT_EQ(loader.dictionaryWithContentsOfURL(encrypted.url("/list")), kDictionary);
    EXPECT_EQ(loadAnswer(redirectTo(encrypted.url("/list"))), kDictionary);
}

TEST_F(Loader, aRedirectFromAnEncryptedToAnOpenConnectionIsRefused) {
    const TrustedOwnCertificate trusted;
    LocalWebServer encrypted(Scheme::https);
    server.answer("/list", httpAnswer("200 OK", kList));
    encrypted.answer("/list", redirectTo(server.url("/list")));
    EXPECT_EQ(loader.dictionaryWithContentsOfURL(encrypted.url("/list")), std::nullopt);
    EXPECT_EQ(encrypted.requestCount(), 1);
    EXPECT_EQ(server.requestCount(), 0);
}

TEST_F(Loader, sendsNothingThatIdentifiesTheUser) {
    const QByteArray languages = qgetenv("LANGUAGE");
    qputenv("LANGUAGE", "sv:fi");
    EXPECT_EQ(loadAnswer(httpAnswer("200 OK", kList)), kDictionary);
    qputenv("LANGUAGE", languages);
    QList<QByteArray> lines = server.lastRequest().trimmed().split('\n');
    EXPECT_EQ(lines.takeFirst(), "GET /list HTTP/1.1\r");
    QMap<QByteArray, QByteArray> headers;
    for (const QByteArray& line : lines)
        headers.insert(line.left(line.indexOf(':')), line.mid(line.indexOf(':') + 1).trimmed());
    EXPECT_EQ(headers.value("User-Agent"), "Quillow/1.5.1");
    EXPECT_EQ(headers.value("Accept-Language"), "*");
    EXPECT_EQ(headers.keys(), (QList<QByteArray>{"Accept-Encoding", "Accept-Language", "Cache-Control", "Connection",
                                                 "Host", "Pragma", "User-Agent"}));
}

class SignedLoader : public Loader {
protected:
    /// The result for kList, or another list, with a signature beside it.
    [[nodiscard]] std::optional<Boxed::Dictionary>
    loadSigned(const QByteArray& signature, const QByteArray& list = kList, const QByteArray& key = kPublicKey) {
        server.answer("/list", httpAnswer("200 OK", list));
        server.answer("/list.sig", signature);
        return DirectLoader(kHour, key).dictionaryWithContentsOfURL(server.url("/list"));
    }
};

TEST_F(SignedLoader, readsAListWhoseSignatureIsRight) {
    EXPECT_EQ(loadSigned(httpAnswer("200 OK", kSignature)), kDictionary);
    EXPECT_EQ(server.requestCount(), 2);
}

TEST_F(SignedLoader, aListWithoutItsSignatureGivesNothing) {
    EXPECT_EQ(loadSigned(httpAnswer("404 Not Found", kSignature)), std::nullopt);
    EXPECT_EQ(loadSigned(httpAnswer("200 OK", "")), std::nullopt);
    EXPECT_EQ(loadSigned(httpAnswer("200 OK", kSignature.chopped(1))), std::nullopt);
    EXPECT_EQ(loadSigned(httpAnswer("200 OK", kSignature + '\n')), std::nullopt);
    EXPECT_EQ(loadSigned(httpAnswer("200 OK", kSignature.toHex())), std::nullopt);
    EXPECT_EQ(loadSigned(httpAnswer("200 OK", QByteArray(kSignature.size(), '\0'))), std::nullopt);
}

TEST_F(SignedLoader, everyByteOfTheListIsSigned) {
    for (qsizetype at = 0; at < kList.size(); at += 7) {
        QByteArray changed = kList;
        changed[at] = static_cast<char>(changed[at] ^ 1);
        EXPECT_EQ(loadSigned(httpAnswer("200 OK", kSignature), changed), std::nullopt) << at;
    }
    // The same values in other bytes.
    EXPECT_EQ(loadSigned(httpAnswer("200 OK", kSignature), kList + ' '), std::nullopt);
}

TEST_F(SignedLoader, anotherKeyGivesNothing) {
    QByteArray other = kPublicKey;
    other[3] = static_cast<char>(other[3] ^ 4);
    EXPECT_EQ(loadSigned(httpAnswer("200 OK", kSignature), kList, other), std::nullopt);
    EXPECT_EQ(loadSigned(httpAnswer("200 OK", kSignature), kList, kPublicKey.chopped(1)), std::nullopt);
}

TEST_F(SignedLoader, theSignatureIsBesideTheListWhateverItsAddress) {
    server.answer("/a%20b?c=d", httpAnswer("200 OK", kList));
    server.answer("/a%20b.sig?c=d", httpAnswer("200 OK", kSignature));
    EXPECT_EQ(DirectLoader(kHour, kPublicKey).dictionaryWithContentsOfURL(server.url("/a%20b?c=d")), kDictionary);
}

TEST_F(Loader, severalThreadsLoadAtATime) {
    server.answer("/list", httpAnswer("200 OK", kList));
    std::atomic<int> loaded = 0;
    QtBackgroundQueue queue;
    for (int i = 0; i < 8; ++i)
        queue.addOperation([&] { loaded += load("/list") == kDictionary ? 1 : 0; });
    EXPECT_TRUE(waitUntil([&] { return loaded == 8; }));
}

} // namespace
} // namespace quillow
