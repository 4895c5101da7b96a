// Every menu item and every button of the windows has the effect of its name and no other. The tables contain all of
// them, and no two have the same effect, so the tests notice if two commands are exchanged.
#include "platform/qt/dialogs/OpenDialog.h"
#include "platform/qt/windows/QtLogView.h"
#include "platform/qt/windows/QtMenus.h"
#include "platform/qt/windows/UpdatePane.h"
#include "tests/platform/Waiting.h"
#include "tests/program/WiringFixture.h"

#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QSet>

namespace quillow {
namespace {

const QString kInput = u"/in/a.rtf"_s;
const QString kOutput = u"/texts/a.txt"_s;
const QString kFolder = u"/fixed"_s;
const QString kDocument = u"/documents/start.rtf"_s;
const QString kGuide = u"/home/user/Library/Application Support/Quillow User Guide/Quillow User Guide 1.5.pdf"_s;

const QStringList kBig{u"main window: height 580"_s, u"bigWin 1"_s, u"main window: largest height 580"_s,
                       u"main window: least height 580"_s};

/// A control and the journal entries that it causes.
struct Row {
    QString name;
    QStringList effect;
};

/// The effect as readable text for failure messages.
std::string said(const QStringList& effect) {
    return effect.join(u", "_s).toStdString();
}

/// Sets the program up so that all commands are enabled.
class WiringTest : public WiringFixture {
protected:
    WiringTest() {
        for (const QString& path : {kInput, kOutput, kDocument, kGuide})
            fakes.files.addFile(path, "text");
        fakes.files.addFolder(kFolder);
        store(bookmarkOf(kFolder), u"destBookmark");
        store(kFolder, u"destPath");
        store(1, u"destinationType");
        store(bookmarkOf(kDocument), u"StartupSelectedDocBookmark");
        store(kDocument, u"StartupSelectedDocPath");
        store(3, u"StartupActionTag");
        delegate.adjustDestinationPath();
        delegate.setFileToProcessPath(kInput);
        delegate.setFinalFullPathName(kOutput);
        delegate.setNumberProcessed(5);
        for (const char16_t* key : {u"numberProcessed", u"bigWin"}) {
            observations_.push_back(delegate.addObserver(
                QString::fromUtf16(key), [this](const QString& path, const KVObject&, const Change& change) {
                    fakes.journal.add(path + u' ' + QString::number(change.newValue.longValue()));
                }));
        }
        // One thing to undo and, as another was undone, one to redo.
        fakes.undoManager.registerUndo([this] { fakes.journal.add(u"undone"_s); });
        fakes.undoManager.registerUndo([this] {
            fakes.undoManager.registerUndo([this] { fakes.journal.add(u"redone"_s); });
            fakes.undoManager.setActionName(u"Redoable"_s);
        });
        fakes.undoManager.undo();
        fakes.journal.clear();
    }

    /// What a control did, read from the journal and from the windows.
    template <class Press>
    QStringList effectOf(const Press& press) {
        fakes.journal.clear();
        press();
        QStringList effect = fakes.journal.entries();
        if (auto* about = window.findChild<QDialog*>(u"about"_s)) {
            effect.append(u"about"_s);
            delete about;
        }
        for (auto* chooser : window.findChildren<OpenDialog*>()) {
            effect.append(u"documents asked for"_s);
            delete chooser;
        }
        if (window.isMinimized()) effect.append(u"minimised"_s);
        if (!window.isVisible()) effect.append(u"closed"_s);
        if (window.logView().textCursor().hasSelection()) effect.append(u"selected"_s);
        if (!QApplication::clipboard()->text().isEmpty()) effect.append(u"copied"_s);
        return effect;
    }

    template <class Control, class Press>
    void expectEffects(const QMap<QString, Control*>& controls, const QList<Row>& rows, const Press& press) {
        QSet<QString> names;
        QSet<QString> effects;
        for (const Row& row : rows) {
            const QString title = row.name;
            ASSERT_TRUE(controls.contains(title)) << title.toStdString();
            EXPECT_TRUE(controls[title]->isEnabled()) << title.toStdString();
            EXPECT_EQ(said(effectOf([&] { press(*controls[title]); })), said(row.effect)) << title.toStdString();
            names.insert(title);
            effects.insert(row.effect.join(u'\n'));
            restore();
        }
        for (const QString& name : controls.keys())
            EXPECT_TRUE(names.contains(name)) << name.toStdString() << " is not in the table";
        EXPECT_EQ(effects.size(), rows.size()) << "two controls cannot be told apart";
    }

    void restore() {
        QApplication::clipboard()->clear();
        window.logView().moveCursor(QTextCursor::Start);
        window.showNormal();
        toolbarDelegate.SetPanelTab(1);
        preferencesWindow.close();
        static_cast<void>(SharedChecker::idle());
    }

private:
    std::vector<Observation> observations_;
};

TEST_F(WiringTest, everyMenuItemReachesItsAction) {
    QtMenus menus(window.applicationMenu());
    menus.insertIntoApplicationMenu(
        {u"Software Update…"_s, QString(), [this](Sender sender) { delegate.checkForLastReleaseAvailable(sender); }},
        1);
    window.logView().replaceCharactersInRange({0, 0}, u"one two"_s);
    restore();
    const QStringList preferencesRaised{u"preferences: centred"_s, u"preferences: raised"_s};
    const QList<Row> rows{
        {u"Quillow/About Quillow"_s, {u"about"_s}},
        {u"Quillow/Software Update…"_s, {u"update check: begun in the background"_s}},
        {u"Quillow/Preferences…"_s, preferencesRaised},
        {u"Quillow/Quit Quillow"_s, {u"quit"_s}},
        {u"File/Convert Documents…"_s, {u"documents asked for"_s}},
        {u"File/Change Destination…"_s,
         preferencesRaised + QStringList{u"preferences: pane 0"_s, u"preferences: height 278"_s}},
        {u"File/Close Window"_s, {u"closed"_s}},
        {u"Edit/Undo"_s, {u"undone"_s}},
        {u"Edit/Redo Redoable"_s, {u"redone"_s}},
        {u"Edit/Select All"_s, {u"selected"_s}},
        {u"Log/Show Output"_s, {u"select '/texts/a.txt' in ''"_s}},
        {u"Log/Open Output"_s, {u"open /texts/a.txt"_s}},
        {u"Log/Show Folder"_s, {u"startAccess /fixed"_s, u"select '/fixed' in ''"_s, u"stopAccess /fixed"_s}},
        {u"Log/Show Document"_s, {u"select '/in/a.rtf' in ''"_s}},
        {u"Log/Open Document"_s, {u"open /in/a.rtf"_s}},
        {u"Log/Reset Counter"_s, {u"numberProcessed 0"_s}},
        {u"Log/Clear Log…"_s, {u"sheet 'Are you sure you want to reset the Log?'"_s}},
        {u"Window/Minimize"_s, {u"minimised"_s}},
        {u"Window/Main Window"_s, {u"main window: raised"_s}},
        {u"Help/Quillow Help"_s, {u"sheet 'Quillow turns documents into plain text'"_s}},
        {u"Help/User Guide"_s, {u"open "_s + kGuide}},
        {u"Help/Quillow on the Web"_s, {u"open URL https://example.org/app"_s}},
        {u"Help/Visit Us"_s, {u"open URL https://example.org/"_s}},
        {u"Help/Mail to Support"_s,
         {u"open URL mailto:support@example.org?subject=Support%20Request%20for%20Quillow%20rel.%201.5.1%20-%20macOS%20"
          u"Debian%20GNU/Linux%2012%20(bookworm)"_s}},
    };
    auto items = menuItems();
    // Some items depend on state that others change, so they are tested separately.
    QAction* copy = items.take(u"Edit/Copy"_s);
    QAction* find = items.take(u"Edit/Find…"_s);
    QAction* findNext = items.take(u"Edit/Find Next"_s);
    QAction* findPrevious = items.take(u"Edit/Find Previous"_s);
    QAction* switchWindows = items.take(u"Window/Show Message Log"_s);
    expectEffects(items, rows, [](QAction& item) { item.trigger(); });

    ASSERT_TRUE(copy && find && findNext && findPrevious && switchWindows);
    window.logView().selectAll();
    EXPECT_TRUE(copy->isEnabled());
    EXPECT_EQ(said(effectOf([&] { copy->trigger(); })), "selected, copied");
    restore();
    EXPECT_EQ(said(effectOf([&] { switchWindows->trigger(); })), said(kBig));
    EXPECT_EQ(plain(switchWindows->text()), u"Hide Message Log"_s);

    find->trigger();
    auto* const bar = window.findChild<QWidget*>(u"findBar"_s);
    ASSERT_TRUE(bar && !bar->isHidden());
    bar->findChild<QLineEdit*>()->setText(u"o"_s);
    const auto placeAfter = [this](QAction& item) {
        item.trigger();
        return window.logView().textCursor().selectionStart();
    };
    EXPECT_EQ(placeAfter(*findNext), 0);
    EXPECT_EQ(placeAfter(*findNext), 6);
    EXPECT_EQ(placeAfter(*findPrevious), 0);
}

TEST_F(WiringTest, everyButtonOfTheMainWindowReachesItsAction) {
    restore();
    const QList<Row> rows{
        {u"Drop documents here"_s, {u"documents asked for"_s}},
        {u"Change…"_s,
         {u"preferences: centred"_s, u"preferences: raised"_s, u"preferences: pane 0"_s, u"preferences: height 278"_s}},
        {u"Reset"_s, {u"numberProcessed 0"_s}},
        {u"Message log"_s, kBig},
        {u"Show Output"_s, {u"select '/texts/a.txt' in ''"_s}},
        {u"Open Output"_s, {u"open /texts/a.txt"_s}},
        {u"Show Folder"_s, {u"startAccess /fixed"_s, u"select '/fixed' in ''"_s, u"stopAccess /fixed"_s}},
        {u"Clear Log…"_s, {u"sheet 'Are you sure you want to reset the Log?'"_s}},
    };
    expectEffects(buttonsOf(window), rows, [](QAbstractButton& button) { button.click(); });
}

TEST_F(WiringTest, everyButtonOfTheDestinationFolderReachesItsAction) {
    const QList<Row> rows{
        {u"Select…"_s, {u"panel 'Select the default destination to save converted text'"_s}},
        {u"Show"_s, {u"select '/fixed' in ''"_s}},
        {u"Clear"_s, {u"store destBookmark"_s, u"store destPath"_s}},
    };
    expectEffects(buttonsOf(preferences.generalPane().folder()), rows, [](QAbstractButton& button) { button.click(); });
    EXPECT_EQ(fakes.panels.shown().at(0).window, &preferencesWindow);
}

TEST_F(WiringTest, everyButtonOfTheStartupDocumentReachesItsAction) {
    const QList<Row> rows{
        {u"Select…"_s, {u"panel ''"_s}},
        {u"Show"_s, {u"select '/documents/start.rtf' in ''"_s}},
        {u"Test"_s, {u"startAccess /documents/start.rtf"_s, u"open document /documents/start.rtf with display"_s}},
        {u"Clear"_s, {u"store StartupSelectedDocBookmark"_s, u"store StartupSelectedDocPath"_s}},
    };
    expectEffects(buttonsOf(preferences.generalPane().document()), rows,
                  [](QAbstractButton& button) { button.click(); });
    EXPECT_TRUE(fakes.panels.shown().at(0).panel.canChooseFiles);
    EXPECT_EQ(fakes.panels.shown().at(0).window, &preferencesWindow);
}

TEST_F(WiringTest, checkNowLooksForANewerReleaseAndTellsInAnyCase) {
    auto* checkNow = preferences.updatePane().findChild<QPushButton*>();
    EXPECT_EQ(said(effectOf([&] { checkNow->click(); })), "update check: begun in the background");
    shared.finishCheck();
    EXPECT_EQ(shared.platform.alerts.shown().back().alert.messageText.section(u' ', 1),
              u"was not able to connect to the Varnel server"_s);
}

TEST_F(WiringTest, whileACheckRunsASpinnerTurnsAndCheckNowIsDisabled) {
    UpdatePane& pane = preferences.updatePane();
    showChecks(shared.checker(), pane);
    auto* checkNow = pane.findChild<QPushButton*>();
    EXPECT_TRUE(checkNow->isEnabled());
    checkNow->click();
    EXPECT_FALSE(checkNow->isEnabled());
    EXPECT_TRUE(pane.isSpinning());
    shared.finishCheck();
    EXPECT_TRUE(checkNow->isEnabled());
    EXPECT_FALSE(pane.isSpinning());
    shared.checker().setCheckHandler({});
}

TEST_F(WiringTest, chosenDocumentsGoTheRoadOfADrop) {
    window.chooseDocuments();
    auto* chooser = window.findChild<OpenDialog*>();
    ASSERT_NE(chooser, nullptr);
    Change dropped;
    const Observation observation = dropView.addObserver(
        u"myFilePathDropped"_s, [&](const QString&, const KVObject&, const Change& change) { dropped = change; });
    // An RTFD bundle, which is opened like a folder.
    fakes.files.addFile(u"/in/Letter.rtfd/TXT.rtf"_s, "text");
    Q_EMIT chooser->directoryEntered(u"/in/Letter.rtfd"_s);
    EXPECT_EQ(dropped.newValue, Boxed(u"/in/Letter.rtfd"_s));
}

} // namespace
} // namespace quillow
