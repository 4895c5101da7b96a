// The destination of texts: a fixed folder, or one that the user chooses for each drop.
#include "platform/Alerts.h"
#include "tests/app/DelegateFixture.h"
#include "tests/prefs/SharedChecker.h"

namespace quillow {
namespace {

const QString kPleaseSelectFile = u"Please select a file or change startup option"_s;
const QString kPleaseSelectFolder = u"Please select a folder or change startup option"_s;

struct DestinationTest : DelegateFixture {
    FakeWindow preferences;

    DestinationTest() {
        delegate.setPrefWindow(&preferences);
        for (const QString& path : {u"/in/a.rtf"_s, u"/in/b.rtf"_s, u"/in/c.rtf"_s})
            fakes.files.addFile(path, "text");
    }
    void launch() {
        delegate.applicationWillFinishLaunching({});
        delegate.applicationDidFinishLaunching({});
    }
    void store(const QString& folder) { fakes.defaults.setObject(bookmarkOf(folder), u"destBookmark"_s); }
    void fixDestination() { fakes.defaults.setObject(1, u"destinationType"_s); }
    void launchWithFixedFolder(const QString& folder) {
        fixDestination();
        store(folder);
        launch();
    }
    [[nodiscard]] Boxed stored(const QString& key) const { return fakes.defaults.objectForKey(key); }
    [[nodiscard]] QString stateLine() const { return delegate.destMessageString().value_or(u"nil"_s); }
};

struct AskingDestinationTest : DestinationTest {
    AskingDestinationTest() { launch(); }
};

// Launch.

TEST_F(DestinationTest, launchRaisesTheWindowAndTakesTheTextColour) {
    delegate.setProperTextColor({Color::Source::literal, 0xFFFF0000});
    delegate.applicationWillFinishLaunching({});
    EXPECT_EQ(window.raised(), 1);
    EXPECT_EQ(delegate.properTextColor(), Color{Color::Source::controlText});
}

TEST_F(DestinationTest, launchShowsTheMainWindowAndKeepsItOutOfTheWindowMenu) {
    launch();
    EXPECT_TRUE(window.isVisible());
    EXPECT_TRUE(window.isExcludedFromWindowsMenu());
    EXPECT_TRUE(delegate.finishedLaunching());
}

TEST_F(DestinationTest, showMainWindowRaisesIt) {
    delegate.showMainWindow();
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(window.raised(), 1);
    EXPECT_FALSE(delegate.applicationShouldTerminateAfterLastWindowClosed());
}

TEST_F(DestinationTest, firstLaunchAsksWhenSavingAndPromptsForAFile) {
    launch();
    EXPECT_EQ(delegate.displayDestinationPath(), u"<ASK WHEN SAVING>"_s);
    EXPECT_FALSE(delegate.effectiveDestinationPath());
    EXPECT_EQ(stateLine(), kPleaseSelectFile);
    EXPECT_EQ(delegate.destMessageStringSpecified(), Boxed(true));
}

TEST_F(DestinationTest, launchShowsTheFixedFolder) {
    launchWithFixedFolder(u"/texts"_s);
    EXPECT_EQ(delegate.displayDestinationPath(), u"/texts"_s);
    EXPECT_EQ(delegate.effectiveDestinationPath(), u"/texts"_s);
    EXPECT_FALSE(delegate.effectiveDestinationBookmark()) << "taken only with a drop";
    EXPECT_EQ(stateLine(), u"Valid Bookmark"_s);
    EXPECT_EQ(fakes.bookmarks.openAccesses(), 0);
}

TEST_F(DestinationTest, launchShowsAMovedFolderWhereItIsNowAndCallsItStale) {
    store(u"/texts"_s);
    fakes.files.move(u"/texts"_s, u"/moved"_s);
    fixDestination();
    const Boxed before = stored(u"destBookmark"_s);
    launch();
    EXPECT_EQ(delegate.displayDestinationPath(), u"/moved"_s);
    EXPECT_EQ(stateLine(), u"Stale Bookmark. Please re-select"_s);
    EXPECT_EQ(stored(u"destBookmark"_s), before) << "a stale bookmark is not refreshed";
}

TEST_F(DestinationTest, launchTellsThatADeletedFolderCannotBeOpened) {
    store(u"/texts"_s);
    fakes.files.remove(u"/texts"_s);
    launch();
    EXPECT_EQ(stateLine(), u"Unvalid Bookmark. Please re-select"_s);
    EXPECT_EQ(delegate.destMessageStringSpecified(), Boxed(true));
}

TEST_F(DestinationTest, launchTellsThatAccessToTheFolderIsRefused) {
    store(u"/texts"_s);
    fakes.bookmarks.refuseAccess();
    launch();
    EXPECT_EQ(stateLine(), u"Unvalid Bookmark. Please re-select"_s);
}

TEST_F(DestinationTest, noneIsFalseFromTheStart) {
    EXPECT_EQ(delegate.None(), Boxed(false));
}

TEST_F(DestinationTest, registersTheTransformersOfItsBindings) {
    const auto isNot1 = fakes.valueTransformers.valueTransformerForName(u"valueIsNot1"_s);
    const auto is1 = fakes.valueTransformers.valueTransformerForName(u"valueIs1"_s);
    const auto b2p = fakes.valueTransformers.valueTransformerForName(u"b2p"_s);
    ASSERT_TRUE(isNot1 && is1 && b2p);
    EXPECT_EQ(isNot1->transformedValue(1), Boxed(0));
    EXPECT_EQ(isNot1->transformedValue(0), Boxed(1));
    EXPECT_EQ(is1->transformedValue(1), Boxed(1));
    EXPECT_EQ(b2p->transformedValue(bookmarkOf(u"/texts"_s)), Boxed(u"/texts"_s));
}

TEST(QuillowAppDelegateInitialize, registersThreeDefaultsAndConfiguresTheUpdateCheck) {
    const SharedChecker& shared = SharedChecker::idle();
    FakeDefaults defaults;
    QuillowAppDelegate::initialize(defaults, {u"one"_s, u"two"_s, u"three"_s, u"four"_s});
    EXPECT_EQ(defaults.registered(),
              (Boxed::Dictionary{
                  {u"notifyUpdate"_s, true}, {u"lastVersionUsedToUpdatePref"_s, 0}, {u"destinationType"_s, 0}}));
    EXPECT_TRUE(defaults.written().isEmpty()) << "registered, not stored";
    const MWPhoneHome& phoneHome = shared.checker();
    EXPECT_EQ(phoneHome.myAppRelease(), Boxed(10501));
    EXPECT_EQ(phoneHome.myAppName(), u"Quillow"_s);
    EXPECT_EQ(phoneHome.myPlistUrl1(), u"one"_s);
    EXPECT_EQ(phoneHome.myPlistUrl2(), u"two"_s);
    EXPECT_EQ(phoneHome.myPlistUrl3(), u"three"_s);
    EXPECT_EQ(phoneHome.myPlistUrl4(), u"four"_s);
}

TEST_F(DestinationTest, launchStartsTheDailyCheckUnlessTheBuildLeavesItOut) {
    const SharedChecker& shared = SharedChecker::idle();
    const std::size_t alerts = shared.platform.alerts.shown().size();
    ASSERT_EQ(fakes.updateCheck, UpdateCheck::leftOut);
    launch();
    EXPECT_EQ(shared.background.queuedCount(), 0U);
    EXPECT_FALSE(shared.checker().isChekingUpdateSystem());
    EXPECT_EQ(shared.platform.alerts.shown().size(), alerts) << "no invitation either";

    fakes.updateCheck = UpdateCheck::wired;
    QuillowAppDelegate wired(fakes.platform(), fakes.supportUtility, fakes.valueTransformers, fakes.undoManager);
    wired.applicationDidFinishLaunching({});
    EXPECT_EQ(shared.background.queuedCount(), 1U);
}

// The fixed folder.

TEST_F(DestinationTest, dropIntoTheFixedFolderConvertsAtOnce) {
    launchWithFixedFolder(u"/texts"_s);
    dropArea.addLinkToFiles({u"/in/a.rtf"_s});
    EXPECT_EQ(delegate.fileToProcessPath(), u"/in/a.rtf"_s);
    EXPECT_EQ(delegate.effectiveDestinationPath(), u"/texts"_s);
    EXPECT_EQ(delegate.effectiveDestinationBookmark(), stored(u"destBookmark"_s).data());
    EXPECT_EQ(output(u"/texts/a.txt"_s), QByteArray("text"));
    EXPECT_TRUE(fakes.panels.shown().empty());
    EXPECT_TRUE(delegate.fileToProcessPathArray().isEmpty());
}

TEST_F(DestinationTest, droppedPathsAreConvertedOneByOne) {
    launchWithFixedFolder(u"/texts"_s);
    fakes.journal.clear();
    dropArea.addLinkToFiles({u"/in/b.rtf"_s, u"/in/notes.txt"_s, u"/in/a.rtf"_s});
    EXPECT_EQ(logLines(), (QStringList{converted(u"/in/b.rtf"_s, u"/texts/b.txt"_s),
                                       converted(u"/in/a.rtf"_s, u"/texts/a.txt"_s)}));
    EXPECT_EQ(fakes.journal.entries().count(u"startAccess /texts"_s), 2);
}

TEST_F(DestinationTest, theEndWaitsForTheDocumentAndNotForTheDrop) {
    launchWithFixedFolder(u"/texts"_s);
    fakes.rtf.onRead([this] { fakes.termination.requested = true; });
    dropArea.addLinkToFiles({u"/in/a.rtf"_s, u"/in/b.rtf"_s});
    EXPECT_EQ(logLines(), QStringList{converted(u"/in/a.rtf"_s, u"/texts/a.txt"_s)});
    EXPECT_FALSE(output(u"/texts/b.txt"_s));
}

TEST_F(DestinationTest, otherNotificationsAreIgnored) {
    dropArea.addLinkToFiles({u"/in/a.rtf"_s}); // before the delegate observes it
    launchWithFixedFolder(u"/texts"_s);
    fakes.journal.clear();
    FakeViewArea otherArea;
    const MWDragDropView otherView(otherArea);
    delegate.observeValueForKeyPath(u"myFilePathDropped"_s, &otherView, {}, nullptr);
    delegate.observeValueForKeyPath(u"otherKey"_s, &dropArea, {}, nullptr);
    EXPECT_FALSE(delegate.fileToProcessPath());
    EXPECT_TRUE(fakes.journal.entries().isEmpty());
    delegate.observeValueForKeyPath(u"myFilePathDropped"_s, &dropArea, {}, nullptr);
    EXPECT_EQ(delegate.fileToProcessPath(), u"/in/a.rtf"_s);
}

TEST_F(DestinationTest, dropsEndWithTermination) {
    launchWithFixedFolder(u"/texts"_s);
    delegate.applicationWillTerminate({});
    dropArea.addLinkToFiles({u"/in/a.rtf"_s});
    EXPECT_FALSE(delegate.fileToProcessPath());
}

TEST_F(DestinationTest, dropWithoutAFixedFolderOffersThePreferences) {
    fixDestination();
    launch();
    dropArea.addLinkToFiles({u"/in/a.rtf"_s});
    const Alert expected{u"Destination folder not yet set"_s,
                         u"It is necessary to indicate in the preferences the destination folder where to save "
                         u"converted text files"_s,
                         AlertStyle::warning,
                         {u"Open Preferences"_s, u"Cancel"_s}};
    ASSERT_EQ(fakes.alerts.shown().size(), 1U);
    EXPECT_EQ(fakes.alerts.shown()[0].alert, expected);
    EXPECT_EQ(fakes.alerts.shown()[0].window, &window);
    fakes.alerts.answer(kAlertFirstButtonReturn);
    EXPECT_EQ(preferences.raised(), 0) << "opened from the main queue";
    fakes.mainQueue.runAll();
    EXPECT_EQ(preferences.raised(), 1);
    EXPECT_TRUE(fakes.rtf.read().empty()) << "the dropped file is not kept for later";
}

TEST_F(DestinationTest, cancelOpensNoPreferences) {
    fixDestination();
    launch();
    dropArea.addLinkToFiles({u"/in/a.rtf"_s});
    fakes.alerts.answer(kAlertSecondButtonReturn);
    fakes.mainQueue.runAll();
    EXPECT_EQ(preferences.raised(), 0);
}

TEST_F(DestinationTest, everyDropIntoADeletedFolderIsTold) {
    launchWithFixedFolder(u"/texts"_s);
    fakes.files.remove(u"/texts"_s);
    dropArea.addLinkToFiles({u"/in/a.rtf"_s, u"/in/b.rtf"_s});
    EXPECT_EQ(fakes.alerts.shown().size(), 2U);
    EXPECT_TRUE(fakes.rtf.read().empty());
}

TEST_F(DestinationTest, fixedFolderThatIsAFileIsTold) {
    fakes.files.addFile(u"/file"_s);
    launchWithFixedFolder(u"/file"_s);
    dropArea.addLinkToFiles({u"/in/a.rtf"_s});
    EXPECT_EQ(fakes.alerts.shown().size(), 1U);
}

TEST_F(DestinationTest, movedFixedFolderIsUsedWhereItIsNow) {
    launchWithFixedFolder(u"/texts"_s);
    fakes.files.move(u"/texts"_s, u"/moved"_s);
    dropArea.addLinkToFiles({u"/in/a.rtf"_s});
    EXPECT_EQ(output(u"/moved/a.txt"_s), QByteArray("text"));
    EXPECT_EQ(logLines(), (QStringList{converted(u"/in/a.rtf"_s, u"/moved/a.txt"_s)}));
}

TEST_F(DestinationTest, otherTypesThanOneAskWhenSaving) {
    store(u"/texts"_s);
    fakes.defaults.setObject(2, u"destinationType"_s);
    launch();
    EXPECT_EQ(delegate.displayDestinationPath(), u"<ASK WHEN SAVING>"_s);
    dropArea.addLinkToFiles({u"/in/a.rtf"_s});
    EXPECT_EQ(fakes.panels.shown().size(), 1U);
}

// Asking when saving.

TEST_F(AskingDestinationTest, asksForOneFolder) {
    dropArea.addLinkToFiles({u"/in/a.rtf"_s});
    ASSERT_EQ(fakes.panels.shown().size(), 1U);
    const OpenPanel& panel = fakes.panels.shown()[0].panel;
    EXPECT_FALSE(panel.directoryURL);
    EXPECT_TRUE(panel.canChooseDirectories);
    EXPECT_FALSE(panel.canChooseFiles);
    EXPECT_EQ(panel.prompt, u"Select"_s);
    EXPECT_EQ(panel.message, u"Please select the destination folder"_s);
    EXPECT_EQ(fakes.panels.shown()[0].window, &window);
}

TEST_F(AskingDestinationTest, oneAnswerConvertsAllThatWasDropped) {
    dropArea.addLinkToFiles({u"/in/c.rtf"_s, u"/in/a.rtf"_s, u"/in/b.rtf"_s});
    EXPECT_EQ(delegate.fileToProcessPathArray(), (QStringList{u"/in/c.rtf"_s, u"/in/a.rtf"_s, u"/in/b.rtf"_s}));
    EXPECT_EQ(fakes.panels.openCount(), 3U);
    EXPECT_TRUE(fakes.rtf.read().empty());
    fakes.panels.choose(u"/texts"_s);
    const QStringList all{converted(u"/in/c.rtf"_s, u"/texts/c.txt"_s), converted(u"/in/a.rtf"_s, u"/texts/a.txt"_s),
                          converted(u"/in/b.rtf"_s, u"/texts/b.txt"_s)};
    EXPECT_EQ(logLines(), all);
    EXPECT_TRUE(delegate.fileToProcessPathArray().isEmpty());
    fakes.panels.choose(u"/texts"_s);
    fakes.panels.cancel();
    EXPECT_EQ(logLines(), all) << "the later panels find the list emptied";
}

TEST_F(AskingDestinationTest, answerPutsTheFolderInForce) {
    dropArea.addLinkToFiles({u"/in/a.rtf"_s});
    fakes.panels.choose(u"/texts"_s);
    EXPECT_EQ(delegate.effectiveDestinationPath(), u"/texts"_s);
    EXPECT_EQ(delegate.effectiveDestinationBookmark(), bookmarkOf(u"/texts"_s));
    EXPECT_EQ(delegate.latestAskDestinationPath(), u"/texts"_s);
    EXPECT_EQ(fakes.bookmarks.created().at(0).options, kBookmarkCreationWithSecurityScope);
    EXPECT_EQ(delegate.displayDestinationPath(), u"<ASK WHEN SAVING>"_s);
    EXPECT_TRUE(stored(u"destBookmark"_s).isNil());
}

TEST_F(AskingDestinationTest, cancelDropsThePathsAndALaterDropStartsAfresh) {
    dropArea.addLinkToFiles({u"/in/a.rtf"_s, u"/in/b.rtf"_s});
    fakes.panels.cancel();
    fakes.panels.cancel();
    EXPECT_TRUE(logLines().isEmpty());
    EXPECT_TRUE(delegate.fileToProcessPathArray().isEmpty());
    dropArea.addLinkToFiles({u"/in/c.rtf"_s});
    fakes.panels.choose(u"/texts"_s);
    EXPECT_EQ(logLines(), (QStringList{converted(u"/in/c.rtf"_s, u"/texts/c.txt"_s)}));
}

TEST_F(AskingDestinationTest, choiceThatIsNoFolderDropsThePaths) {
    fakes.files.addFile(u"/file"_s);
    for (const QString& path : {u"/missing"_s, u"/file"_s}) {
        dropArea.addLinkToFiles({u"/in/a.rtf"_s});
        fakes.panels.choose(path);
        EXPECT_TRUE(delegate.fileToProcessPathArray().isEmpty());
    }
    EXPECT_TRUE(logLines().isEmpty());
    EXPECT_FALSE(delegate.effectiveDestinationPath());
}

TEST_F(AskingDestinationTest, nextPanelStartsInTheLatestFolder) {
    dropArea.addLinkToFiles({u"/in/a.rtf"_s});
    fakes.panels.choose(u"/texts"_s);
    dropArea.addLinkToFiles({u"/in/b.rtf"_s});
    EXPECT_EQ(fakes.panels.shown().back().panel.directoryURL, QUrl::fromLocalFile(u"/texts"_s));
}

TEST_F(AskingDestinationTest, folderWhosePathIsNoUrlLeavesTheStartToThePlatform) {
    for (const QString& folder : {u"/my texts"_s, u"/T\u00e9xte"_s, u"/100%"_s, u"/50%zz"_s}) {
        fakes.files.addFolder(folder);
        dropArea.addLinkToFiles({u"/in/a.rtf"_s});
        fakes.panels.choose(folder);
        EXPECT_EQ(delegate.latestAskDestinationPath(), folder);
        dropArea.addLinkToFiles({u"/in/b.rtf"_s});
        EXPECT_FALSE(fakes.panels.shown().back().panel.directoryURL) << folder.toStdString();
        fakes.panels.cancel();
    }
}

// deliberate: the path is parsed as a URL string, so some of its characters have the meaning that they have in a URL.
TEST_F(AskingDestinationTest, nextPanelStartsAtThePathThatTheUrlStringGives) {
    const std::vector<std::pair<QString, std::optional<QString>>> cases{
        {u"/a%20b"_s, u"/a b"_s},      {u"/a%2Fb"_s, u"/a/b"_s},   {u"/C#/texts"_s, u"/C"_s},
        {u"/what?/now"_s, u"/what"_s}, {u"/a:b@c"_s, u"/a:b@c"_s}, {u"/it's(1)+~;=,!$&*"_s, u"/it's(1)+~;=,!$&*"_s},
        {u"/a#b#c"_s, std::nullopt},   {u"/a[1]"_s, std::nullopt}, {u"/a|b"_s, std::nullopt},
        {u"/a\"b"_s, std::nullopt},    {u"/a%"_s, std::nullopt},   {u"/a%2"_s, std::nullopt},
        {u"/a\\b"_s, std::nullopt},    {u"/{a}"_s, std::nullopt},  {u"/a\tb"_s, std::nullopt},
        {u"/09AZaz"_s, u"/09AZaz"_s},  {u"/a%7E"_s, u"/a~"_s},     {u"/%4a%4F"_s, u"/JO"_s},
    };
    for (const auto& [folder, start] : cases) {
        fakes.files.addFolder(folder);
        dropArea.addLinkToFiles({u"/in/a.rtf"_s});
        fakes.panels.choose(folder);
        ASSERT_EQ(delegate.latestAskDestinationPath(), folder);
        dropArea.addLinkToFiles({u"/in/b.rtf"_s});
        const std::optional<QUrl> url = fakes.panels.shown().back().panel.directoryURL;
        EXPECT_EQ(url ? std::optional(url->path(QUrl::FullyDecoded)) : std::nullopt, start) << folder.toStdString();
        fakes.panels.cancel();
    }
}

TEST_F(AskingDestinationTest, cancelledOrUselessAnswerLeavesTheLatestFolder) {
    dropArea.addLinkToFiles({u"/in/a.rtf"_s});
    fakes.panels.choose(u"/texts"_s);
    dropArea.addLinkToFiles({u"/in/b.rtf"_s});
    fakes.panels.cancel();
    dropArea.addLinkToFiles({u"/in/b.rtf"_s});
    fakes.panels.choose(u"/missing"_s);
    EXPECT_EQ(delegate.latestAskDestinationPath(), u"/texts"_s);
    EXPECT_EQ(delegate.effectiveDestinationPath(), u"/texts"_s);
}

TEST_F(AskingDestinationTest, dropAtEachTypeReadsTheTypeAnew) {
    store(u"/texts"_s);
    fixDestination();
    dropArea.addLinkToFiles({u"/in/a.rtf"_s});
    EXPECT_EQ(logLines(), (QStringList{converted(u"/in/a.rtf"_s, u"/texts/a.txt"_s)}));
    EXPECT_EQ(delegate.displayDestinationPath(), u"<ASK WHEN SAVING>"_s) << "a drop changes nothing of what is shown";
    fakes.defaults.setObject(0, u"destinationType"_s);
    dropArea.addLinkToFiles({u"/in/b.rtf"_s});
    EXPECT_EQ(fakes.panels.openCount(), 1U);
    EXPECT_EQ(delegate.fileToProcessPathArray(), QStringList{u"/in/b.rtf"_s}) << "the fixed road gathers nothing";
}

TEST_F(AskingDestinationTest, folderThatGetsNoBookmarkConvertsNothing) {
    dropArea.addLinkToFiles({u"/in/a.rtf"_s});
    fakes.bookmarks.fail(FakeBookmarkStore::Failure::nothingWithoutError);
    fakes.panels.choose(u"/texts"_s);
    EXPECT_TRUE(logLines().isEmpty());
}

// The preferences.

TEST_F(DestinationTest, choosingAsksForOneFolderOnThePreferences) {
    delegate.selectFolderToSaveOutput();
    ASSERT_EQ(fakes.panels.shown().size(), 1U);
    const OpenPanel& panel = fakes.panels.shown()[0].panel;
    EXPECT_TRUE(panel.canChooseDirectories);
    EXPECT_FALSE(panel.canChooseFiles);
    EXPECT_EQ(panel.prompt, u"Select"_s);
    EXPECT_EQ(panel.message, u"Select the default destination to save converted text"_s);
    EXPECT_EQ(fakes.panels.shown()[0].window, &preferences);
}

TEST_F(DestinationTest, chosenFolderIsStoredByPathAndReadWriteBookmark) {
    launch();
    delegate.clearDestPath();
    delegate.selectFolderToSaveOutput();
    fakes.panels.choose(u"/texts"_s);
    EXPECT_EQ(stored(u"destPath"_s), Boxed(u"/texts"_s));
    EXPECT_EQ(stored(u"destBookmark"_s), Boxed(bookmarkOf(u"/texts"_s)));
    EXPECT_EQ(fakes.bookmarks.created().at(0).options, kBookmarkCreationWithSecurityScope);
    EXPECT_EQ(stateLine(), kPleaseSelectFolder) << "keeps its text";
    EXPECT_EQ(delegate.destMessageStringSpecified(), Boxed(true));
    EXPECT_EQ(delegate.displayDestinationPath(), u"<ASK WHEN SAVING>"_s) << "the type's control adjusts it";
}

TEST_F(DestinationTest, otherEndingsOfThePanelChangeNothing) {
    fakes.files.addFile(u"/file"_s);
    delegate.selectFolderToSaveOutput();
    fakes.panels.cancel();
    for (const QString& path : {u"/missing"_s, u"/file"_s}) {
        delegate.selectFolderToSaveOutput();
        fakes.panels.choose(path);
    }
    EXPECT_TRUE(fakes.defaults.written().isEmpty());
    EXPECT_TRUE(delegate.destMessageStringSpecified().isNil());
}

TEST_F(DestinationTest, clearingStoresEmptyValuesSoThatTheNextLaunchFindsNoValidBookmark) {
    launchWithFixedFolder(u"/texts"_s);
    delegate.clearDestPath();
    EXPECT_EQ(stored(u"destBookmark"_s), Boxed(QByteArray("")));
    EXPECT_EQ(stored(u"destPath"_s), Boxed(u""_s));
    EXPECT_EQ(stateLine(), kPleaseSelectFolder);
    EXPECT_EQ(delegate.destMessageStringSpecified(), Boxed(false));
    EXPECT_EQ(delegate.displayDestinationPath(), u"/texts"_s) << "the type's control adjusts it";
    launch();
    EXPECT_EQ(stateLine(), u"Unvalid Bookmark. Please re-select"_s);
}

TEST_F(DestinationTest, showingStoresWhereTheFolderIsNowAndRevealsItWithoutAccess) {
    store(u"/texts"_s);
    fakes.defaults.setObject(u"/texts"_s, u"destPath"_s);
    fakes.files.move(u"/texts"_s, u"/moved"_s);
    const QString before = stateLine();
    delegate.showDestPath();
    EXPECT_EQ(stored(u"destPath"_s), Boxed(u"/moved"_s));
    EXPECT_EQ(stateLine(), before);
    EXPECT_EQ(fakes.journal.entries(), QStringList{u"select '/moved' in ''"_s});
}

TEST_F(DestinationTest, showingADeletedFolderRemovesItsPath) {
    store(u"/texts"_s);
    fakes.defaults.setObject(u"/texts"_s, u"destPath"_s);
    fakes.files.remove(u"/texts"_s);
    delegate.showDestPath();
    EXPECT_TRUE(stored(u"destPath"_s).isNil());
    EXPECT_TRUE(fakes.journal.entries().isEmpty());
}

TEST_F(DestinationTest, showingTheSameFolderStoresNothingAnew) {
    store(u"/texts"_s);
    fakes.defaults.setObject(u"/texts"_s, u"destPath"_s);
    const qsizetype before = fakes.defaults.written().size();
    delegate.showDestPath();
    EXPECT_EQ(fakes.defaults.written().size(), before);
    EXPECT_EQ(fakes.journal.entries(), QStringList{u"select '/texts' in ''"_s});
}

TEST_F(DestinationTest, showingAStaleFolderDoesNotRefreshItsBookmark) {
    store(u"/texts"_s);
    fakes.files.move(u"/texts"_s, u"/moved"_s);
    const Boxed before = stored(u"destBookmark"_s);
    delegate.showDestPath();
    fixDestination();
    launch();
    dropArea.addLinkToFiles({u"/in/a.rtf"_s});
    EXPECT_EQ(stored(u"destBookmark"_s), before);
    EXPECT_EQ(output(u"/moved/a.txt"_s), QByteArray("text"));
}

TEST_F(DestinationTest, showingAClearedFolderRemovesItsPathAndKeepsTheStateLine) {
    store(u"/texts"_s);
    delegate.clearDestPath();
    delegate.showDestPath();
    EXPECT_TRUE(stored(u"destPath"_s).isNil()) << "no path at all, not an empty one";
    EXPECT_EQ(stateLine(), kPleaseSelectFolder);
    EXPECT_TRUE(fakes.journal.entries().isEmpty());
}

TEST_F(DestinationTest, showingWithoutAFolderEverChosenDoesNothing) {
    delegate.showDestPath();
    EXPECT_TRUE(stored(u"destPath"_s).isNil());
    EXPECT_TRUE(fakes.journal.entries().isEmpty());
}

TEST_F(DestinationTest, choosingOrClearingInFixedModeWaitsForTheTypesControl) {
    fakes.files.addFolder(u"/other"_s);
    launchWithFixedFolder(u"/texts"_s);
    delegate.selectFolderToSaveOutput();
    fakes.panels.choose(u"/other"_s);
    EXPECT_EQ(delegate.displayDestinationPath(), u"/texts"_s);
    dropArea.addLinkToFiles({u"/in/a.rtf"_s});
    EXPECT_EQ(output(u"/other/a.txt"_s), QByteArray("text")) << "a drop reads the folder anew";
    EXPECT_EQ(delegate.displayDestinationPath(), u"/texts"_s);
    delegate.clearDestPath();
    dropArea.addLinkToFiles({u"/in/b.rtf"_s});
    EXPECT_EQ(fakes.alerts.shown().size(), 1U);
    EXPECT_EQ(delegate.displayDestinationPath(), u"/texts"_s);
    delegate.adjustDestinationPath();
    EXPECT_FALSE(delegate.displayDestinationPath());
    EXPECT_FALSE(delegate.effectiveDestinationPath());
}

TEST_F(DestinationTest, textThatCannotBeWrittenIsNotDetected) {
    launchWithFixedFolder(u"/texts"_s);
    fakes.files.addFolder(u"/texts/a.txt"_s); // a file cannot replace a folder
    dropArea.addLinkToFiles({u"/in/a.rtf"_s});
    EXPECT_EQ(logLines(), (QStringList{converted(u"/in/a.rtf"_s, u"/texts/a.txt"_s)}));
    EXPECT_EQ(delegate.numberProcessed(), Boxed(1));
    EXPECT_FALSE(output(u"/texts/a.txt"_s));
    EXPECT_TRUE(fakes.alerts.shown().empty());
}

TEST_F(DestinationTest, switchingTheTypeAdjustsWhatIsShown) {
    store(u"/texts"_s);
    launch();
    fixDestination();
    delegate.adjustDestinationPath();
    EXPECT_EQ(delegate.displayDestinationPath(), u"/texts"_s);
    EXPECT_EQ(delegate.effectiveDestinationPath(), u"/texts"_s);
    fakes.defaults.setObject(0, u"destinationType"_s);
    delegate.adjustDestinationPath();
    EXPECT_EQ(delegate.displayDestinationPath(), u"<ASK WHEN SAVING>"_s);
    EXPECT_EQ(delegate.effectiveDestinationPath(), u"/texts"_s) << "nothing else changes";
}

TEST_F(DestinationTest, namesTheUserGuide) {
    EXPECT_EQ(delegate.getUserGuideName(), u"Quillow User Guide"_s);
    EXPECT_EQ(delegate.getUserGuideNameWithThisRelNum(), u"Quillow User Guide 1.5"_s);
}

} // namespace
} // namespace quillow
