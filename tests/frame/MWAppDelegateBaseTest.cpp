// The features that all applications share: menu entry, preferences window, startup document, user guide.
#include "frame/MWAppDelegateBase.h"

#include "platform/Alerts.h"
#include "prefs/MyPrefToolbarDelegate.h"
#include "tests/fakes/FakePlatform.h"
#include "tests/fakes/FakeTabView.h"
#include "tests/fakes/FakeToolbar.h"
#include "tests/fakes/FakeWindow.h"
#include "tests/prefs/SharedChecker.h"

#include <gtest/gtest.h>

namespace quillow {

namespace {

const QString kPleaseSelect = QStringLiteral("Please select a file or change startup option");
const QString kStale = QStringLiteral("Stale bookmark. Please re-select");
const QString kDocument = QStringLiteral("/home/user/Letters/start.txt");

/// An application with a user guide.
class Delegate final : public MWAppDelegateBase {
public:
    using MWAppDelegateBase::MWAppDelegateBase;
    [[nodiscard]] QString getUserGuideName() const override { return QStringLiteral("Guide"); }
    [[nodiscard]] QString getUserGuideNameWithThisRelNum() const override { return guideName; }
    QString guideName = QStringLiteral("Guide 1.5");
};

class AppDelegateBase : public testing::Test {
protected:
    AppDelegateBase() {
        delegate.setPrefWindow(&prefWindow);
        toolbarDelegate.awakeFromNib();
        delegate.setPrefToolbarDelegate(&toolbarDelegate);
        fake.files.addFile(kDocument, "text");
    }

    void set(const char16_t* key, const Boxed& value) { fake.defaults.setObject(value, QString::fromUtf16(key)); }
    [[nodiscard]] Boxed get(const char16_t* key) { return fake.defaults.objectForKey(QString::fromUtf16(key)); }
    void chooseStartupDocument() {
        delegate.selectStartupDoc();
        fake.panels.choose(kDocument);
        set(u"StartupActionTag", 3);
    }
    [[nodiscard]] QString stateLine() const {
        return delegate.StartupDocPathMessageString().value_or(QStringLiteral("nil"));
    }
    [[nodiscard]] bool journalHas(const QString& entry) const { return fake.journal.entries().contains(entry); }
    [[nodiscard]] const Alert& lastAlert() const { return fake.alerts.shown().back().alert; }

    FakePlatform fake;
    Delegate delegate{fake.platform(), fake.supportUtility, fake.valueTransformers};
    FakeWindow prefWindow;
    FakeToolbarFactory toolbarFactory;
    FakeTabView tabView;
    MyPrefToolbarDelegate toolbarDelegate{toolbarFactory, prefWindow, tabView};
};

} // namespace

TEST_F(AppDelegateBase, startsWithItsNameReleaseAndDefaults) {
    EXPECT_EQ(delegate.appName(), QStringLiteral("Quillow"));
    EXPECT_EQ(delegate.releaseString(), QStringLiteral("1.5.1"));
    EXPECT_EQ(stateLine(), QString());
    EXPECT_EQ(delegate.StartupDocSpecified(), Boxed(true));
    EXPECT_FALSE(delegate.finishedLaunching());
    EXPECT_FALSE(delegate.usingAServices());
    EXPECT_FALSE(delegate.documentIsOpening());
    EXPECT_EQ(delegate.myHelpMenu(), nullptr);
    EXPECT_EQ(delegate.getAppStantment(), QStringLiteral("Convert Pdf, Html, Rtf, Rtfd to standard text"));
}

TEST_F(AppDelegateBase, registersTheTransformerValueNot0) {
    const auto transformer = fake.valueTransformers.valueTransformerForName(QStringLiteral("valueNot0"));
    ASSERT_NE(transformer, nullptr);
    EXPECT_EQ(transformer->transformedValue(0), Boxed(0));
    EXPECT_EQ(transformer->transformedValue(5), Boxed(1));
}

TEST_F(AppDelegateBase, putsSoftwareUpdateSecondIntoTheApplicationMenu) {
    delegate.adjustBeforeFinishingLaunching();
    ASSERT_EQ(fake.menus.applicationMenu().size(), 3);
    EXPECT_EQ(fake.menus.applicationMenu()[1].title, QStringLiteral("Software Update…"));
    EXPECT_EQ(fake.menus.applicationMenu()[1].keyEquivalent, QString());
}

TEST_F(AppDelegateBase, leavesTheUpdateOutOfABuildThatDoesNotCheck) {
    fake.updateCheck = UpdateCheck::leftOut;
    Delegate without(fake.platform(), fake.supportUtility, fake.valueTransformers);
    without.adjustBeforeFinishingLaunching();
    EXPECT_EQ(fake.menus.applicationMenu().size(), 2);
}

TEST_F(AppDelegateBase, checksForUpdatesFromTheMenu) {
    SharedChecker& shared = SharedChecker::idle();
    delegate.adjustBeforeFinishingLaunching();
    fake.menus.applicationMenu()[1].action(nullptr);
    EXPECT_EQ(shared.background.queuedCount(), 1U);
    EXPECT_TRUE(shared.checker().isChekingUpdateSystem());
    // This check always notifies the user, even on the day of the last check.
    shared.finishCheck();
    ASSERT_EQ(shared.platform.alerts.shown().size(), 1U);
    EXPECT_TRUE(shared.platform.alerts.shown()[0].alert.messageText.endsWith(
        QStringLiteral("was not able to connect to the Varnel server")));
    shared.platform.defaults.setObject(shared.platform.clock.now(), QStringLiteral("lastCheckDateForUpdate"));
    fake.menus.applicationMenu()[1].action(nullptr);
    EXPECT_EQ(shared.background.queuedCount(), 1U);
}

TEST_F(AppDelegateBase, keepsThePreferencesOutOfTheWindowMenu) {
    delegate.adjustBeforeFinishingLaunching();
    EXPECT_TRUE(prefWindow.isExcludedFromWindowsMenu());
}

TEST_F(AppDelegateBase, saysAtLaunchThatNoStartupDocumentIsChosen) {
    set(u"StartupSelectedDocPath", QStringLiteral(""));
    delegate.adjustBeforeFinishingLaunching();
    EXPECT_EQ(stateLine(), kPleaseSelect);
    EXPECT_EQ(delegate.StartupDocSpecified(), Boxed(false));
}

TEST_F(AppDelegateBase, takesAMissingStartupPathForNoEmptyOne) {
    delegate.adjustBeforeFinishingLaunching();
    EXPECT_EQ(stateLine(), QString());
    EXPECT_EQ(delegate.StartupDocSpecified(), Boxed(true));
}

TEST_F(AppDelegateBase, centresThePreferencesOnlyWhenTheyAreNotVisible) {
    delegate.openPreferences();
    delegate.openPreferences();
    EXPECT_EQ(prefWindow.centered(), 1);
    EXPECT_EQ(prefWindow.raised(), 2);
}

TEST_F(AppDelegateBase, opensThePreferencesAtAPane) {
    const ActionSender general{0};
    const ActionSender update{1};
    int raised = 0;
    for (const auto& [sender, tab] : {std::pair{&update, 1}, std::pair{&general, 0}, std::pair{&update, 1}}) {
        delegate.openPreferencesAtSenderTagTab(sender);
        EXPECT_EQ(tabView.selected(), tab);
        EXPECT_EQ(prefWindow.title(), tab == 1 ? QStringLiteral("Update") : QStringLiteral("General"));
        EXPECT_EQ(prefWindow.raised(), ++raised);
    }
    for (const int tab : {0, 1, 0}) {
        delegate.openPreferencesAtTab(tab);
        EXPECT_EQ(tabView.selected(), tab);
        EXPECT_EQ(prefWindow.raised(), ++raised);
    }
    EXPECT_EQ(prefWindow.centered(), 1) << "only while they are not visible";
}

TEST_F(AppDelegateBase, opensThePreferencesAtThePaneThatWasShownLast) {
    delegate.openPreferencesAtTab(1);
    prefWindow.close();
    delegate.openPreferences();
    EXPECT_EQ(tabView.selected(), 1);
}

TEST_F(AppDelegateBase, opensTheFirstPaneForASenderThatIsNone) {
    delegate.openPreferencesAtTab(1);
    delegate.openPreferencesAtSenderTagTab(nullptr);
    EXPECT_EQ(tabView.selected(), 0);
}

TEST_F(AppDelegateBase, opensNoPreferencesWithoutTheirWindow) {
    delegate.setPrefWindow(nullptr);
    delegate.openPreferences();
    EXPECT_EQ(prefWindow.raised(), 0);
}

TEST_F(AppDelegateBase, forwardsTheSupportActions) {
    delegate.visitUs();
    delegate.visitAppUrl();
    delegate.emailUs();
    ASSERT_EQ(fake.workspace.openedUrls().size(), 3);
    EXPECT_EQ(fake.workspace.openedUrls()[0], QStringLiteral("https://example.org/"));
    EXPECT_EQ(fake.workspace.openedUrls()[1], QStringLiteral("https://example.org/app"));
    EXPECT_TRUE(fake.workspace.openedUrls()[2].startsWith(QStringLiteral("mailto:support@example.org?subject=")));
}

TEST_F(AppDelegateBase, opensAnUntitledFileOnlyForActionZero) {
    EXPECT_TRUE(delegate.applicationShouldOpenUntitledFile()) << "a missing action reads as 0";
    set(u"StartupActionTag", 1);
    EXPECT_FALSE(delegate.applicationShouldOpenUntitledFile());
}

TEST_F(AppDelegateBase, makesANewDocumentAfterASecondWhenNoneIsOpen) {
    delegate.executeDocumentStartupAsInPref();
    ASSERT_EQ(fake.timers.scheduled().size(), 1U);
    EXPECT_EQ(fake.timers.scheduled()[0].seconds, 1.0);
    EXPECT_FALSE(journalHas(QStringLiteral("new document")));
    fake.timers.fireAll();
    EXPECT_TRUE(journalHas(QStringLiteral("new document")));
}

TEST_F(AppDelegateBase, makesNoNewDocumentWhenOneIsOpenOrOpening) {
    delegate.executeDocumentStartupAsInPref();
    fake.documents.setCount(1);
    fake.timers.fireAll();
    fake.documents.setCount(0);
    delegate.setDocumentIsOpening(true);
    delegate.executeDocumentStartupAsInPref();
    fake.timers.fireAll();
    EXPECT_FALSE(journalHas(QStringLiteral("new document")));
}

TEST_F(AppDelegateBase, showsTheOpenDialogAfterASecondForActionOne) {
    set(u"StartupActionTag", 1);
    delegate.executeDocumentStartupAsInPref();
    EXPECT_FALSE(journalHas(QStringLiteral("open dialog")));
    fake.timers.fireAll();
    EXPECT_TRUE(journalHas(QStringLiteral("open dialog")));
    fake.journal.clear();
    delegate.setDocumentIsOpening(true);
    delegate.executeDocumentStartupAsInPref();
    fake.timers.fireAll();
    EXPECT_FALSE(journalHas(QStringLiteral("open dialog")));
}

TEST_F(AppDelegateBase, showsTheOpenDialogAtOnceForActionTwo) {
    set(u"StartupActionTag", 2);
    fake.documents.setCount(1);
    delegate.executeDocumentStartupAsInPref();
    EXPECT_TRUE(journalHas(QStringLiteral("open dialog")));
}

TEST_F(AppDelegateBase, doesNothingForAnUnknownAction) {
    chooseStartupDocument();
    fake.journal.clear();
    for (const int tag : {4, -1, 1000}) {
        set(u"StartupActionTag", tag);
        delegate.executeDocumentStartupAsInPref();
    }
    EXPECT_TRUE(fake.timers.scheduled().empty());
    EXPECT_TRUE(fake.alerts.shown().empty());
    EXPECT_EQ(fake.mainQueue.queuedCount(), 0U);
    EXPECT_TRUE(fake.journal.entries().isEmpty()) << "no document, no dialog, no access";
    EXPECT_EQ(stateLine(), QString());
}

TEST_F(AppDelegateBase, doesNotCutTheActionTagTo32Bits) {
    for (const std::int64_t known : {0, 1, 2, 3}) {
        set(u"StartupActionTag", (std::int64_t{1} << 32) + known);
        delegate.executeDocumentStartupAsInPref();
        EXPECT_FALSE(delegate.applicationShouldOpenUntitledFile());
    }
    EXPECT_TRUE(fake.timers.scheduled().empty());
    EXPECT_TRUE(fake.alerts.shown().empty());
    EXPECT_TRUE(fake.journal.entries().isEmpty());
}

TEST_F(AppDelegateBase, keepsTheHelpMenuForDerivedApplicationsAndLeavesItAlone) {
    class HelpMenu final : public Menu {
    public:
        void insertItem(const MenuItem&, int) override { ++items; }
        int items = 0;
    } menu;
    delegate.setMyHelpMenu(&menu);
    delegate.adjustBeforeFinishingLaunching();
    EXPECT_EQ(delegate.myHelpMenu(), &menu);
    EXPECT_EQ(menu.items, 0);
}

TEST_F(AppDelegateBase, opensTheChosenDocumentUnderAccessThatEndsWithTheOpening) {
    chooseStartupDocument();
    delegate.executeDocumentStartupAsInPref();
    EXPECT_TRUE(journalHas(QStringLiteral("open document ") + kDocument + QStringLiteral(" with display")));
    EXPECT_EQ(fake.bookmarks.openAccesses(), 1);
    fake.documents.finishOpening();
    EXPECT_EQ(fake.bookmarks.openAccesses(), 0);
}

TEST_F(AppDelegateBase, opensNoDocumentForAService) {
    chooseStartupDocument();
    delegate.setUsingAServices(true);
    delegate.executeDocumentStartupAsInPref();
    EXPECT_EQ(fake.bookmarks.openAccesses(), 0);
    EXPECT_TRUE(fake.alerts.shown().empty());
}

TEST_F(AppDelegateBase, tellsAfterLaunchThatTheDocumentWasNeverSpecified) {
    set(u"StartupActionTag", 3);
    set(u"StartupSelectedDocPath", QStringLiteral(""));
    delegate.executeDocumentStartupAsInPref();
    EXPECT_TRUE(fake.alerts.shown().empty());
    fake.alerts.answerNextModal(kAlertFirstButtonReturn);
    fake.mainQueue.runAll();
    const Alert expected{QStringLiteral("Preference was set to open at startup a document without specifying it"),
                         QStringLiteral("You can fix the problem in the preferences"),
                         AlertStyle::warning,
                         {QStringLiteral("Open Preferences"), QStringLiteral("Cancel")}};
    EXPECT_EQ(lastAlert(), expected);
    EXPECT_EQ(stateLine(), kPleaseSelect);
    EXPECT_EQ(delegate.StartupDocSpecified(), Boxed(false));
    EXPECT_EQ(prefWindow.raised(), 1);
}

TEST_F(AppDelegateBase, tellsThatADeletedDocumentCannotBeReachedAndCallsItSpecified) {
    chooseStartupDocument();
    fake.files.remove(kDocument);
    fake.alerts.answerNextModal(kAlertSecondButtonReturn);
    delegate.executeDocumentStartupAsInPref();
    const Alert expected{
        QStringLiteral("The system is negating the access to the document selected to be opened at startup"),
        QStringLiteral("It must be re-selected in the preferences"),
        AlertStyle::warning,
        {QStringLiteral("Open Preferences"), QStringLiteral("Cancel")}};
    EXPECT_EQ(lastAlert(), expected);
    EXPECT_EQ(stateLine(), QStringLiteral("Not valid bookmark. Please re-select"));
    EXPECT_EQ(delegate.StartupDocSpecified(), Boxed(true));
    EXPECT_EQ(prefWindow.raised(), 0) << "Cancel opens nothing";
}

TEST_F(AppDelegateBase, tellsThatAccessToTheDocumentIsRefused) {
    chooseStartupDocument();
    fake.bookmarks.refuseAccess();
    fake.journal.clear();
    fake.alerts.answerNextModal(kAlertFirstButtonReturn);
    delegate.executeDocumentStartupAsInPref();
    EXPECT_EQ(lastAlert().messageText,
              QStringLiteral("The system is negating the access to the document selected to be opened at startup"));
    EXPECT_EQ(stateLine(), QStringLiteral("Not valid bookmark. Please re-select"));
    EXPECT_EQ(delegate.StartupDocSpecified(), Boxed(true));
    EXPECT_EQ(prefWindow.raised(), 1);
    EXPECT_TRUE(fake.journal.entries().isEmpty()) << "nothing is opened";
}

TEST_F(AppDelegateBase, takesNoDocumentEverChosenForOneThatCannotBeReached) {
    set(u"StartupActionTag", 3);
    delegate.executeDocumentStartupAsInPref();
    EXPECT_EQ(fake.mainQueue.queuedCount(), 0U) << "a missing path is not the empty path";
    EXPECT_EQ(lastAlert().messageText,
              QStringLiteral("The system is negating the access to the document selected to be opened at startup"));
    EXPECT_EQ(delegate.StartupDocSpecified(), Boxed(true));
}

TEST_F(AppDelegateBase, opensTheDocumentOfItsBookmarkWithoutAPath) {
    chooseStartupDocument();
    set(u"StartupSelectedDocPath", {});
    delegate.executeDocumentStartupAsInPref();
    EXPECT_TRUE(journalHas(QStringLiteral("open document ") + kDocument + QStringLiteral(" with display")));
    EXPECT_TRUE(fake.alerts.shown().empty());
}

TEST_F(AppDelegateBase, storesAPathThatIsMissing) {
    chooseStartupDocument();
    set(u"StartupSelectedDocPath", {});
    delegate.showInFinderStartupDoc();
    EXPECT_EQ(get(u"StartupSelectedDocPath"), Boxed(kDocument));
    set(u"StartupSelectedDocPath", {});
    delegate.testOpenStartupDoc();
    EXPECT_EQ(get(u"StartupSelectedDocPath"), Boxed(kDocument));
}

TEST_F(AppDelegateBase, tellsAServiceNothingOfAnUnspecifiedDocument) {
    set(u"StartupActionTag", 3);
    set(u"StartupSelectedDocPath", QStringLiteral(""));
    delegate.setUsingAServices(true);
    delegate.executeDocumentStartupAsInPref();
    EXPECT_EQ(fake.mainQueue.queuedCount(), 0U);
    EXPECT_EQ(stateLine(), QString());
    EXPECT_EQ(delegate.StartupDocSpecified(), Boxed(true));
}

TEST_F(AppDelegateBase, saysThatTheDocumentIsUnspecifiedBeforeItAsks) {
    set(u"StartupActionTag", 3);
    set(u"StartupSelectedDocPath", QStringLiteral(""));
    delegate.executeDocumentStartupAsInPref();
    EXPECT_EQ(stateLine(), QString()) << "once launch has finished";
    fake.alerts.setModalHandler([this] {
        EXPECT_EQ(stateLine(), kPleaseSelect);
        EXPECT_EQ(delegate.StartupDocSpecified(), Boxed(false));
    });
    fake.mainQueue.runAll();
    EXPECT_EQ(fake.alerts.shown().size(), 1U);
    EXPECT_EQ(prefWindow.raised(), 0) << "dismissed";
}

TEST_F(AppDelegateBase, thePreferencesShowTheUnreachableDocumentsStateWhileTheAlertIsUp) {
    chooseStartupDocument();
    fake.files.remove(kDocument);
    delegate.setStartupDocSpecified(false);
    Boxed specified;
    fake.alerts.setModalHandler([&] { specified = delegate.StartupDocSpecified(); });
    delegate.executeDocumentStartupAsInPref();
    EXPECT_EQ(specified, Boxed(true));
}

TEST_F(AppDelegateBase, opensAMovedDocumentAndSaysThatItsBookmarkIsStale) {
    chooseStartupDocument();
    fake.files.move(kDocument, QStringLiteral("/home/user/moved.txt"));
    delegate.executeDocumentStartupAsInPref();
    EXPECT_TRUE(journalHas(QStringLiteral("open document /home/user/moved.txt with display")));
    EXPECT_EQ(stateLine(), kStale);
}

TEST_F(AppDelegateBase, takesTheChosenStartupDocument) {
    delegate.clearStartupSelectedDoc();
    delegate.selectStartupDoc();
    ASSERT_EQ(fake.panels.shown().size(), 1U);
    const OpenPanel& panel = fake.panels.shown()[0].panel;
    EXPECT_TRUE(panel.canChooseFiles);
    EXPECT_FALSE(panel.canChooseDirectories);
    EXPECT_EQ(panel.prompt, QStringLiteral("Select"));
    EXPECT_EQ(panel.allowedFileTypes, QStringList{QStringLiteral("")});
    EXPECT_EQ(fake.panels.shown()[0].window, &prefWindow);
    fake.panels.choose(kDocument);
    EXPECT_EQ(get(u"StartupSelectedDocPath"), Boxed(kDocument));
    EXPECT_FALSE(get(u"StartupSelectedDocBookmark").data().value_or(QByteArray()).isEmpty());
    EXPECT_EQ(fake.bookmarks.created().back().options, 0x800U);
    EXPECT_EQ(stateLine(), QString());
    EXPECT_EQ(delegate.StartupDocSpecified(), Boxed(true));
}

TEST_F(AppDelegateBase, changesNothingWhenTheChoiceIsCancelled) {
    delegate.clearStartupSelectedDoc();
    const auto written = fake.defaults.written();
    delegate.selectStartupDoc();
    fake.panels.cancel();
    EXPECT_EQ(fake.defaults.written(), written);
    EXPECT_EQ(stateLine(), kPleaseSelect);
}

TEST_F(AppDelegateBase, clearsTheStartupDocumentToEmptyValues) {
    chooseStartupDocument();
    delegate.clearStartupSelectedDoc();
    EXPECT_EQ(get(u"StartupSelectedDocPath"), Boxed(QStringLiteral("")));
    EXPECT_EQ(get(u"StartupSelectedDocBookmark"), Boxed(QByteArray("")));
    EXPECT_EQ(stateLine(), kPleaseSelect);
    EXPECT_EQ(delegate.StartupDocSpecified(), Boxed(false));
}

TEST_F(AppDelegateBase, revealsTheStartupDocumentAndStoresWhereItIsNow) {
    chooseStartupDocument();
    fake.files.move(kDocument, QStringLiteral("/home/user/moved.txt"));
    delegate.showInFinderStartupDoc();
    EXPECT_EQ(get(u"StartupSelectedDocPath"), Boxed(QStringLiteral("/home/user/moved.txt")));
    EXPECT_EQ(stateLine(), kStale);
    EXPECT_TRUE(journalHas(QStringLiteral("select '/home/user/moved.txt' in ''")));
}

TEST_F(AppDelegateBase, removesThePathOfABookmarkThatDoesNotResolve) {
    chooseStartupDocument();
    fake.files.remove(kDocument);
    fake.journal.clear();
    delegate.showInFinderStartupDoc();
    EXPECT_TRUE(get(u"StartupSelectedDocPath").isNil());
    EXPECT_TRUE(fake.journal.entries().isEmpty());
}

TEST_F(AppDelegateBase, triesTheStartupDocumentOut) {
    chooseStartupDocument();
    delegate.testOpenStartupDoc();
    EXPECT_TRUE(journalHas(QStringLiteral("open document ") + kDocument + QStringLiteral(" with display")));
    fake.documents.finishOpening();
    EXPECT_EQ(fake.bookmarks.openAccesses(), 0);
}

TEST_F(AppDelegateBase, showsNothingWhenTheStartupDocumentCannotBeTriedOut) {
    chooseStartupDocument();
    fake.bookmarks.refuseAccess();
    delegate.testOpenStartupDoc();
    EXPECT_TRUE(fake.alerts.shown().empty());
    EXPECT_FALSE(journalHas(QStringLiteral("open document ") + kDocument + QStringLiteral(" with display")));
}

TEST_F(AppDelegateBase, namesTheUserGuideAfterFolderAndRelease) {
    EXPECT_EQ(delegate.getUserGuideDirPath(), QStringLiteral("/home/user/Library/Application Support/Guide"));
    EXPECT_EQ(delegate.getUserGuideFinalPath(),
              QStringLiteral("/home/user/Library/Application Support/Guide/Guide 1.5.pdf"));
}

TEST_F(AppDelegateBase, copiesTheUserGuideOnce) {
    fake.files.addFile(QStringLiteral("/program/Guide.pdf"), "pdf");
    fake.bundle.addResource(QStringLiteral("Guide.pdf"), QStringLiteral("/program/Guide.pdf"));
    delegate.openUserGuide();
    delegate.openUserGuide();
    const QString final = delegate.getUserGuideFinalPath();
    EXPECT_EQ(fake.files.contentsOfFile(final), QByteArray("pdf"));
    EXPECT_EQ(fake.journal.entries().count(QStringLiteral("create folder ") + delegate.getUserGuideDirPath()), 1);
    EXPECT_EQ(fake.journal.entries().count(QStringLiteral("copy /program/Guide.pdf to ") + final), 1);
    EXPECT_EQ(fake.journal.entries().count(QStringLiteral("open ") + final), 2);
}

TEST_F(AppDelegateBase, removesTheGuidesOfEarlierReleases) {
    fake.files.addFile(QStringLiteral("/program/Guide.pdf"), "pdf");
    fake.bundle.addResource(QStringLiteral("Guide.pdf"), QStringLiteral("/program/Guide.pdf"));
    delegate.openUserGuide();
    fake.files.addFile(delegate.getUserGuideDirPath() + QStringLiteral("/.DS_Store"));
    delegate.guideName = QStringLiteral("Guide 1.6");
    delegate.openUserGuide();
    EXPECT_EQ(fake.files.contentsOfDirectory(delegate.getUserGuideDirPath()),
              (QStringList{QStringLiteral(".DS_Store"), QStringLiteral("Guide 1.6.pdf")}));
}

TEST_F(AppDelegateBase, triesToOpenTheGuideAlsoWhenItCouldNotBeCopied) {
    fake.files.setDiskFull();
    delegate.openUserGuide();
    EXPECT_TRUE(journalHas(QStringLiteral("open ") + delegate.getUserGuideFinalPath()));
}

TEST(MWAppDelegateBase, hasNoGuideNameOfItsOwnAndHooksThatDoNothing) {
    FakePlatform fake;
    MWAppDelegateBase base(fake.platform(), fake.supportUtility, fake.valueTransformers);
    EXPECT_EQ(base.getUserGuideName(), QString());
    EXPECT_EQ(base.getUserGuideNameWithThisRelNum(), QString());
    EXPECT_EQ(base.allowedStartupDocExtensions(), QStringList{QStringLiteral("")});
    base.openAppStorePage();
    base.openAppStoreList();
    base.appendMasHelp();
    base.UseFrontDocumentAsStartupDoc();
    EXPECT_TRUE(fake.journal.entries().isEmpty());
    EXPECT_TRUE(fake.workspace.openedUrls().isEmpty());
}

} // namespace quillow
