// The contract of the workspace port for documents, and how the desktop's workspace shows and opens items.
#include "base/PathBytes.h"
#include "tests/platform/FileWorlds.h"
#include "tests/platform/PrivateBus.h"
#include "tests/platform/Waiting.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QStandardPaths>

#include <gtest/gtest.h>

namespace quillow {
namespace {

template <class World>
class WorkspaceContract : public testing::Test {
protected:
    QString at(const char16_t* name) const { return world_.root() + u'/' + QString::fromUtf16(name); }
    bool isPackage(const char16_t* name) { return world_.workspace.isFilePackageAtPath(at(name)); }
    World world_;
};
using Worlds = testing::Types<FakeFileWorld, DiskFileWorld>;
TYPED_TEST_SUITE(WorkspaceContract, Worlds);

TYPED_TEST(WorkspaceContract, anRtfdFolderIsAPackageInAnyLetterCase) {
    this->world_.addFile(this->at(u"Letter.rtfd/TXT.rtf"), "x");
    this->world_.addFile(this->at(u"a.b.RtFd/TXT.rtf"), "x");
    EXPECT_TRUE(this->isPackage(u"Letter.rtfd"));
    EXPECT_TRUE(this->isPackage(u"Letter.rtfd/"));
    EXPECT_TRUE(this->isPackage(u"a.b.RtFd"));
}

TYPED_TEST(WorkspaceContract, nothingElseIsAPackage) {
    this->world_.addFolder(this->at(u"empty.rtfd"));
    this->world_.addFile(this->at(u"file.rtfd"), "x");
    this->world_.addFile(this->at(u"folder.rtf/TXT.rtf"), "x");
    this->world_.addFile(this->at(u".rtfd/TXT.rtf"), "x");
    this->world_.addFile(this->at(u"rtfd/TXT.rtf"), "x");
    for (const char16_t* name : {u"empty.rtfd", u"file.rtfd", u"folder.rtf", u".rtfd", u"rtfd", u"missing.rtfd"})
        EXPECT_FALSE(this->isPackage(name)) << QString::fromUtf16(name).toStdString();
}

TEST(QtWorkspace, opensTheFolderWhereThereIsNoSessionBus) {
    QList<QUrl> opened;
    QtWorkspace workspace(QDBusConnection(QStringLiteral("none")), [&](const QUrl& url) { opened.append(url); });
    workspace.selectFile(QStringLiteral("/home/user/Texts/a b.txt"), QString());
    EXPECT_EQ(opened, QList<QUrl>{QUrl(QStringLiteral("file:///home/user/Texts"))});
}

TEST(QtWorkspace, opensAnItemByItsUrl) {
    QList<QUrl> opened;
    QtWorkspace workspace(QDBusConnection(QStringLiteral("none")), [&](const QUrl& url) { opened.append(url); });
    workspace.openFile(QStringLiteral("/home/user/50% off #1?.txt"));
    EXPECT_EQ(opened, QList<QUrl>{fileUrlFromPath(QStringLiteral("/home/user/50% off #1?.txt"))});
    EXPECT_EQ(opened.constFirst().toLocalFile(), QStringLiteral("/home/user/50% off #1?.txt"));
}

/// A file manager that records the items to show.
class FileManager final : public QDBusVirtualObject {
public:
    QList<QDBusMessage> calls;
    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        calls.append(message);
        return connection.send(message.createReply());
    }
};

/// A private session bus.
class QtWorkspaceOnABus : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(bus_.isConnected()); }

    PrivateBus bus_;
    QList<QUrl> opened_;
};

TEST_F(QtWorkspaceOnABus, asksTheFileManagerToShowTheItem) {
    FileManager fileManager;
    ASSERT_TRUE(bus_.service().registerVirtualObject(QStringLiteral("/org/freedesktop/FileManager1"), &fileManager));
    ASSERT_TRUE(bus_.service().registerService(QStringLiteral("org.freedesktop.FileManager1")));
    QtWorkspace workspace(bus_.client(), [this](const QUrl& url) { opened_.append(url); });
    workspace.selectFile(QStringLiteral("/home/user/Texts/\u00FCber alles.txt/"), QString());
    ASSERT_TRUE(waitUntil([&] { return !fileManager.calls.isEmpty(); }));
    EXPECT_EQ(fileManager.calls.constFirst().member(), QStringLiteral("ShowItems"));
    EXPECT_EQ(fileManager.calls.constFirst().arguments().at(0).toStringList(),
              QStringList{QStringLiteral("file:///home/user/Texts/%C3%BCber%20alles.txt")});
    EXPECT_TRUE(opened_.isEmpty());
}

TEST_F(QtWorkspaceOnABus, opensTheFolderWhereNoFileManagerAnswers) {
    QtWorkspace workspace(bus_.client(), [this](const QUrl& url) { opened_.append(url); });
    workspace.selectFile(QStringLiteral("/home/user/Texts/a.txt"), QString());
    ASSERT_TRUE(waitUntil([&] { return !opened_.isEmpty(); }));
    EXPECT_EQ(opened_, QList<QUrl>{QUrl(QStringLiteral("file:///home/user/Texts"))});
}

} // namespace
} // namespace quillow
