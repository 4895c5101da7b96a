// The contract of the workspace port for documents, and how the desktop's workspace shows and opens items.
#include "base/PathBytes.h"
#include "tests/platform/FileWorlds.h"
#include "tests/platform/PrivateBus.h"
#include "tests/platform/Waiting.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusUnixFileDescriptor>
#include <QDBusVirtualObject>

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

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

/// Records calls, with the item of each. Files come as descriptors.
class Service final : public QDBusVirtualObject {
public:
    QStringList calls;
    bool refuses = false;
    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        if (refuses) return connection.send(message.createErrorReply(QDBusError::UnknownMethod, QStringLiteral("no")));
        const QVariantList arguments = message.arguments();
        QString item = arguments.at(0).toStringList().value(0);
        if (message.signature() == u"sha{sv}") item = pathOf(arguments.at(1).value<QDBusUnixFileDescriptor>());
        calls.append(message.interface() + u'.' + message.member() + u' ' + item);
        return connection.send(message.createReply());
    }

private:
    static QString pathOf(const QDBusUnixFileDescriptor& file) {
        const auto link = std::filesystem::path("/proc/self/fd") / std::to_string(file.fileDescriptor());
        return pathFromBytes(QByteArray::fromStdString(std::filesystem::read_symlink(link).string()));
    }
};

/// A desktop with a private session bus.
class QtWorkspaceTest : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(bus_.isConnected()); }
    void start(Service& service, const char* name, const char* object) {
        ASSERT_TRUE(bus_.service().registerVirtualObject(QLatin1String(object), &service));
        ASSERT_TRUE(bus_.service().registerService(QLatin1String(name)));
    }
    void startFileManager() { start(fileManager_, "org.freedesktop.FileManager1", "/org/freedesktop/FileManager1"); }
    void startPortal() { start(portal_, "org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop"); }
    [[nodiscard]] QtWorkspace workspace(Sandbox sandbox = Sandbox::none) {
        return QtWorkspace([this] { return bus_.client(); },
                           [this](const QUrl& url) {
                               opened_.append(url);
                               return canOpen_;
                           },
                           sandbox);
    }
    static QUrl url(const QString& path) { return fileUrlFromPath(path); }

    PrivateBus bus_;
    Service fileManager_;
    Service portal_;
    bool canOpen_ = true;
    QList<QUrl> opened_;
    DiskFileWorld world_;
    const QString folder_ = world_.root() + QStringLiteral("/Texts");
    const QString item_ = folder_ + pathFromBytes("/\xE9 50% off #1?.txt");
    const QString portalsCall_ = QStringLiteral("org.freedesktop.portal.OpenURI.");
};

TEST_F(QtWorkspaceTest, opensTheFolderWhereThereIsNoSessionBus) {
    QtWorkspace workspace([] { return QDBusConnection(QStringLiteral("none")); },
                          [this](const QUrl& url) {
                              opened_.append(url);
                              return true;
                          });
    workspace.selectFile(item_, QString());
    EXPECT_EQ(opened_, QList<QUrl>{url(folder_)});
}

TEST_F(QtWorkspaceTest, opensAnItemByItsUrlAndLeavesTheBusAlone) {
    QtWorkspace workspace(
        [] {
            ADD_FAILURE() << "the bus is not needed";
            return QDBusConnection(QStringLiteral("none"));
        },
        [this](const QUrl& url) {
            opened_.append(url);
            return true;
        });
    workspace.openFile(item_);
    EXPECT_EQ(opened_, QList<QUrl>{url(item_)});
}

TEST_F(QtWorkspaceTest, asksTheFileManagerToShowTheItem) {
    startFileManager();
    startPortal();
    workspace().selectFile(item_ + u'/', QString());
    ASSERT_TRUE(waitUntil([this] { return !fileManager_.calls.isEmpty(); }));
    EXPECT_EQ(fileManager_.calls, QStringList{QStringLiteral("org.freedesktop.FileManager1.ShowItems ") +
                                              url(item_).toString(QUrl::FullyEncoded)});
    runEvents();
    EXPECT_TRUE(opened_.isEmpty());
    EXPECT_TRUE(portal_.calls.isEmpty());
}

TEST_F(QtWorkspaceTest, opensTheFolderWhereNoFileManagerAnswers) {
    startPortal();
    workspace().selectFile(item_, QString());
    ASSERT_TRUE(waitUntil([this] { return !opened_.isEmpty(); }));
    EXPECT_EQ(opened_, QList<QUrl>{url(folder_)});
    runEvents();
    EXPECT_TRUE(portal_.calls.isEmpty());
}

TEST_F(QtWorkspaceTest, thePortalShowsAndOpensItemsWhereNothingElseDoes) {
    world_.addFile(item_, "x");
    startPortal();
    canOpen_ = false;
    workspace().openFile(item_);
    ASSERT_TRUE(waitUntil([this] { return portal_.calls.size() == 1; }));
    workspace().selectFile(item_, QString());
    ASSERT_TRUE(waitUntil([this] { return portal_.calls.size() == 2; }));
    EXPECT_EQ(portal_.calls, (QStringList{portalsCall_ + QStringLiteral("OpenFile ") + item_,
                                          portalsCall_ + QStringLiteral("OpenDirectory ") + item_}));
    EXPECT_EQ(opened_, (QList<QUrl>{url(item_), url(folder_)}));
}

TEST_F(QtWorkspaceTest, aSandboxUsesThePortalAlone) {
    world_.addFile(item_, "x");
    startPortal();
    startFileManager();
    workspace(Sandbox::flatpak).openFile(item_);
    workspace(Sandbox::flatpak).selectFile(item_, QString());
    ASSERT_TRUE(waitUntil([this] { return portal_.calls.size() == 2; }));
    EXPECT_EQ(portal_.calls, (QStringList{portalsCall_ + QStringLiteral("OpenFile ") + item_,
                                          portalsCall_ + QStringLiteral("OpenDirectory ") + item_}));
    runEvents();
    EXPECT_TRUE(opened_.isEmpty());
    EXPECT_TRUE(fileManager_.calls.isEmpty());
}

TEST_F(QtWorkspaceTest, aSandboxWithoutSuchAPortalGoesTheUsualWays) {
    world_.addFile(item_, "x");
    startPortal();
    portal_.refuses = true;
    workspace(Sandbox::flatpak).openFile(item_);
    ASSERT_TRUE(waitUntil([this] { return !opened_.isEmpty(); }));
    workspace(Sandbox::flatpak).selectFile(item_, QString());
    ASSERT_TRUE(waitUntil([this] { return opened_.size() == 2; }));
    EXPECT_EQ(opened_, (QList<QUrl>{url(item_), url(folder_)}));
}

TEST_F(QtWorkspaceTest, aMissingItemIsNotAskedFor) {
    startPortal();
    workspace(Sandbox::flatpak).openFile(item_);
    EXPECT_EQ(opened_, QList<QUrl>{url(item_)});
    runEvents();
    EXPECT_TRUE(portal_.calls.isEmpty());
}

} // namespace
} // namespace quillow
