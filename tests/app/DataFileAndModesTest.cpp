// The data file, which stores the log and the window's mode between runs, and the two modes.
#include "tests/app/DelegateFixture.h"
#include "tests/fakes/FakeButton.h"

#include <cstdint>
#include <limits>

namespace quillow {
namespace {

const QString kPath = u"/home/user/Library/Application Support/Quillow/Quillow.qwldat"_s;
const QString kNewerMessage = u"Data file the software tryed to open from the Application Support folder was created "
                              u"with a more recent version of this "
                              "application"_s;

struct DataFileAndModesTest : DelegateFixture {
    FakeButton discloseButton;
    static constexpr Rect kSmall{100, 400, 700, 255};
    static constexpr Rect kBig{100, 75, 700, 580};

    DataFileAndModesTest() {
        delegate.setMyDiscloseButton(&discloseButton);
        fakes.files.addFolder(u"/home/user"_s);
        window.setFrame(kSmall, Animate::no);
    }

    void store(const Boxed& root) {
        fakes.files.addFolder(u"/home/user/Library/Application Support/Quillow"_s);
        ASSERT_TRUE(fakes.archive.archiveRootObject(root, kPath));
    }
    void store(const Boxed& version, const Boxed& mode, const Boxed& text = u"\nstamp} old"_s) {
        Boxed::Dictionary entries{{u"logContent"_s, text}};
        if (!version.isNil()) entries.insert(u"appversion"_s, version);
        if (!mode.isNil()) entries.insert(u"bigWin"_s, mode);
        store(entries);
    }
    void launch() {
        delegate.applicationWillFinishLaunching({});
        delegate.applicationDidFinishLaunching({});
    }
    Boxed::Dictionary stored() {
        return fakes.archive.unarchiveObjectWithFile(kPath).dictionary().value_or(Boxed::Dictionary());
    }
    Boxed stored(const QString& key) { return stored().value(key); }
    void expectLimits(double height) {
        EXPECT_EQ(window.minSize(), (Size{615, height}));
        EXPECT_EQ(window.maxSize(), (Size{9999, height}));
    }
    void expectNothingRestored() {
        EXPECT_EQ(log.string(), QString());
        EXPECT_EQ(delegate.logContent(), std::nullopt);
        EXPECT_TRUE(delegate.bigWin().isNil());
        EXPECT_EQ(window.frame(), kSmall);
        EXPECT_EQ(discloseButton.statesSet(), 0);
    }
};

// The file.

TEST_F(DataFileAndModesTest, pathLiesInTheUsersApplicationSupportFolder) {
    EXPECT_EQ(delegate.pathForDataFile(), kPath);
}

TEST_F(DataFileAndModesTest, askingForThePathMakesTheFolderOnce) {
    ASSERT_EQ(delegate.pathForDataFile(), kPath);
    bool isDirectory = false;
    EXPECT_TRUE(fakes.files.fileExistsAtPath(u"/home/user/Library/Application Support/Quillow"_s, &isDirectory));
    EXPECT_TRUE(isDirectory);
    fakes.journal.clear();
    EXPECT_EQ(delegate.pathForDataFile(), kPath);
    EXPECT_TRUE(fakes.journal.entries().isEmpty());
}

TEST_F(DataFileAndModesTest, folderThatCannotBeMadeIsNotReported) {
    fakes.files.setDiskFull();
    EXPECT_EQ(delegate.pathForDataFile(), kPath);
    delegate.saveAppDataToDisk();
    EXPECT_EQ(fakes.mainQueue.queuedCount(), 0U) << "neither an entry of the log nor an alert is to come";
    fakes.mainQueue.runAll();
    EXPECT_TRUE(fakes.alerts.shown().empty());
    EXPECT_EQ(log.string(), QString());
}

TEST_F(DataFileAndModesTest, fileThatStandsInTheFoldersPlaceStays) {
    fakes.files.addFile(u"/home/user/Library/Application Support/Quillow"_s, "mine");
    delegate.saveAppDataToDisk();
    EXPECT_EQ(fakes.files.contentsOfFile(u"/home/user/Library/Application Support/Quillow"_s), "mine");
    EXPECT_TRUE(fakes.alerts.shown().empty());
}

// Saving.

TEST_F(DataFileAndModesTest, savesReleaseLogAndMode) {
    log.replaceCharactersInRange({0, 0}, u"\nstamp} new"_s);
    delegate.setBigWin(true);
    delegate.saveAppDataToDisk();
    const Boxed::Dictionary expected{
        {u"appversion"_s, 10501}, {u"logContent"_s, u"\nstamp} new"_s}, {u"bigWin"_s, true}};
    EXPECT_EQ(Boxed(stored()), Boxed(expected));
    delegate.setBigWin(false);
    delegate.saveAppDataToDisk();
    EXPECT_EQ(stored(u"bigWin"_s), Boxed(false));
}

TEST_F(DataFileAndModesTest, modeThatWasNeverSetIsLeftOut) {
    delegate.saveAppDataToDisk();
    EXPECT_EQ(stored().keys(), QStringList({u"appversion"_s, u"logContent"_s}));
    EXPECT_EQ(stored(u"logContent"_s), Boxed(u""_s));
}

TEST_F(DataFileAndModesTest, savesTheLogViewsTextNotTheRestoredOne) {
    delegate.setLogContent(u"\nold"_s);
    log.replaceCharactersInRange({4, 0}, u"\nnew"_s);
    delegate.saveAppDataToDisk();
    EXPECT_EQ(stored(u"logContent"_s), Boxed(u"\nold\nnew"_s));
    EXPECT_EQ(delegate.logContent(), u"\nold"_s);
}

TEST_F(DataFileAndModesTest, savingReplacesAnEarlierFile) {
    store(10499, true, u"earlier"_s);
    delegate.saveAppDataToDisk();
    EXPECT_EQ(stored(u"appversion"_s), Boxed(10501));
    EXPECT_EQ(stored(u"logContent"_s), Boxed(u""_s));
}

TEST_F(DataFileAndModesTest, writeThatFailsIsNotReported) {
    store(10501, true, u"earlier"_s);
    fakes.files.setDiskFull();
    delegate.applicationWillTerminate({});
    EXPECT_TRUE(fakes.alerts.shown().empty());
    EXPECT_EQ(logLines(), QStringList());
    EXPECT_EQ(stored(u"logContent"_s), Boxed(u"earlier"_s));
}

TEST_F(DataFileAndModesTest, terminationSavesAndEndsTheObservationOfTheDropArea) {
    launch();
    delegate.applicationWillTerminate({});
    EXPECT_TRUE(fakes.files.fileExistsAtPath(kPath, nullptr));
    dropArea.addLinkToFiles({u"/tmp/a.rtf"_s});
    EXPECT_EQ(delegate.fileToProcessPath(), std::nullopt);
}

TEST_F(DataFileAndModesTest, counterIsNotKept) {
    delegate.setNumberProcessed(7);
    delegate.saveAppDataToDisk();
    EXPECT_EQ(stored().size(), 2);
}

TEST_F(DataFileAndModesTest, withoutALogViewThereIsNoLogToSave) {
    delegate.setTextLog(nullptr);
    delegate.saveAppDataToDisk();
    EXPECT_EQ(stored().keys(), QStringList(u"appversion"_s));
}

// Loading.

TEST_F(DataFileAndModesTest, withoutAFileNothingIsRestored) {
    launch();
    expectNothingRestored();
    expectLimits(255);
    EXPECT_TRUE(fakes.alerts.shown().empty());
}

TEST_F(DataFileAndModesTest, bigModeIsRestoredThroughTheLimits) {
    store(10501, true);
    launch();
    EXPECT_EQ(delegate.bigWin(), Boxed(true));
    EXPECT_EQ(discloseButton.state(), ButtonState::on);
    EXPECT_EQ(window.frame(), kBig);
    EXPECT_EQ(window.framesSet(), 1) << "the fixture's own";
    expectLimits(580);
    EXPECT_EQ(log.string(), u"\nstamp} old"_s);
}

TEST_F(DataFileAndModesTest, smallModeIsRestored) {
    store(10501, false);
    discloseButton.setState(ButtonState::on);
    launch();
    EXPECT_EQ(delegate.bigWin(), Boxed(false));
    EXPECT_EQ(discloseButton.state(), ButtonState::off);
    EXPECT_EQ(window.frame(), kSmall);
    expectLimits(255);
}

TEST_F(DataFileAndModesTest, missingModeIsNilAndSmall) {
    store(10501, nullptr);
    launch();
    EXPECT_TRUE(delegate.bigWin().isNil());
    EXPECT_EQ(discloseButton.state(), ButtonState::off);
    EXPECT_EQ(window.frame(), kSmall);
    delegate.saveAppDataToDisk();
    EXPECT_FALSE(stored().contains(u"bigWin"_s));
}

TEST_F(DataFileAndModesTest, fileOfAnOldReleaseGivesItsLogButNotItsMode) {
    store(10299, true);
    launch();
    EXPECT_EQ(log.string(), u"\nstamp} old"_s);
    EXPECT_EQ(delegate.bigWin(), Boxed(false));
    EXPECT_EQ(discloseButton.statesSet(), 0);
    EXPECT_EQ(window.frame(), kSmall);
    expectLimits(255);
}

TEST_F(DataFileAndModesTest, theFirstReleaseWhoseModeIsTrusted) {
    store(10300, true);
    launch();
    EXPECT_EQ(window.frame(), kBig);
}

TEST_F(DataFileAndModesTest, missingVersionIsAnOldRelease) {
    store(nullptr, true);
    launch();
    EXPECT_EQ(log.string(), u"\nstamp} old"_s);
    EXPECT_EQ(delegate.bigWin(), Boxed(false));
}

TEST_F(DataFileAndModesTest, fileOfANewerReleaseRestoresNothingAndIsTold) {
    store(10502, true);
    launch();
    expectNothingRestored();
    ASSERT_EQ(fakes.alerts.shown().size(), 1U);
    EXPECT_EQ(fakes.alerts.shown()[0].alert.messageText, kNewerMessage);
    delegate.applicationWillTerminate({});
    EXPECT_EQ(stored(u"appversion"_s), Boxed(10501));
    EXPECT_FALSE(fakes.files.fileExistsAtPath(kPath + u".damaged"_s, nullptr));
}

TEST_F(DataFileAndModesTest, versionsAreUnsignedAndNotNarrowed) {
    for (const Boxed& version : {Boxed(std::int64_t{-1}), Boxed((std::int64_t{1} << 32) + 10501),
                                 Boxed(std::numeric_limits<std::int64_t>::max()), Boxed(u"10502"_s), Boxed(10502.0)}) {
        store(version, true);
        launch();
        EXPECT_EQ(delegate.logContent(), std::nullopt);
    }
    EXPECT_EQ(fakes.alerts.shown().size(), 5U);
}

TEST_F(DataFileAndModesTest, versionThatIsNoIntegerIsReadAsOne) {
    for (const Boxed& version : {Boxed(u"10501"_s), Boxed(10501.9)}) {
        delegate.setBigWin(nullptr);
        store(version, true);
        launch();
        EXPECT_EQ(delegate.bigWin(), Boxed(true));
    }
    for (const Boxed& version : {Boxed(true), Boxed(QByteArray("10501")), Boxed(Boxed::Array{10501})}) {
        delegate.setBigWin(nullptr);
        store(version, true);
        launch();
        EXPECT_EQ(delegate.bigWin(), Boxed(false)) << "an old release";
    }
    EXPECT_TRUE(fakes.alerts.shown().empty());
}

TEST_F(DataFileAndModesTest, modeThatIsNoBooleanIsReadAsOne) {
    for (const Boxed& mode : {Boxed(1), Boxed(u"YES"_s), Boxed(-2.5)}) {
        store(10501, mode);
        launch();
        EXPECT_EQ(delegate.bigWin(), Boxed(true));
    }
    for (const Boxed& mode : {Boxed(0), Boxed(u"no"_s), Boxed(Boxed::Array{true}), Boxed(QByteArray("\1"))}) {
        store(10501, mode);
        launch();
        EXPECT_EQ(delegate.bigWin(), Boxed(false));
        EXPECT_EQ(discloseButton.state(), ButtonState::off);
    }
}

TEST_F(DataFileAndModesTest, logThatIsNoTextIsEmpty) {
    for (const Boxed& text : {Boxed(7), Boxed(QByteArray("bytes")), Boxed(Boxed::Dictionary())}) {
        store(10501, false, text);
        launch();
        EXPECT_EQ(delegate.logContent(), u""_s);
        EXPECT_EQ(log.string(), QString());
    }
    store(Boxed::Dictionary{{u"appversion"_s, 10501}});
    launch();
    EXPECT_EQ(delegate.logContent(), u""_s);
}

TEST_F(DataFileAndModesTest, rootThatIsNoDictionaryRestoresNothingAndIsKept) {
    for (const Boxed& root : {Boxed(u"text"_s), Boxed(10501), Boxed(Boxed::Array{10501}), Boxed(true)}) {
        store(root);
        launch();
        expectNothingRestored();
        EXPECT_FALSE(fakes.files.fileExistsAtPath(kPath, nullptr));
    }
    EXPECT_TRUE(fakes.files.fileExistsAtPath(kPath + u".damaged-4"_s, nullptr));
}

TEST_F(DataFileAndModesTest, damagedFileRestoresNothingAndIsKept) {
    fakes.files.addFile(kPath, "no archive");
    launch();
    expectNothingRestored();
    EXPECT_TRUE(fakes.alerts.shown().empty());
    EXPECT_EQ(logLines(), QStringList());
    delegate.applicationWillTerminate({});
    EXPECT_EQ(fakes.files.contentsOfFile(kPath + u".damaged"_s), "no archive");
    EXPECT_EQ(stored(u"appversion"_s), Boxed(10501));
}

TEST_F(DataFileAndModesTest, earlierDamagedFileIsNotOverwritten) {
    for (const char* bytes : {"first", "second", "third"}) {
        fakes.files.addFile(kPath, bytes);
        delegate.loadAppDataFromDisk();
    }
    EXPECT_EQ(fakes.files.contentsOfFile(kPath + u".damaged"_s), "first");
    EXPECT_EQ(fakes.files.contentsOfFile(kPath + u".damaged-2"_s), "second");
    EXPECT_EQ(fakes.files.contentsOfFile(kPath + u".damaged-3"_s), "third");
}

TEST_F(DataFileAndModesTest, restoredLinesCarryNoColourAndNewOnesFollowThem) {
    store(10501, false);
    launch();
    delegate.doMessageLog(u"new"_s, false);
    EXPECT_EQ(logLines(), QStringList({u"old"_s, u"new"_s}));
    EXPECT_FALSE(log.colors().front().has_value());
    EXPECT_EQ(log.colors().back(), Color{Color::Source::controlText});
    EXPECT_EQ(delegate.logContent(), u"\nstamp} old"_s);
}

TEST_F(DataFileAndModesTest, restoringTheLogCannotBeUndone) {
    store(10501, false);
    launch();
    EXPECT_FALSE(fakes.undoManager.canUndo());
}

TEST_F(DataFileAndModesTest, launchLoadsAfterTheDestinationIsCheckedAndBeforeTheWindowIsShown) {
    store(10502, true);
    bool isExcluded = false;
    int raised = -1;
    bool destinationIsKnown = false;
    fakes.alerts.setModalHandler([&] {
        isExcluded = window.isExcludedFromWindowsMenu();
        raised = window.raised();
        destinationIsKnown = delegate.destMessageString().has_value();
        // The delegate does not observe the drop area yet.
        dropArea.addLinkToFiles({u"/tmp/a.rtf"_s});
    });
    launch();
    EXPECT_TRUE(isExcluded);
    EXPECT_TRUE(destinationIsKnown);
    EXPECT_EQ(raised, 1);
    EXPECT_EQ(window.raised(), 2);
    EXPECT_EQ(delegate.fileToProcessPath(), std::nullopt);
}

// The modes.

TEST_F(DataFileAndModesTest, beforeLoadingLaunchOnlyLimitsTheSize) {
    delegate.applicationWillFinishLaunching({});
    EXPECT_EQ(window.framesSet(), 1) << "the fixture's own";
    EXPECT_TRUE(delegate.bigWin().isNil());
    expectLimits(255);
}

TEST_F(DataFileAndModesTest, goingBigKeepsTheTopEdge) {
    delegate.goSmallWindow();
    delegate.goBigWindow();
    EXPECT_EQ(window.frame(), kBig);
    EXPECT_EQ(window.lastAnimation(), Animate::yes);
    EXPECT_EQ(delegate.bigWin(), Boxed(true));
    expectLimits(580);
}

TEST_F(DataFileAndModesTest, goingSmallKeepsTheTopEdge) {
    delegate.goBigWindow();
    delegate.goSmallWindow();
    EXPECT_EQ(window.frame(), kSmall);
    EXPECT_EQ(window.lastAnimation(), Animate::yes);
    EXPECT_EQ(delegate.bigWin(), Boxed(false));
    expectLimits(255);
}

TEST_F(DataFileAndModesTest, goingTheSameWayTwiceChangesTheFrameOnce) {
    const int before = window.framesSet();
    delegate.goBigWindow();
    delegate.goBigWindow();
    EXPECT_EQ(window.framesSet(), before + 1);
    EXPECT_EQ(window.frame(), kBig);
    delegate.goSmallWindow();
    delegate.goSmallWindow();
    EXPECT_EQ(window.framesSet(), before + 2);
    EXPECT_EQ(window.frame(), kSmall);
}

TEST_F(DataFileAndModesTest, switchingGoesToTheOtherMode) {
    delegate.switchWindows();
    EXPECT_EQ(window.frame(), kBig);
    delegate.switchWindows();
    EXPECT_EQ(window.frame(), kSmall);
    delegate.switchWindows();
    EXPECT_EQ(delegate.bigWin(), Boxed(true));
}

TEST_F(DataFileAndModesTest, theWidthIsTheUsers) {
    delegate.goBigWindow();
    window.setFrame({50, 75, 900, 580}, Animate::no);
    delegate.goSmallWindow();
    EXPECT_EQ(window.frame(), (Rect{50, 400, 900, 255}));
    window.setFrame({50, 400, 300, 255}, Animate::no);
    delegate.goBigWindow();
    EXPECT_EQ(window.frame().width, 615);
}

TEST_F(DataFileAndModesTest, modesChangeTheInheritedWindowAndShowTheMainOne) {
    FakeWindow other;
    delegate.setMainWindow(&other);
    delegate.goBigWindow();
    EXPECT_EQ(other.framesSet(), 0);
    const int raised = window.raised();
    delegate.showMainWindow();
    EXPECT_EQ(other.raised(), 1);
    EXPECT_EQ(window.raised(), raised);
}

TEST_F(DataFileAndModesTest, withoutOutletsTheModeIsKeptAllTheSame) {
    delegate.setWindow(nullptr);
    delegate.setMainWindow(nullptr);
    delegate.setMyDiscloseButton(nullptr);
    store(10501, true);
    launch();
    delegate.showMainWindow();
    EXPECT_EQ(delegate.bigWin(), Boxed(true));
    delegate.switchWindows();
    EXPECT_EQ(delegate.bigWin(), Boxed(false));
}

TEST_F(DataFileAndModesTest, closingTheWindowDoesNotQuitAndItCanBeShownAgain) {
    launch();
    window.close();
    EXPECT_FALSE(delegate.applicationShouldTerminateAfterLastWindowClosed());
    delegate.showMainWindow();
    EXPECT_TRUE(window.isVisible());
}

} // namespace
} // namespace quillow
