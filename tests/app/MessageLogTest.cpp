#include "tests/app/DelegateFixture.h"

namespace quillow {
namespace {

struct MessageLogTest : DelegateFixture {
    void logAndRun(const QString& message) {
        delegate.doMessageLog(message, false);
        fakes.mainQueue.runAll();
    }
    void clearAndRun() {
        delegate.clearLog();
        fakes.mainQueue.runAll();
    }
};

TEST_F(MessageLogTest, lineIsQueuedAndAppearsWhenTheQueueRuns) {
    delegate.doMessageLog(u"Hello"_s, false);
    EXPECT_EQ(log.string(), u""_s);
    fakes.mainQueue.runAll();
    EXPECT_EQ(log.string(), u"\n5.3.2009 07:04:09} Hello"_s);
}

TEST_F(MessageLogTest, linesAppearInTheOrderQueued) {
    for (const QString& message : {u"one"_s, u"two"_s, u"three"_s})
        delegate.doMessageLog(message, false);
    EXPECT_EQ(logLines(), (QStringList{u"one"_s, u"two"_s, u"three"_s}));
}

TEST_F(MessageLogTest, stampIsTheTimeAtWhichTheLineIsWritten) {
    delegate.doMessageLog(u"Hello"_s, false);
    fakes.clock.set(QDateTime(QDate(2026, 11, 21), QTime(23, 59, 58)));
    fakes.mainQueue.runAll();
    EXPECT_EQ(log.string(), u"\n21.11.2026 23:59:58} Hello"_s);
}

TEST_F(MessageLogTest, stampHasMediumDateAndMediumTime) {
    logAndRun(u"Hello"_s);
    EXPECT_EQ(fakes.dates.styles(),
              (std::vector<std::pair<DateStyle, DateStyle>>{{DateStyle::medium, DateStyle::medium}}));
}

TEST_F(MessageLogTest, formatterWithPatternIsBuiltForEveryLineAndNotUsed) {
    logAndRun(u"one"_s);
    logAndRun(u"two"_s);
    EXPECT_EQ(fakes.dates.patterns(), (QStringList{u"YYYY-MM-dd hh:mm:ss"_s, u"YYYY-MM-dd hh:mm:ss"_s}));
    EXPECT_EQ(fakes.dates.formattedByPattern(), 0);
}

TEST_F(MessageLogTest, everyCharacterOfALineHasTheProperTextColor) {
    const Color red{Color::Source::literal, 0xFFFF0000};
    log.replaceCharactersInRange({0, 0}, u"old"_s);
    delegate.setProperTextColor(red);
    logAndRun(u"Hello"_s);
    const auto length = static_cast<std::size_t>(log.length());
    std::vector<std::optional<Color>> expected(length, red);
    for (std::size_t i = 0; i < 3; ++i)
        expected[i] = std::nullopt;
    EXPECT_EQ(log.colors(), expected);
}

TEST_F(MessageLogTest, errorAndSuccessLinesLookAlikeAndRaiseNoWindow) {
    delegate.doMessageLog(u"same"_s, true);
    delegate.doMessageLog(u"same"_s, false);
    fakes.mainQueue.runAll();
    const qsizetype half = log.length() / 2;
    EXPECT_EQ(log.string().left(half), log.string().mid(half));
    for (const auto& color : log.colors())
        EXPECT_EQ(color, delegate.properTextColor());
    EXPECT_EQ(window.raised(), 0);
}

TEST_F(MessageLogTest, endOfTheTextIsScrolledIntoView) {
    logAndRun(u"Hello"_s);
    EXPECT_EQ(log.scrolledTo(), (TextRange{log.length(), 0}));
    EXPECT_EQ(log.displays(), 1);
}

TEST_F(MessageLogTest, textIsKeptExactly) {
    const QString message = u"a\u00A0b\u2028c\u2029d\tnul:\uFFFD %1 %@ \U0001F600"_s;
    logAndRun(message);
    EXPECT_EQ(log.string(), u"\n5.3.2009 07:04:09} "_s + message);
    const QString before = log.string();
    clearAndRun();
    fakes.undoManager.undo();
    EXPECT_EQ(log.string(), before);
}

TEST_F(MessageLogTest, clearIsQueuedBehindEarlierLines) {
    delegate.doMessageLog(u"before"_s, false);
    delegate.clearLog();
    delegate.doMessageLog(u"after"_s, false);
    EXPECT_FALSE(fakes.undoManager.canUndo());
    EXPECT_EQ(logLines(), (QStringList{u"after"_s}));
    fakes.undoManager.undo();
    EXPECT_EQ(log.string(), u"\n5.3.2009 07:04:09} before"_s);
}

TEST_F(MessageLogTest, undoBringsTheTextBackAtOnceAndPlain) {
    logAndRun(u"Hello"_s);
    const QString before = log.string();
    clearAndRun();
    EXPECT_EQ(log.string(), u""_s);
    fakes.undoManager.undo();
    EXPECT_EQ(log.string(), before);
    for (const auto& color : log.colors())
        EXPECT_FALSE(color.has_value());
    EXPECT_EQ(fakes.mainQueue.queuedCount(), 0U);
}

TEST_F(MessageLogTest, redoQueuesAFreshClear) {
    logAndRun(u"Hello"_s);
    const QString before = log.string();
    clearAndRun();
    fakes.undoManager.undo();
    EXPECT_TRUE(fakes.undoManager.canRedo());
    fakes.undoManager.redo();
    EXPECT_EQ(log.string(), before);
    EXPECT_FALSE(fakes.undoManager.canUndo());
    fakes.mainQueue.runAll();
    EXPECT_EQ(log.string(), u""_s);
    EXPECT_TRUE(fakes.undoManager.canUndo());
    EXPECT_FALSE(fakes.undoManager.canRedo());
    fakes.undoManager.undo();
    EXPECT_EQ(log.string(), before);
}

TEST_F(MessageLogTest, undoAfterNewLinesPutsTheOldTextInTheirPlace) {
    logAndRun(u"old"_s);
    clearAndRun();
    logAndRun(u"new"_s);
    fakes.undoManager.undo();
    EXPECT_EQ(logLines(), (QStringList{u"old"_s}));
}

TEST_F(MessageLogTest, clearOfAnEmptyLogCanBeUndoneToo) {
    clearAndRun();
    EXPECT_TRUE(fakes.undoManager.canUndo());
    fakes.undoManager.undo();
    EXPECT_EQ(log.string(), u""_s);
}

TEST_F(MessageLogTest, actionIsNamedByTheBundle) {
    clearAndRun();
    EXPECT_EQ(fakes.undoManager.undoActionName(), u"Clear Log"_s);
    fakes.undoManager.undo();
    EXPECT_EQ(fakes.undoManager.redoActionName(), u"Clear Log"_s);
    fakes.bundle.translate(u"Clear Log"_s, u"Protokoll leeren"_s);
    clearAndRun();
    EXPECT_EQ(fakes.undoManager.undoActionName(), u"Protokoll leeren"_s);
}

TEST_F(MessageLogTest, resetAsksFirst) {
    delegate.resetLogAlert();
    ASSERT_EQ(fakes.alerts.shown().size(), 1U);
    const Alert expected{
        u"Are you sure you want to reset the Log?"_s, u"Operation can't be reverted"_s, AlertStyle::warning, {}};
    EXPECT_EQ(fakes.alerts.shown()[0].alert, expected);
    EXPECT_EQ(fakes.alerts.shown()[0].window, &window);
    EXPECT_EQ(fakes.mainQueue.queuedCount(), 0U);
}

TEST_F(MessageLogTest, agreedResetClearsAndCanStillBeUndone) {
    logAndRun(u"Hello"_s);
    delegate.resetLogAlert();
    fakes.alerts.answer(kAlertFirstButtonReturn);
    fakes.mainQueue.runAll();
    EXPECT_EQ(log.string(), u""_s);
    EXPECT_TRUE(fakes.undoManager.canUndo());
}

TEST_F(MessageLogTest, dismissedResetKeepsTheLog) {
    logAndRun(u"Hello"_s);
    delegate.resetLogAlert();
    fakes.alerts.answer(kAlertDismissed);
    fakes.mainQueue.runAll();
    EXPECT_EQ(logLines(), (QStringList{u"Hello"_s}));
}

TEST_F(MessageLogTest, counterIsSetBackToZero) {
    EXPECT_EQ(delegate.numberProcessed(), Boxed(0));
    delegate.setNumberProcessed(7);
    delegate.resetCounter();
    EXPECT_EQ(delegate.numberProcessed(), Boxed(0));
}

TEST_F(MessageLogTest, absentLogTakesLinesAndClearsWithoutEffect) {
    delegate.setTextLog(nullptr);
    delegate.doMessageLog(u"Hello"_s, false);
    delegate.clearLog();
    fakes.mainQueue.runAll();
    EXPECT_FALSE(fakes.undoManager.canUndo());
}

// Showing and opening the latest files.

TEST_F(MessageLogTest, latestInputIsShownAndOpened) {
    fakes.files.addFile(u"/in/100%@.rtf"_s);
    delegate.setFileToProcessPath(u"/in/100%@.rtf"_s);
    delegate.showLastProcessedFile();
    delegate.openLastProcessedFile();
    EXPECT_EQ(fakes.journal.entries(), (QStringList{u"select '/in/100%@.rtf' in ''"_s, u"open /in/100%@.rtf"_s}));
}

TEST_F(MessageLogTest, latestOutputIsShownAndOpened) {
    fakes.files.addFile(u"/texts/a.txt"_s);
    delegate.setFinalFullPathName(u"/texts/a.txt"_s);
    delegate.showLastOutputFile();
    delegate.openLastOutputFile();
    EXPECT_EQ(fakes.journal.entries(), (QStringList{u"select '/texts/a.txt' in ''"_s, u"open /texts/a.txt"_s}));
}

TEST_F(MessageLogTest, nothingIsShownOrOpenedBeforeTheFirstConversion) {
    delegate.showLastProcessedFile();
    delegate.openLastProcessedFile();
    delegate.showLastOutputFile();
    delegate.openLastOutputFile();
    EXPECT_TRUE(fakes.journal.entries().isEmpty());
}

TEST_F(MessageLogTest, nothingIsShownOrOpenedAfterTheFilesWereDeleted) {
    delegate.setFileToProcessPath(u"/in/gone.rtf"_s);
    delegate.setFinalFullPathName(u"/texts/gone.txt"_s);
    delegate.showLastProcessedFile();
    delegate.openLastProcessedFile();
    delegate.showLastOutputFile();
    delegate.openLastOutputFile();
    EXPECT_TRUE(fakes.journal.entries().isEmpty());
    EXPECT_TRUE(fakes.alerts.shown().empty());
}

// Showing the fixed folder.

TEST_F(MessageLogTest, fixedFolderIsShownUnderAccess) {
    fakes.defaults.setObject(bookmarkOf(u"/texts"_s), u"destBookmark"_s);
    delegate.showOutputDirectory();
    EXPECT_EQ(fakes.journal.entries(),
              (QStringList{u"startAccess /texts"_s, u"select '/texts' in ''"_s, u"stopAccess /texts"_s}));
}

TEST_F(MessageLogTest, fixedFolderIsShownAlsoWhenAnotherIsInForce) {
    fakes.files.addFolder(u"/elsewhere"_s);
    fakes.defaults.setObject(bookmarkOf(u"/texts"_s), u"destBookmark"_s);
    putInForce(u"/elsewhere"_s);
    delegate.showOutputDirectory();
    EXPECT_TRUE(fakes.journal.entries().contains(u"select '/texts' in ''"_s));
}

TEST_F(MessageLogTest, movedFixedFolderIsShownWhereItIsNow) {
    fakes.defaults.setObject(bookmarkOf(u"/texts"_s), u"destBookmark"_s);
    fakes.files.move(u"/texts"_s, u"/moved"_s);
    delegate.showOutputDirectory();
    EXPECT_TRUE(fakes.journal.entries().contains(u"select '/moved' in ''"_s));
}

TEST_F(MessageLogTest, noFixedFolderShowsNothing) {
    delegate.showOutputDirectory();
    fakes.defaults.setObject(QByteArray(), u"destBookmark"_s);
    delegate.showOutputDirectory();
    EXPECT_TRUE(fakes.journal.entries().isEmpty());
}

TEST_F(MessageLogTest, refusedAccessToTheFixedFolderShowsNothing) {
    fakes.defaults.setObject(bookmarkOf(u"/texts"_s), u"destBookmark"_s);
    fakes.bookmarks.refuseAccess();
    delegate.showOutputDirectory();
    EXPECT_TRUE(fakes.journal.entries().isEmpty());
}

} // namespace
} // namespace quillow
