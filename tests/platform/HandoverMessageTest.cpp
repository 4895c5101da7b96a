// The message from a later start to the running program: its form, hostile messages, and its paths.
#include "platform/qt/life/HandoverMessage.h"

#include "base/PathBytes.h"

#include <gtest/gtest.h>

#include <random>

namespace quillow {
namespace {

Handover sample() {
    return {"launcher_TIME123",
            "token",
            "/home/ann/My Papers",
            {"a.rtf", QByteArray("li\nne \"q\" %1"), QByteArray("\xff\xfe\x80.pdf"), "/abs/b.html", QByteArray()}};
}

TEST(HandoverMessage, comesBackAsItWas) {
    EXPECT_EQ(decodedHandover(encodedHandover(sample())), sample());
    EXPECT_EQ(decodedHandover(encodedHandover({})), Handover{});
}

TEST(HandoverMessage, everyMessageHasOneForm) {
    const QByteArray message = encodedHandover({"i", "", "/f", {"n"}});
    EXPECT_EQ(message, QByteArray::fromHex("51574c48414e4431"
                                           "0000000169"
                                           "00000000"
                                           "000000022f66"
                                           "000000016e"));
}

TEST(HandoverMessage, noPieceOfAMessageIsTakenForAnother) {
    const QByteArray message = encodedHandover(sample());
    for (qsizetype length = 0; length < message.size(); ++length) {
        const auto decoded = decodedHandover(message.left(length));
        // A message may end between two names.
        if (decoded) {
            EXPECT_EQ(encodedHandover(*decoded), message.left(length));
        }
    }
    EXPECT_FALSE(decodedHandover(message.left(8)).has_value());
    EXPECT_FALSE(decodedHandover(QByteArray()).has_value());
}

TEST(HandoverMessage, lengthsBeyondTheEndAreRefused) {
    QByteArray message = encodedHandover({"i", "", "/f", {"n"}});
    for (const char* length : {"ffffffff", "7fffffff", "80000000", "00000002"}) {
        message.replace(message.size() - 5, 4, QByteArray::fromHex(length));
        EXPECT_FALSE(decodedHandover(message).has_value()) << length;
    }
}

TEST(HandoverMessage, changedBytesNeverGiveWhatIsNotThere) {
    std::mt19937 random(1);
    const QByteArray message = encodedHandover(sample());
    int taken = 0;
    for (int i = 0; i < 20000; ++i) {
        QByteArray changed = message;
        for (int j = 0; j < 3; ++j)
            changed[static_cast<qsizetype>(random() % static_cast<unsigned>(changed.size()))] =
                static_cast<char>(random());
        const auto decoded = decodedHandover(changed);
        if (!decoded) continue;
        ++taken;
        EXPECT_EQ(encodedHandover(*decoded), changed);
        (void)absolutePathsOf(*decoded);
    }
    EXPECT_GT(taken, 0);
}

TEST(HandoverMessage, longMessagesAreRefused) {
    const Handover fits{"", "", "/", {QByteArray(kMaximumHandoverSize - 100, 'x')}};
    EXPECT_TRUE(decodedHandover(encodedHandover(fits)).has_value());
    const Handover tooLong{"", "", "/", {QByteArray(kMaximumHandoverSize, 'x')}};
    EXPECT_FALSE(decodedHandover(encodedHandover(tooLong)).has_value());
}

TEST(HandoverPaths, startFromTheSendersFolder) {
    struct Case {
        QByteArray folder;
        QByteArray name;
        QByteArray path; ///< empty if there is no path
    };
    const std::vector<Case> cases = {
        {"/home/ann", "a.rtf", "/home/ann/a.rtf"},
        {"/home/ann", "./b/./c.rtf", "/home/ann/b/c.rtf"},
        {"/home/ann", "../d.rtf", "/home/ann/../d.rtf"},
        {"/home/ann", "/abs//e.pdf", "/abs/e.pdf"},
        {"/home/ann", "Letter.rtfd/", "/home/ann/Letter.rtfd"},
        {"/", "f.rtf", "/f.rtf"},
        {"/home/ann", "\xff\xfe.rtf", "/home/ann/\xff\xfe.rtf"},
        {"/home/ann", ".", "/home/ann"},
        {"/", "/", "/"},
        {"", "/abs/g.rtf", "/abs/g.rtf"},
        {"", "h.rtf", ""},
        {"relative", "i.rtf", ""},
        {"/home/ann", "", ""},
        {"/home/ann", QByteArray("nul\0l.rtf", 9), ""},
    };
    for (const auto& [folder, name, path] : cases) {
        const QStringList expected = path.isEmpty() ? QStringList() : QStringList(pathFromBytes(path));
        EXPECT_EQ(absolutePathsOf({"", "", folder, {name}}), expected)
            << folder.toStdString() << ' ' << name.toStdString();
    }
}

} // namespace
} // namespace quillow
