// Drags with files from the desktop's portal. The test has its own portal on a private bus.
#include "frame/MWDragDropView.h"
#include "platform/qt/dragdrop/DropArea.h"
#include "tests/platform/PrivateBus.h"

#include <QCoreApplication>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QThread>
#include <QUrl>

#include <gtest/gtest.h>

#include <mutex>

namespace quillow {
namespace {

/// Returns two files for one key, and records its calls. It has its own thread, because the program waits for it.
class Portal final : public QDBusVirtualObject {
public:
    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        const std::lock_guard lock(mutex_);
        calls_.append(message.interface() + u'.' + message.member() + u' ' + message.signature());
        const QString key = message.arguments().value(0).toString();
        if (key == QStringLiteral("known")) return connection.send(message.createReply(files));
        if (key == QStringLiteral("odd")) return connection.send(message.createReply(42));
        return connection.send(message.createErrorReply(QDBusError::AccessDenied, QStringLiteral("no such key")));
    }
    QStringList calls() const {
        const std::lock_guard lock(mutex_);
        return calls_;
    }
    QStringList files{QStringLiteral("/run/user/1/doc/1/\u00FC b.rtf"), QStringLiteral("/run/user/1/doc/2/L.rtfd/")};

private:
    mutable std::mutex mutex_;
    QStringList calls_;
};

class FileTransferPortalTest : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(bus_.isConnected());
        portal_.moveToThread(&thread_);
        thread_.start();
    }
    void TearDown() override {
        thread_.quit();
        thread_.wait();
    }
    void startPortal() {
        ASSERT_TRUE(
            bus_.service().registerVirtualObject(QStringLiteral("/org/freedesktop/portal/documents"), &portal_));
        ASSERT_TRUE(bus_.service().registerService(QStringLiteral("org.freedesktop.portal.Documents")));
    }
    static void setKey(QMimeData& data, const QByteArray& key) {
        data.setData(QLatin1String(FileTransferPortal::kMimeType), key);
    }
    /// The action of a drag with this data, after a drop on an area that uses this bus.
    Qt::DropAction drop(const QMimeData& data) {
        DropArea area([] { return DragWay::direct; }, FileTransferPortal([this] { return bus_.client(); }));
        MWDragDropView view(area, Rect{0, 0, 300, 100});
        const Observation observation =
            view.addObserver(QStringLiteral("myFilePathDropped"), [&](const QString&, const KVObject&, const Change&) {
                dropped_.append(*view.myFilePathDropped());
            });
        QDragEnterEvent enter({10, 10}, Qt::LinkAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&area, &enter);
        EXPECT_TRUE(portal_.calls().isEmpty()) << "asked before the drop";
        if (!enter.isAccepted()) return Qt::IgnoreAction;
        QDropEvent event({10, 10}, Qt::LinkAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&area, &event);
        return event.isAccepted() ? event.dropAction() : Qt::IgnoreAction;
    }

    QThread thread_;
    Portal portal_;
    PrivateBus bus_;
    QStringList dropped_;
    const QStringList handedOut_{QStringLiteral("/run/user/1/doc/1/\u00FC b.rtf"),
                                 QStringLiteral("/run/user/1/doc/2/L.rtfd")};
};

TEST_F(FileTransferPortalTest, aDragWithOnlyAKeyIsTakenAndItsFilesAreFetchedOnceOnTheDrop) {
    startPortal();
    QMimeData data;
    setKey(data, "known");
    EXPECT_EQ(drop(data), Qt::LinkAction);
    EXPECT_EQ(dropped_, handedOut_);
    EXPECT_EQ(portal_.calls(), QStringList{QStringLiteral("org.freedesktop.portal.FileTransfer.RetrieveFiles sa{sv}")});
}

TEST_F(FileTransferPortalTest, aKeyMayEndInAZeroByte) {
    startPortal();
    QMimeData data;
    setKey(data, QByteArray("known\0", 6));
    EXPECT_EQ(drop(data), Qt::LinkAction);
    EXPECT_EQ(dropped_, handedOut_);
}

TEST_F(FileTransferPortalTest, thePortalsFilesGoBeforeTheUrls) {
    startPortal();
    QMimeData data;
    data.setUrls({QUrl(QStringLiteral("file:///outside.rtf"))});
    setKey(data, "known");
    EXPECT_EQ(drop(data), Qt::LinkAction);
    EXPECT_EQ(dropped_, handedOut_);
}

TEST_F(FileTransferPortalTest, theUrlsServeWhereThePortalHasNoSuchKey) {
    startPortal();
    QMimeData data;
    data.setUrls({QUrl(QStringLiteral("file:///outside.rtf"))});
    setKey(data, "unknown");
    EXPECT_EQ(drop(data), Qt::LinkAction);
    EXPECT_EQ(dropped_, QStringList{QStringLiteral("/outside.rtf")});
}

TEST_F(FileTransferPortalTest, theUrlsServeWhereThereIsNoPortal) {
    QMimeData data;
    data.setUrls({QUrl(QStringLiteral("file:///outside.rtf"))});
    setKey(data, "known");
    EXPECT_EQ(drop(data), Qt::LinkAction);
    EXPECT_EQ(dropped_, QStringList{QStringLiteral("/outside.rtf")});
}

TEST_F(FileTransferPortalTest, nothingIsReportedWhereAKeyOpensNothing) {
    startPortal();
    for (const char* key : {"unknown", "odd"}) {
        QMimeData data;
        setKey(data, key);
        FileTransferPortal portal([this] { return bus_.client(); });
        EXPECT_FALSE(portal.retrieveFiles(data).has_value()) << key;
    }
}

TEST_F(FileTransferPortalTest, anAnswerWithAPathThatIsNotWholeIsRefused) {
    portal_.files = QStringList{QStringLiteral("/good.rtf"), QStringLiteral("../bad.rtf")};
    startPortal();
    QMimeData data;
    setKey(data, "known");
    EXPECT_FALSE(FileTransferPortal([this] { return bus_.client(); }).retrieveFiles(data).has_value());
}

TEST_F(FileTransferPortalTest, anEmptyKeyIsNotAskedFor) {
    startPortal();
    QMimeData data;
    setKey(data, QByteArray(1, '\0'));
    EXPECT_FALSE(FileTransferPortal([this] { return bus_.client(); }).retrieveFiles(data).has_value());
    EXPECT_TRUE(portal_.calls().isEmpty());
}

TEST_F(FileTransferPortalTest, aKeyDoesNotMakeAnAddressOfTheWebAFile) {
    startPortal();
    QMimeData data;
    data.setUrls({QUrl(QStringLiteral("https://example.org/a.rtf"))});
    setKey(data, "known");
    EXPECT_EQ(drop(data), Qt::IgnoreAction);
    EXPECT_TRUE(dropped_.isEmpty());
}

} // namespace
} // namespace quillow
