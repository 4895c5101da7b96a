// The order of the steps at launch and at the end. The fakes, the windows and the delegate's properties all write to
// one journal.
#include "app/QuillowAppDelegate.h"
#include "frame/MWDragDropView.h"
#include "tests/fakes/FakeButton.h"
#include "tests/fakes/FakeLogView.h"
#include "tests/fakes/FakeViewArea.h"
#include "tests/fakes/FakeWindow.h"
#include "tests/prefs/SharedChecker.h"

#include <gtest/gtest.h>

namespace quillow {
namespace {

using namespace Qt::StringLiterals;

const QString kDataFile = u"/home/user/Library/Application Support/Quillow/Quillow.qwldat"_s;

/// The state after an earlier run: a fixed folder, a log, the big mode.
class LifeCycleTest : public testing::Test {
protected:
    LifeCycleTest() {
        mainWindow.recordIn(fakes.journal, u"main window"_s);
        window.recordIn(fakes.journal, u"window"_s);
        preferences.recordIn(fakes.journal, u"preferences"_s);
        discloseButton.recordIn(fakes.journal, u"disclosure"_s);
        shared.background.recordIn(fakes.journal, u"update check"_s);
        delegate.setMainWindow(&mainWindow);
        delegate.setWindow(&window);
        delegate.setPrefWindow(&preferences);
        delegate.setMyDiscloseButton(&discloseButton);
        delegate.setTextLog(&log);
        delegate.setDragDropArea(&dropArea);
        for (const char16_t* key : {u"StartupDocPathMessageString", u"StartupDocSpecified", u"displayDestinationPath",
                                    u"effectiveDestinationPath", u"destMessageString", u"destMessageStringSpecified",
                                    u"logContent", u"bigWin", u"fileToProcessPath"}) {
            observations.push_back(delegate.addObserver(
                QString::fromUtf16(key),
                [this](const QString& path, const KVObject&, const Change&) { fakes.journal.add(u"set "_s + path); }));
        }
        fakes.files.addFolder(u"/fixed"_s);
        fakes.files.addFolder(u"/home/user/Library/Application Support/Quillow"_s);
        fakes.defaults.setObject(1, u"destinationType"_s);
        fakes.defaults.setObject(
            MWBookmark(fakes.bookmarks).bookmarkForURL_RW(QUrl::fromLocalFile(u"/fixed"_s)).value(), u"destBookmark"_s);
        fakes.defaults.setObject(u""_s, u"StartupSelectedDocPath"_s);
        fakes.archive.archiveRootObject(
            Boxed::Dictionary{{u"appversion"_s, 10501}, {u"logContent"_s, u"\nstamp} old"_s}, {u"bigWin"_s, true}},
            kDataFile);
        fakes.recordEverything();
        fakes.journal.clear();
    }
    ~LifeCycleTest() override { shared.background.stopRecording(); }
    void drop(const QString& path) { dropArea.addLinkToFiles({path}); }
    [[nodiscard]] const QStringList& entries() const { return fakes.journal.entries(); }

    FakePlatform fakes;
    SharedChecker& shared = SharedChecker::idle();
    FakeWindow mainWindow;
    FakeWindow window;
    FakeWindow preferences;
    FakeButton discloseButton;
    FakeLogView log;
    FakeViewArea viewArea;
    MWDragDropView dropArea{viewArea};
    QuillowAppDelegate delegate{fakes.platform(), fakes.supportUtility, fakes.valueTransformers, fakes.undoManager};
    std::vector<Observation> observations;
};

TEST_F(LifeCycleTest, beforeLaunchFinishesTheFrameComesFirstAndTheTextColourLast) {
    delegate.setProperTextColor({Color::Source::literal, 0xFFFF0000});
    fakes.journal.onEntry([this](const QString&) {
        EXPECT_EQ(delegate.properTextColor(), (Color{Color::Source::literal, 0xFFFF0000}));
    });
    delegate.applicationWillFinishLaunching({});
    EXPECT_EQ(entries(), (QStringList{
                             u"menu item 'Software Update…'"_s,
                             u"preferences: out of the Window menu"_s,
                             u"set StartupDocPathMessageString"_s,
                             u"set StartupDocSpecified"_s,
                             u"window: largest height 255"_s,
                             u"window: least height 255"_s,
                             u"main window: raised"_s,
                         }));
    EXPECT_EQ(delegate.properTextColor(), Color{Color::Source::controlText});
}

TEST_F(LifeCycleTest, launchLooksForANewerReleaseFirstAndTakesDropsLast) {
    QStringList beforeFinished;
    fakes.journal.onEntry([&](const QString& entry) {
        if (!delegate.finishedLaunching()) beforeFinished.append(entry);
        if (entry == u"main window: raised") drop(u"/in/too early.rtf"_s);
    });
    delegate.applicationDidFinishLaunching({});
    EXPECT_EQ(entries(), (QStringList{
                             u"update check: begun in the background"_s,
                             u"set displayDestinationPath"_s,
                             u"set effectiveDestinationPath"_s,
                             u"set destMessageStringSpecified"_s,
                             u"startAccess /fixed"_s,
                             u"stopAccess /fixed"_s,
                             u"set destMessageString"_s,
                             u"main window: out of the Window menu"_s,
                             u"set logContent"_s,
                             u"set bigWin"_s,
                             u"disclosure: on"_s,
                             u"window: largest height 580"_s,
                             u"window: least height 580"_s,
                             u"main window: raised"_s,
                         }));
    EXPECT_EQ(beforeFinished, QStringList{u"update check: begun in the background"_s});
    EXPECT_FALSE(delegate.fileToProcessPath()) << "a drop before the end of launch has no effect";
    drop(u"/in/a.rtf"_s);
    EXPECT_EQ(delegate.fileToProcessPath(), u"/in/a.rtf"_s);
}

TEST_F(LifeCycleTest, anInvitationStandsBeforeAllElseOfLaunch) {
    shared.platform.defaults.setObject(false, u"notifyUpdate"_s);
    shared.platform.alerts.recordIn(fakes.journal);
    delegate.applicationDidFinishLaunching({});
    shared.platform.alerts.stopRecording();
    shared.platform.defaults.setObject({}, u"notifyUpdate"_s);
    EXPECT_EQ(entries().value(0), u"update check: begun in the background"_s);
    EXPECT_TRUE(entries().value(1).startsWith(u"alert 'Would you like that"_s)) << entries().value(1).toStdString();
    EXPECT_EQ(entries().value(2), u"set displayDestinationPath"_s);
}

TEST_F(LifeCycleTest, atTheEndTheDataFileIsSavedBeforeDropsAreRefused) {
    delegate.applicationDidFinishLaunching({});
    fakes.journal.clear();
    fakes.journal.onEntry([this](const QString& entry) {
        if (entry.startsWith(u"write ")) drop(u"/in/late.rtf"_s);
    });
    delegate.applicationWillTerminate({});
    EXPECT_EQ(entries().value(0), u"write "_s + kDataFile);
    EXPECT_EQ(delegate.fileToProcessPath(), u"/in/late.rtf"_s) << "still observed while it is saved";
    drop(u"/in/too late.rtf"_s);
    EXPECT_EQ(delegate.fileToProcessPath(), u"/in/late.rtf"_s);
}

} // namespace
} // namespace quillow
