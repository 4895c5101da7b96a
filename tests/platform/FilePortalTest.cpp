// File dialogs of the desktop's portal, and what happens where it fails. The portal is a fake on a private bus.
#include "base/PathBytes.h"
#include "platform/qt/controls/QtWindow.h"
#include "platform/qt/dialogs/DocumentChooser.h"
#include "platform/qt/dialogs/OpenDialog.h"
#include "platform/qt/dialogs/QtPanels.h"
#include "tests/platform/FakeFilePortal.h"
#include "tests/platform/FileWorlds.h"
#include "tests/platform/FolderPanel.h"
#include "tests/platform/VisibleDialogs.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QWindow>

#include <gtest/gtest.h>

#include <vector>

namespace quillow {
namespace {

using Reply = FakeFilePortal::Reply;
constexpr int kShortLimitMilliseconds = 50;
constexpr uint kConfirmed = 0;
constexpr uint kCancelled = 1;
constexpr uint kClosed = 2;

class FilePortalTest : public testing::Test {
protected:
    explicit FilePortalTest(const QMap<QString, QString>& commandsOfServices = {})
        : bus_(commandsOfServices) {}
    void SetUp() override {
        ASSERT_TRUE(bus_.isConnected());
        widget_.show();
    }
    static OpenPanel filePanel() {
        OpenPanel panel;
        panel.prompt = QStringLiteral("Select");
        return panel;
    }
    void begin(const OpenPanel& panel) {
        panels_.beginSheetModalForWindow(panel, &window_, [this](const std::optional<QUrl>& url) {
            answers_.append(url ? pathFromFileUrl(*url) : QStringLiteral("none"));
        });
    }
    void beginInPortal(const OpenPanel& panel) {
        begin(panel);
        ASSERT_TRUE(waitUntil([this] { return !portal_.asked.isEmpty(); }));
    }
    [[nodiscard]] bool isAnswered() {
        return waitUntil([this] { return !answers_.isEmpty(); });
    }
    [[nodiscard]] OpenDialog* ownDialog() const { return visibleDialogs<OpenDialog>(widget_).value(0); }
    [[nodiscard]] bool ownDialogAppears() {
        return waitUntil([this] { return ownDialog() != nullptr; });
    }
    static QString uri(const QString& path) { return fileUrlFromPath(path).toString(QUrl::FullyEncoded); }
    [[nodiscard]] QString at(const char16_t* name) const { return world_.root() + u'/' + QString::fromUtf16(name); }

    PrivateBus bus_;
    FakeFilePortal portal_{bus_.service()};
    FilePortal client_{[this] { return bus_.client(); }};
    DiskFileWorld world_;
    QWidget widget_;
    QtWindow window_{widget_};
    Sheets sheets_;
    QtPanels panels_{sheets_, world_.workspace, client_};
    QStringList answers_;
};

TEST_F(FilePortalTest, aFolderPanelIsThePortalsWithItsTexts) {
    portal_.start();
    OpenPanel panel = folderPanel();
    panel.directoryURL = QUrl(QStringLiteral("/home/user/Texts"));
    beginInPortal(panel);
    EXPECT_EQ(portal_.asked.constFirst().interface(), QStringLiteral("org.freedesktop.portal.FileChooser"));
    EXPECT_EQ(portal_.asked.constFirst().member(), QStringLiteral("OpenFile"));
    EXPECT_EQ(portal_.asked.constFirst().signature(), QStringLiteral("ssa{sv}"));
    EXPECT_EQ(portal_.title(), panel.message);
    EXPECT_EQ(portal_.option("accept_label").toString(), QStringLiteral("Select"));
    EXPECT_TRUE(portal_.option("directory").toBool());
    EXPECT_TRUE(portal_.option("modal").toBool());
    EXPECT_EQ(portal_.option("current_folder").toByteArray(), QByteArray("/home/user/Texts\0", 17));
    EXPECT_FALSE(portal_.options().contains(QStringLiteral("multiple")));
    EXPECT_FALSE(portal_.options().contains(QStringLiteral("filters")));
    EXPECT_EQ(ownDialog(), nullptr);

    portal_.respond(kConfirmed, {uri(at(u"Texts 100%/\u00FC#?"))});
    ASSERT_TRUE(isAnswered());
    EXPECT_EQ(answers_, QStringList{at(u"Texts 100%/\u00FC#?")});
    EXPECT_TRUE(waitUntil([this] { return widget_.findChildren<QDialog*>().isEmpty(); }));
}

TEST_F(FilePortalTest, aFilePanelHasItsTypesInAnyLetterCaseAndNoFolder) {
    portal_.start();
    OpenPanel panel = filePanel();
    panel.allowedFileTypes = QStringList{QStringLiteral("rtf"), QStringLiteral("mp3")};
    beginInPortal(panel);
    EXPECT_EQ(portal_.title(), QStringLiteral("Choose a File"));
    EXPECT_EQ(portal_.filters(), QStringList{QStringLiteral("Documents 0:*.[rR][tT][fF] 0:*.[mM][pP]3")});
    for (const char* name : {"directory", "multiple", "current_folder"})
        EXPECT_FALSE(portal_.options().contains(QLatin1String(name))) << name;
}

TEST_F(FilePortalTest, aPanelForAnyFileHasNoTypes) {
    portal_.start();
    OpenPanel panel = filePanel();
    panel.allowedFileTypes = QStringList{QString()};
    beginInPortal(panel);
    EXPECT_FALSE(portal_.options().contains(QStringLiteral("filters")));
}

TEST_F(FilePortalTest, nothingIsAskedBeforeADialogIsOpened) {
    portal_.start();
    bool isAsked = false;
    FilePortal client([&] {
        isAsked = true;
        return bus_.client();
    });
    QtPanels panels(sheets_, world_.workspace, client);
    DocumentChooser chooser(world_.workspace, client);
    runEvents();
    EXPECT_FALSE(isAsked);
}

TEST_F(FilePortalTest, theWindowIsBlockedWhileThePortalsDialogIsOpen) {
    portal_.start();
    beginInPortal(folderPanel());
    ASSERT_NE(QApplication::activeModalWidget(), nullptr);
    EXPECT_EQ(QApplication::activeModalWidget()->parentWidget(), &widget_);
    EXPECT_FALSE(QApplication::activeModalWidget()->windowHandle()->isExposed());
    portal_.respond(kCancelled);
    ASSERT_TRUE(isAnswered());
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(FilePortalTest, aCancelledOrClosedDialogAnswersNothing) {
    portal_.start();
    for (const uint response : {kCancelled, kClosed}) {
        answers_.clear();
        portal_.asked.clear();
        beginInPortal(folderPanel());
        portal_.respond(response, {uri(at(u"a"))});
        ASSERT_TRUE(isAnswered());
        EXPECT_EQ(answers_, QStringList{QStringLiteral("none")});
        EXPECT_EQ(ownDialog(), nullptr);
    }
}

TEST_F(FilePortalTest, itemsOfOtherComputersAreNoAnswer) {
    portal_.start();
    beginInPortal(folderPanel());
    portal_.respond(kConfirmed, {QStringLiteral("sftp://server/folder"), QStringLiteral("file://server/folder")});
    ASSERT_TRUE(isAnswered());
    EXPECT_EQ(answers_, QStringList{QStringLiteral("none")});
}

TEST_F(FilePortalTest, aResponseBeforeTheReplyIsHeard) {
    portal_.start();
    portal_.reply = Reply::responseFirst;
    portal_.urisBeforeTheReply = QStringList{uri(at(u"early"))};
    begin(folderPanel());
    ASSERT_TRUE(isAnswered());
    EXPECT_EQ(answers_, QStringList{at(u"early")});
}

TEST_F(FilePortalTest, theResponseOfAPortalWithItsOwnRequestPathIsHeard) {
    portal_.start();
    portal_.reply = Reply::anotherPath;
    beginInPortal(folderPanel());
    // The path is known after the reply.
    ASSERT_TRUE(waitUntil([this] {
        portal_.respond(kConfirmed, {uri(at(u"Texts"))});
        return !answers_.isEmpty();
    }));
    EXPECT_EQ(answers_, QStringList{at(u"Texts")});
}

TEST_F(FilePortalTest, withoutAPortalOurDialogIsShownAtOnce) {
    begin(folderPanel());
    ASSERT_NE(ownDialog(), nullptr);
    ownDialog()->reject();
    ASSERT_TRUE(isAnswered());
    EXPECT_EQ(answers_, QStringList{QStringLiteral("none")});
}

TEST_F(FilePortalTest, withoutABusOurDialogIsShownAtOnce) {
    QtPanels panels(sheets_, world_.workspace, FilePortal([] { return QDBusConnection(QStringLiteral("none")); }));
    panels.beginSheetModalForWindow(folderPanel(), &window_, {});
    EXPECT_NE(ownDialog(), nullptr);
}

TEST_F(FilePortalTest, ourDialogReplacesAPortalWithoutFileDialogs) {
    portal_.version = std::nullopt;
    portal_.start();
    begin(folderPanel());
    ASSERT_TRUE(ownDialogAppears());
    EXPECT_TRUE(portal_.asked.isEmpty());
}

TEST_F(FilePortalTest, anOldPortalChoosesFilesButNoFolders) {
    portal_.version = 2;
    portal_.start();
    begin(folderPanel());
    ASSERT_TRUE(ownDialogAppears());
    EXPECT_TRUE(portal_.asked.isEmpty());
    ownDialog()->reject();
    ASSERT_TRUE(isAnswered());
    beginInPortal(filePanel());
}

TEST_F(FilePortalTest, ourDialogReplacesARefusedOneAndAnswersInItsPlace) {
    portal_.start();
    portal_.reply = Reply::error;
    begin(folderPanel());
    ASSERT_TRUE(ownDialogAppears());
    world_.addFolder(at(u"Texts"));
    EXPECT_EQ(QApplication::activeModalWidget(), ownDialog());
    ownDialog()->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(at(u"Texts"));
    ownDialog()->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Open)->click();
    ASSERT_TRUE(isAnswered());
    EXPECT_EQ(answers_, QStringList{at(u"Texts")});
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_TRUE(waitUntil([this] { return widget_.findChildren<QDialog*>().isEmpty(); }));
}

TEST_F(FilePortalTest, ourDialogReplacesThePortalsWhenThePortalDies) {
    portal_.start();
    beginInPortal(folderPanel());
    portal_.die();
    ASSERT_TRUE(ownDialogAppears());
    EXPECT_TRUE(answers_.isEmpty());
    // A late response is not heard.
    portal_.respond(kConfirmed, {uri(at(u"late"))});
    runEvents();
    ownDialog()->reject();
    ASSERT_TRUE(isAnswered());
    EXPECT_EQ(answers_, QStringList{QStringLiteral("none")});
}

TEST_F(FilePortalTest, ourDialogReplacesASilentPortalAndItsLateDialogIsClosed) {
    portal_.start();
    portal_.reply = Reply::none;
    QtPanels panels(sheets_, world_.workspace, FilePortal([this] { return bus_.client(); }, kShortLimitMilliseconds));
    panels.beginSheetModalForWindow(folderPanel(), &window_, {});
    ASSERT_TRUE(ownDialogAppears());
    // If the portal did not even tell its version in time, no dialog was asked for.
    EXPECT_TRUE(portal_.asked.isEmpty() ||
                waitUntil([this] { return portal_.closedRequests == QStringList{portal_.requestPath()}; }));
}

TEST_F(FilePortalTest, aPortalsDialogIsClosedWithItsWindow) {
    portal_.start();
    {
        Sheets sheets;
        QtPanels panels(sheets, world_.workspace, client_);
        panels.beginSheetModalForWindow(folderPanel(), &window_, {});
        ASSERT_TRUE(waitUntil([this] { return !portal_.asked.isEmpty(); }));
    }
    ASSERT_TRUE(waitUntil([this] { return !portal_.closedRequests.isEmpty(); }));
    EXPECT_EQ(portal_.closedRequests, QStringList{portal_.requestPath()});
}

TEST_F(FilePortalTest, namesThatAreNotUtf8KeepTheirBytes) {
    portal_.start();
    OpenPanel panel = folderPanel();
    panel.directoryURL = fileUrlFromPath(pathFromBytes("/d\xE9p\xF4t"));
    beginInPortal(panel);
    EXPECT_EQ(portal_.option("current_folder").toByteArray(), QByteArray("/d\xE9p\xF4t\0", 7));
    portal_.respond(kConfirmed, {QStringLiteral("file:///d%E9p%F4t/%C3%BC/")});
    ASSERT_TRUE(isAnswered());
    EXPECT_EQ(answers_, QStringList{pathFromBytes("/d\xE9p\xF4t/\xC3\xBC")});
}

TEST_F(FilePortalTest, theTextOfABundleIsTheBundle) {
    portal_.start();
    world_.addFile(at(u"Letter.rtfd/TXT.rtf"), "x");
    world_.addFile(at(u"Letter.rtfd/other.rtf"), "x");
    world_.addFile(at(u"Letters/TXT.rtf"), "x");
    for (const auto& [chosen, document] : {std::pair(u"Letter.rtfd/TXT.rtf", u"Letter.rtfd"),
                                           std::pair(u"Letter.rtfd/other.rtf", u"Letter.rtfd/other.rtf"),
                                           std::pair(u"Letters/TXT.rtf", u"Letters/TXT.rtf")}) {
        answers_.clear();
        portal_.asked.clear();
        beginInPortal(filePanel());
        portal_.respond(kConfirmed, {uri(at(chosen))});
        ASSERT_TRUE(isAnswered());
        EXPECT_EQ(answers_, QStringList{at(document)});
    }
}

class DocumentChooserOfPortalTest : public FilePortalTest {
protected:
    void open() {
        const qsizetype before = portal_.asked.size();
        chooser_.open(&widget_, [this](const QStringList& paths) { chosen_.push_back(paths); });
        ASSERT_TRUE(waitUntil([&] { return portal_.asked.size() > before; }));
    }
    DocumentChooser chooser_{world_.workspace, client_};
    std::vector<QStringList> chosen_;
};

TEST_F(DocumentChooserOfPortalTest, documentsAreChosenTogetherAndTheFolderIsRemembered) {
    portal_.start();
    open();
    EXPECT_EQ(portal_.title(), QStringLiteral("Choose the documents to convert"));
    EXPECT_EQ(portal_.option("accept_label").toString(), QStringLiteral("Convert"));
    EXPECT_TRUE(portal_.option("multiple").toBool());
    EXPECT_EQ(portal_.filters(),
              (QStringList{QStringLiteral("Documents 0:*.[rR][tT][fF] 0:*.[rR][tT][fF][dD] 0:*.[hH][tT][mM] "
                                          "0:*.[hH][tT][mM][lL] 0:*.[pP][dD][fF]"),
                           QStringLiteral("All files 0:*")}));
    EXPECT_FALSE(portal_.options().contains(QStringLiteral("current_folder")));

    world_.addFile(at(u"Letter.rtfd/TXT.rtf"), "x");
    portal_.respond(kConfirmed, {uri(at(u"Letter.rtfd/TXT.rtf")), uri(at(u"a.pdf"))});
    ASSERT_TRUE(waitUntil([this] { return !chosen_.empty(); }));
    EXPECT_EQ(chosen_, std::vector{(QStringList{at(u"Letter.rtfd"), at(u"a.pdf")})});
    EXPECT_TRUE(waitUntil([this] { return widget_.findChildren<QDialog*>().isEmpty(); }));

    open();
    EXPECT_EQ(portal_.option("current_folder").toByteArray(), pathToBytes(world_.root()) + '\0');
}

TEST_F(DocumentChooserOfPortalTest, aCancelledDialogChoosesNothing) {
    portal_.start();
    open();
    portal_.respond(kCancelled);
    EXPECT_TRUE(waitUntil([this] { return widget_.findChildren<QDialog*>().isEmpty(); }));
    EXPECT_TRUE(chosen_.empty());
}

TEST_F(DocumentChooserOfPortalTest, ourDialogChoosesInThePlaceOfARefusedOne) {
    portal_.start();
    portal_.reply = Reply::error;
    open();
    ASSERT_TRUE(ownDialogAppears());
    world_.addFile(at(u"Letter.rtfd/TXT.rtf"), "x");
    Q_EMIT ownDialog()->directoryEntered(at(u"Letter.rtfd"));
    ASSERT_TRUE(waitUntil([this] { return !chosen_.empty(); }));
    EXPECT_EQ(chosen_, std::vector{QStringList{at(u"Letter.rtfd")}});
    EXPECT_TRUE(waitUntil([this] { return widget_.findChildren<QDialog*>().isEmpty(); }));
}

class PortalThatDoesNotStartTest : public FilePortalTest {
protected:
    PortalThatDoesNotStartTest()
        : FilePortalTest({{QStringLiteral("org.freedesktop.portal.Desktop"), QStringLiteral("/bin/false")}}) {}
};

TEST_F(PortalThatDoesNotStartTest, isReplacedByOurDialog) {
    begin(folderPanel());
    EXPECT_EQ(ownDialog(), nullptr) << "the portal was not tried";
    ASSERT_TRUE(ownDialogAppears());
}

} // namespace
} // namespace quillow
