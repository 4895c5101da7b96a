#include "frame/MWDragDropBaseApp.h"

#include "frame/MWDragDropView.h"
#include "tests/fakes/FakePlatform.h"
#include "tests/fakes/FakeProgressIndicator.h"
#include "tests/fakes/FakeViewArea.h"
#include "tests/fakes/FakeWindow.h"

#include <gtest/gtest.h>

namespace quillow {
namespace {

using namespace Qt::StringLiterals;

class ObservingApp final : public MWDragDropBaseApp {
public:
    using MWDragDropBaseApp::MWDragDropBaseApp;
    void observeValueForKeyPath(const QString& keyPath, const KVObject* ofObject, const Change& change,
                                void* context) override {
        observed.append(keyPath + u' ' + change.newValue.string().value_or(u"nil"_s));
        lastObject = ofObject;
        lastOldValue = change.oldValue;
        lastContext = context;
    }
    QStringList observed;
    const KVObject* lastObject = nullptr;
    Boxed lastOldValue;
    void* lastContext = this;
};

struct MWDragDropBaseAppTest : testing::Test {
    FakePlatform fakes;
    FakeWindow window;
    FakeProgressIndicator progressIndicator{fakes.journal};
    FakeViewArea viewArea;
    MWDragDropView dropArea{viewArea};
    ObservingApp app{fakes.platform(), fakes.supportUtility, fakes.valueTransformers};

    MWDragDropBaseAppTest() {
        app.setWindow(&window);
        app.setProgressIndicator(&progressIndicator);
        app.setDragDropArea(&dropArea);
    }
};

TEST_F(MWDragDropBaseAppTest, startsWithNothingToProcess) {
    EXPECT_EQ(app.Done(), Boxed(false));
    EXPECT_EQ(app.fileToProcessPathArray(), QStringList());
    EXPECT_FALSE(app.fileToProcessPath());
    EXPECT_FALSE(app.fileToProcessBookmark());
    EXPECT_FALSE(app.performingTask().boolValue());
}

TEST_F(MWDragDropBaseAppTest, knowsItsNameAndRelease) {
    EXPECT_EQ(app.appName(), u"Quillow"_s);
    EXPECT_EQ(app.releaseString(), u"1.5.1"_s);
}

TEST_F(MWDragDropBaseAppTest, dropBeforeLaunchFinishedHasNoEffect) {
    dropArea.addLinkToFiles({u"/a"_s});
    EXPECT_TRUE(app.observed.isEmpty());
}

TEST_F(MWDragDropBaseAppTest, everyDroppedPathIsObservedFromLaunchToTermination) {
    app.applicationDidFinishLaunching({});
    dropArea.addLinkToFiles({u"/a"_s, u"/b"_s});
    EXPECT_EQ(app.observed, (QStringList{u"myFilePathDropped /a"_s, u"myFilePathDropped /b"_s}));
    EXPECT_EQ(app.lastObject, &dropArea);
    EXPECT_EQ(app.lastOldValue, Boxed(u"/a"_s));
    EXPECT_EQ(app.lastContext, nullptr);
    app.applicationWillTerminate({});
    dropArea.addLinkToFiles({u"/c"_s});
    EXPECT_EQ(app.observed.size(), 2);
}

TEST_F(MWDragDropBaseAppTest, terminationWithoutLaunchIsHarmless) {
    app.applicationWillTerminate({});
    dropArea.addLinkToFiles({u"/a"_s});
    EXPECT_TRUE(app.observed.isEmpty());
}

TEST_F(MWDragDropBaseAppTest, closingTheLastWindowTerminates) {
    EXPECT_TRUE(app.applicationShouldTerminateAfterLastWindowClosed());
}

TEST_F(MWDragDropBaseAppTest, onlyFoldersAndLinksToThemAreFolders) {
    fakes.files.addFile(u"/a/file"_s);
    fakes.files.addSymbolicLink(u"/toFolder"_s, u"/a"_s);
    fakes.files.addSymbolicLink(u"/toFile"_s, u"/a/file"_s);
    EXPECT_TRUE(app.existFolderAtPath(u"/a"_s));
    EXPECT_TRUE(app.existFolderAtPath(u"/toFolder"_s));
    EXPECT_FALSE(app.existFolderAtPath(u"/a/file"_s));
    EXPECT_FALSE(app.existFolderAtPath(u"/toFile"_s));
    EXPECT_FALSE(app.existFolderAtPath(u"/missing"_s));
}

TEST_F(MWDragDropBaseAppTest, startedTaskAnimatesAndIsNotDone) {
    app.setDone(true);
    int notified = 0;
    const Observation observation =
        app.addObserver(u"performingTask"_s, [&](const QString&, const KVObject&, const Change&) { ++notified; });
    app.taskStarted();
    EXPECT_EQ(fakes.journal.entries(), (QStringList{u"startAnimation"_s}));
    EXPECT_EQ(app.performingTask(), Boxed(true));
    EXPECT_EQ(app.Done(), Boxed(false));
    EXPECT_EQ(notified, 1);
}

TEST_F(MWDragDropBaseAppTest, missingDestinationFolderIsToldInASheet) {
    app.openAlertPanelDestinationFolderNonExistant();
    ASSERT_EQ(fakes.alerts.shown().size(), 1U);
    const Alert expected{u"Destination Folder Non Existant"_s,
                         u"Please set a different folder in preferences"_s,
                         AlertStyle::warning,
                         {u"OK"_s}};
    EXPECT_EQ(fakes.alerts.shown()[0].alert, expected);
    EXPECT_EQ(fakes.alerts.shown()[0].window, &window);
    fakes.alerts.answer(kAlertFirstButtonReturn);
    EXPECT_EQ(fakes.mainQueue.queuedCount(), 0U);
}

TEST_F(MWDragDropBaseAppTest, hooksDoNothing) {
    MWDragDropBaseApp plain(fakes.platform(), fakes.supportUtility, fakes.valueTransformers);
    plain.doProcess();
    plain.openAlertPanelCantDropThisHere();
    plain.observeValueForKeyPath(u"myFilePathDropped"_s, &dropArea, {}, nullptr);
    EXPECT_FALSE(plain.isAcceptedFileToConvertAtPath(u"/a.rtf"_s));
    EXPECT_TRUE(fakes.alerts.shown().empty());
    EXPECT_TRUE(fakes.journal.entries().isEmpty());
    EXPECT_FALSE(plain.fileToProcessPath());
}

TEST_F(MWDragDropBaseAppTest, missingOutletsTakeWhatTheyAreToldWithoutEffect) {
    ObservingApp bare(fakes.platform(), fakes.supportUtility, fakes.valueTransformers);
    bare.applicationDidFinishLaunching({});
    bare.taskStarted();
    EXPECT_EQ(bare.performingTask(), Boxed(true));
}

} // namespace
} // namespace quillow
