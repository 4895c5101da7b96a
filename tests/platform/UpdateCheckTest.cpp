// The update check end to end: mirrors on this machine, the download in its process, the result on the main queue.
#include "platform/qt/services/FetchProcess.h"
#include "platform/qt/services/QtBackgroundQueue.h"
#include "platform/qt/services/QtMainQueue.h"
#include "platform/qt/services/QtPropertyListLoader.h"
#include "prefs/MWPhoneHome.h"
#include "tests/fakes/FakePlatform.h"
#include "tests/platform/LocalWebServer.h"
#include "tests/platform/Waiting.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>

namespace quillow {
namespace {

const QString kLastCheck = QStringLiteral("lastCheckDateForUpdate");

QByteArray releaseList(int latest) {
    return httpAnswer("200 OK", "<plist version=\"1.0\"><dict><key>LRA</key><integer>" + QByteArray::number(latest) +
                                    "</integer><key>GFU</key><string>https://example.org/get</string><key>DPU</key>"
                                    "<string>https://example.org/page</string></dict></plist>");
}

class UpdateCheck : public testing::Test {
protected:
    UpdateCheck() {
        phoneHome.SetValueAppRelease(10501, QStringLiteral("Quillow"), first.url("/1"), second.url("/2"),
                                     second.url("/3"), second.url("/4"));
        fake.defaults.registerDefaults({{QStringLiteral("notifyUpdate"), true}});
    }
    [[nodiscard]] bool finish() {
        return waitUntil([this] { return !phoneHome.isChekingUpdateSystem(); });
    }

    FakePlatform fake;
    LocalWebServer first;
    LocalWebServer second;
    FetchProcess fetch{QStringLiteral(QUILLOW_BINARY_DIR "/bin/quillow-fetch")};
    QtPropertyListLoader loader{std::ref(fetch)};
    QtMainQueue mainQueue;
    QtBackgroundQueue background;
    MWPhoneHome phoneHome{
        {fake.alerts, background, fake.clock, fake.defaults, mainQueue, loader, fake.workspace, fake.supportUtility}};
};

TEST_F(UpdateCheck, tellsOfTheReleaseThatTheSecondMirrorNames) {
    first.answer("/1", httpAnswer("500 Internal Server Error", "later"));
    second.answer("/2", releaseList(10600));
    fake.alerts.answerNextModal(kAlertFirstButtonReturn);
    phoneHome.startupProcedure();
    EXPECT_TRUE(phoneHome.isChekingUpdateSystem());
    ASSERT_TRUE(finish());
    ASSERT_EQ(fake.alerts.shown().size(), 1U);
    EXPECT_EQ(fake.alerts.shown()[0].alert.messageText, QStringLiteral("There is an update available for Quillow"));
    EXPECT_EQ(fake.workspace.openedUrls(), QStringList{QStringLiteral("https://example.org/get")});
    EXPECT_EQ(fake.defaults.objectForKey(kLastCheck), Boxed(fake.clock.now().toUTC()));
    EXPECT_EQ(first.requestCount(), 1);
    EXPECT_EQ(second.requestCount(), 1);
}

TEST_F(UpdateCheck, asksNoOtherMirrorAfterTheFirstAnswered) {
    first.answer("/1", releaseList(10501));
    phoneHome.checkForLastReleaseAvailableWithNotify();
    ASSERT_TRUE(finish());
    ASSERT_EQ(fake.alerts.shown().size(), 1U);
    EXPECT_EQ(fake.alerts.shown()[0].alert.messageText, QStringLiteral("Quillow is up to date"));
    EXPECT_EQ(second.requestCount(), 0);
}

TEST_F(UpdateCheck, tellsThatAllMirrorsFailed) {
    first.close();
    second.answer("/2", httpAnswer("404 Not Found", "none"));
    second.answer("/3", httpAnswer("200 OK", "<html/>"));
    second.answer("/4", httpAnswer("200 OK", "<plist><array/></plist>"));
    phoneHome.checkForLastReleaseAvailableWithNotify();
    ASSERT_TRUE(finish());
    ASSERT_EQ(fake.alerts.shown().size(), 1U);
    EXPECT_EQ(fake.alerts.shown()[0].alert.messageText,
              QStringLiteral("Quillow was not able to connect to the Varnel server"));
    EXPECT_TRUE(fake.defaults.objectForKey(kLastCheck).isNil());
    EXPECT_EQ(second.requestCount(), 3);
}

TEST_F(UpdateCheck, aMirrorWhoseSignatureIsWrongCountsAsOneWithoutAList) {
    const QtPropertyListLoader strict(std::ref(fetch), QByteArray(32, 'k'));
    MWPhoneHome strictPhoneHome(
        {fake.alerts, background, fake.clock, fake.defaults, mainQueue, strict, fake.workspace, fake.supportUtility});
    strictPhoneHome.SetValueAppRelease(10501, QStringLiteral("Quillow"), first.url("/1"), second.url("/2"),
                                       second.url("/3"), second.url("/4"));
    first.answer("/1", releaseList(10600));
    first.answer("/1.sig", httpAnswer("200 OK", QByteArray(64, 's')));
    for (const QByteArray path : {"/2", "/3", "/4"}) {
        second.answer(path, releaseList(10600));
        second.answer(path + ".sig", httpAnswer("404 Not Found", ""));
    }
    strictPhoneHome.checkForLastReleaseAvailableWithNotify();
    ASSERT_TRUE(waitUntil([&] { return !strictPhoneHome.isChekingUpdateSystem(); }));
    ASSERT_EQ(fake.alerts.shown().size(), 1U);
    EXPECT_EQ(fake.alerts.shown()[0].alert.messageText,
              QStringLiteral("Quillow was not able to connect to the Varnel server"));
    EXPECT_TRUE(fake.defaults.objectForKey(kLastCheck).isNil());
    EXPECT_EQ(first.requestCount(), 2);
    EXPECT_EQ(second.requestCount(), 6);
}

TEST_F(UpdateCheck, theMirrorSeesTheProgramsNameAndRelease) {
    first.answer("/1", releaseList(10501));
    phoneHome.silentCheckForLastReleaseAvailable();
    ASSERT_TRUE(finish());
    EXPECT_TRUE(first.lastRequest().contains("User-Agent: Quillow/1.5.1\r\n"));
}

TEST_F(UpdateCheck, quittingEndsTheDownloadsProcess) {
    first.handle("/1", [](QTcpSocket&) { QCoreApplication::quit(); });
    phoneHome.checkForLastReleaseAvailableWithNotify();
    QCoreApplication::exec();
    ASSERT_TRUE(finish());
    EXPECT_EQ(second.requestCount(), 0) << "no further process starts";
}

TEST(FetchProcess, aProgramThatIsMissingOrFailsGivesNothing) {
    const QUrl url(QStringLiteral("http://127.0.0.1:9/list"));
    EXPECT_EQ(FetchProcess(QStringLiteral("/nowhere/quillow-fetch"))(url), std::nullopt);
    EXPECT_EQ(FetchProcess(QStringLiteral("/bin/false"))(url), std::nullopt);
    EXPECT_EQ(FetchProcess(QStringLiteral("/bin/echo"))(url), url.toEncoded() + '\n') << "its output is the file";
}

TEST(FetchProcess, quittingEndsAProcessThatNeverEnds) {
    const QUrl url(QStringLiteral("http://127.0.0.1:9/list"));
    const QTemporaryDir folder;
    QFile program(folder.filePath(QStringLiteral("endless")));
    ASSERT_TRUE(program.open(QIODevice::WriteOnly));
    program.write("#!/bin/sh\necho started >> \"$0.log\"\nexec sleep 1h\n");
    program.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    program.close();
    QFile log(program.fileName() + QStringLiteral(".log"));
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, [&log] {
        if (log.size() > 0) QCoreApplication::quit();
    });
    look.start(1);
    const FetchProcess fetch(program.fileName());
    std::optional<QByteArray> bytes = QByteArray();
    {
        QtBackgroundQueue queue;
        queue.addOperation([&] { bytes = fetch(url); });
        QCoreApplication::exec();
    }
    EXPECT_EQ(bytes, std::nullopt);
    EXPECT_EQ(fetch(url), std::nullopt);
    ASSERT_TRUE(log.open(QIODevice::ReadOnly));
    EXPECT_EQ(log.readAll(), "started\n") << "no further process starts";
}

} // namespace
} // namespace quillow
