#include "tests/app/DelegateFixture.h"

namespace quillow {
namespace {

struct DestinationTest : DelegateFixture {
    DestinationTest() {
        for (const QString& path : {u"/in/a.rtf"_s, u"/in/b.rtf"_s, u"/in/c.rtf"_s})
            fakes.files.addFile(path, "text");
    }
    void launch() {
        delegate.applicationWillFinishLaunching({});
        delegate.applicationDidFinishLaunching({});
    }
    void store(const QString& folder) { fakes.defaults.setObject(bookmarkOf(folder), u"destBookmark"_s); }
};

TEST_F(DestinationTest, launchRaisesTheWindowAndTakesTheTextColour) {
    delegate.setProperTextColor({Color::Source::literal, 0xFFFF0000});
    launch();
    EXPECT_EQ(window.raised(), 1);
    EXPECT_EQ(delegate.properTextColor(), Color{Color::Source::controlText});
}

TEST_F(DestinationTest, launchWithoutAFolderShowsNone) {
    launch();
    EXPECT_FALSE(delegate.displayDestinationPath());
    EXPECT_FALSE(delegate.effectiveDestinationPath());
}

TEST_F(DestinationTest, launchShowsTheStoredFolder) {
    store(u"/texts"_s);
    launch();
    EXPECT_EQ(delegate.displayDestinationPath(), u"/texts"_s);
    EXPECT_EQ(delegate.effectiveDestinationPath(), u"/texts"_s);
    EXPECT_FALSE(delegate.effectiveDestinationBookmark());
}

TEST_F(DestinationTest, launchShowsAMovedFolderWhereItIsNow) {
    store(u"/texts"_s);
    fakes.files.move(u"/texts"_s, u"/moved"_s);
    launch();
    EXPECT_EQ(delegate.displayDestinationPath(), u"/moved"_s);
}

TEST_F(DestinationTest, noneIsFalseFromTheStart) {
    EXPECT_EQ(delegate.None(), Boxed(false));
}

TEST_F(DestinationTest, dropIntoTheStoredFolderConvertsAtOnce) {
    store(u"/texts"_s);
    launch();
    dropArea.addLinkToFiles({u"/in/a.rtf"_s});
    EXPECT_EQ(delegate.fileToProcessPath(), u"/in/a.rtf"_s);
    EXPECT_EQ(delegate.effectiveDestinationPath(), u"/texts"_s);
    EXPECT_EQ(delegate.effectiveDestinationBookmark(), fakes.defaults.objectForKey(u"destBookmark"_s).data());
    EXPECT_EQ(output(u"/texts/a.txt"_s), QByteArray("text"));
    EXPECT_TRUE(fakes.panels.shown().empty());
}

TEST_F(DestinationTest, droppedPathsAreConvertedOneByOne) {
    store(u"/texts"_s);
    launch();
    dropArea.addLinkToFiles({u"/in/b.rtf"_s, u"/in/notes.txt"_s, u"/in/a.rtf"_s});
    EXPECT_EQ(logLines(), (QStringList{converted(u"/in/b.rtf"_s, u"/texts/b.txt"_s),
                                       converted(u"/in/a.rtf"_s, u"/texts/a.txt"_s)}));
    EXPECT_EQ(fakes.journal.entries().count(u"startAccess /texts"_s), 2);
}

TEST_F(DestinationTest, otherNotificationsAreIgnored) {
    store(u"/texts"_s);
    dropArea.addLinkToFiles({u"/in/a.rtf"_s}); // before anything observes it
    launch();
    MWDragDropView otherView;
    delegate.observeValueForKeyPath(u"myFilePathDropped"_s, &otherView, {}, nullptr);
    delegate.observeValueForKeyPath(u"otherKey"_s, &dropArea, {}, nullptr);
    EXPECT_FALSE(delegate.fileToProcessPath());
    EXPECT_TRUE(fakes.journal.entries().isEmpty());
    delegate.observeValueForKeyPath(u"myFilePathDropped"_s, &dropArea, {}, nullptr);
    EXPECT_EQ(delegate.fileToProcessPath(), u"/in/a.rtf"_s);
}

TEST_F(DestinationTest, dropsEndWithTermination) {
    store(u"/texts"_s);
    launch();
    delegate.applicationWillTerminate({});
    dropArea.addLinkToFiles({u"/in/a.rtf"_s});
    EXPECT_FALSE(delegate.fileToProcessPath());
}

TEST_F(DestinationTest, choosingAsksForOneFolder) {
    FakeWindow preferences;
    delegate.setPrefWindow(&preferences);
    delegate.selectFolderToSaveOutput();
    ASSERT_EQ(fakes.panels.shown().size(), 1U);
    const OpenPanel expected{std::nullopt, true, false, u"Select"_s,
                             u"Select the default destination to save converted text"_s};
    EXPECT_EQ(fakes.panels.shown()[0].panel, expected);
    EXPECT_EQ(fakes.panels.shown()[0].window, &preferences);
}

TEST_F(DestinationTest, withoutPreferencesWindowTheMainWindowTakesThePanel) {
    delegate.selectFolderToSaveOutput();
    ASSERT_EQ(fakes.panels.shown().size(), 1U);
    EXPECT_EQ(fakes.panels.shown()[0].window, &window);
}

TEST_F(DestinationTest, chosenFolderIsStoredByPathAndReadWriteBookmark) {
    delegate.selectFolderToSaveOutput();
    fakes.panels.choose(u"/texts"_s);
    EXPECT_EQ(fakes.defaults.objectForKey(u"destPath"_s), Boxed(u"/texts"_s));
    EXPECT_EQ(fakes.defaults.objectForKey(u"destBookmark"_s), Boxed(bookmarkOf(u"/texts"_s)));
    EXPECT_EQ(fakes.bookmarks.created().at(0).options, kBookmarkCreationWithSecurityScope);
    EXPECT_EQ(delegate.displayDestinationPath(), u"/texts"_s);
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
    EXPECT_FALSE(delegate.displayDestinationPath());
}

TEST_F(DestinationTest, firstDropWaitsForOnePanelAndIsConvertedInOrder) {
    launch();
    dropArea.addLinkToFiles({u"/in/c.rtf"_s, u"/in/a.rtf"_s, u"/in/b.rtf"_s});
    ASSERT_EQ(fakes.panels.shown().size(), 1U);
    EXPECT_TRUE(fakes.rtf.read().empty());
    fakes.panels.choose(u"/texts"_s);
    EXPECT_EQ(logLines(),
              (QStringList{converted(u"/in/c.rtf"_s, u"/texts/c.txt"_s), converted(u"/in/a.rtf"_s, u"/texts/a.txt"_s),
                           converted(u"/in/b.rtf"_s, u"/texts/b.txt"_s)}));
    EXPECT_EQ(delegate.fileToProcessPath(), u"/in/b.rtf"_s);
    EXPECT_EQ(fakes.panels.shown().size(), 1U);
}

TEST_F(DestinationTest, secondDropWhileThePanelIsOpenWaitsBehindTheFirst) {
    launch();
    dropArea.addLinkToFiles({u"/in/b.rtf"_s});
    store(u"/texts"_s);
    dropArea.addLinkToFiles({u"/in/a.rtf"_s});
    EXPECT_TRUE(fakes.rtf.read().empty());
    fakes.panels.choose(u"/texts"_s);
    EXPECT_EQ(logLines(), (QStringList{converted(u"/in/b.rtf"_s, u"/texts/b.txt"_s),
                                       converted(u"/in/a.rtf"_s, u"/texts/a.txt"_s)}));
}

TEST_F(DestinationTest, dropUnderAPanelThatIsAlreadyOpenUsesItsAnswer) {
    launch();
    delegate.selectFolderToSaveOutput();
    dropArea.addLinkToFiles({u"/in/a.rtf"_s});
    EXPECT_EQ(fakes.panels.shown().size(), 1U);
    fakes.panels.choose(u"/texts"_s);
    EXPECT_EQ(output(u"/texts/a.txt"_s), QByteArray("text"));
}

TEST_F(DestinationTest, cancelDropsThePathsAndALaterDropStartsAfresh) {
    launch();
    dropArea.addLinkToFiles({u"/in/a.rtf"_s, u"/in/b.rtf"_s});
    fakes.panels.cancel();
    EXPECT_TRUE(logLines().isEmpty());
    dropArea.addLinkToFiles({u"/in/c.rtf"_s});
    EXPECT_EQ(fakes.panels.shown().size(), 2U);
    fakes.panels.choose(u"/texts"_s);
    EXPECT_EQ(logLines(), (QStringList{converted(u"/in/c.rtf"_s, u"/texts/c.txt"_s)}));
}

TEST_F(DestinationTest, deletedStoredFolderAsksAgain) {
    store(u"/texts"_s);
    launch();
    fakes.files.remove(u"/texts"_s);
    dropArea.addLinkToFiles({u"/in/a.rtf"_s});
    EXPECT_EQ(fakes.panels.shown().size(), 1U);
    EXPECT_TRUE(fakes.rtf.read().empty());
}

TEST_F(DestinationTest, storedBookmarkOfAFileAsksAgain) {
    fakes.files.addFile(u"/file"_s);
    store(u"/file"_s);
    launch();
    dropArea.addLinkToFiles({u"/in/a.rtf"_s});
    EXPECT_EQ(fakes.panels.shown().size(), 1U);
}

TEST_F(DestinationTest, movedStoredFolderIsUsedWhereItIsNow) {
    store(u"/texts"_s);
    launch();
    fakes.files.move(u"/texts"_s, u"/moved"_s);
    dropArea.addLinkToFiles({u"/in/a.rtf"_s});
    EXPECT_EQ(output(u"/moved/a.txt"_s), QByteArray("text"));
    EXPECT_EQ(logLines(), (QStringList{converted(u"/in/a.rtf"_s, u"/moved/a.txt"_s)}));
}

TEST_F(DestinationTest, folderThatGetsNoBookmarkDropsThePaths) {
    launch();
    dropArea.addLinkToFiles({u"/in/a.rtf"_s});
    fakes.bookmarks.fail(FakeBookmarkStore::Failure::nothingWithoutError);
    fakes.panels.choose(u"/texts"_s);
    EXPECT_TRUE(fakes.defaults.objectForKey(u"destBookmark"_s).isNil());
    EXPECT_EQ(fakes.panels.shown().size(), 1U);
    EXPECT_TRUE(logLines().isEmpty());
}

} // namespace
} // namespace quillow
