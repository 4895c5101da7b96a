// The main window: its controls run the commands, it shows the values that it gets, and all its controls have names.
#include "platform/qt/windows/MainWindow.h"

#include "platform/qt/controls/DiscloseButton.h"
#include "platform/qt/controls/ElidedLabel.h"
#include "platform/qt/dialogs/OpenDialog.h"
#include "platform/qt/dragdrop/DropArea.h"
#include "platform/qt/life/BackgroundTextReaders.h"
#include "platform/qt/life/QuitKey.h"
#include "platform/qt/life/TerminationSignals.h"
#include "platform/qt/windows/LatestEntry.h"
#include "platform/qt/windows/QtLogView.h"
#include "platform/qt/windows/QtMenus.h"
#include "tests/fakes/FakeAlerts.h"
#include "tests/platform/FileWorlds.h"
#include "tests/platform/Waiting.h"

#include <QAccessible>
#include <QAction>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QSet>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <thread>

namespace quillow {
namespace {

class MainWindowTest : public testing::Test {
protected:
    void SetUp() override {
        MainWindowCommands commands;
        const auto note = [this](const char* name) { return [this, name] { called_.append(QLatin1String(name)); }; };
        commands.convert = [this](const QStringList& paths) { converted_ += paths; };
        commands.changeDestination = note("changeDestination");
        commands.resetCounter = note("resetCounter");
        commands.showInput = note("showInput");
        commands.openInput = note("openInput");
        commands.showOutput = note("showOutput");
        commands.openOutput = note("openOutput");
        commands.showFolder = note("showFolder");
        commands.clearLog = note("clearLog");
        commands.switchWindows = note("switchWindows");
        commands.showMainWindow = note("showMainWindow");
        commands.undo = note("undo");
        commands.redo = note("redo");
        commands.openPreferences = note("openPreferences");
        commands.openUserGuide = note("openUserGuide");
        commands.emailUs = note("emailUs");
        commands.visitAppUrl = note("visitAppUrl");
        commands.visitUs = note("visitUs");
        commands.quit = note("quit");
        window_.setCommands(commands);
        window_.show();
        runEvents();
    }
    void enableAll() {
        window_.setDestination(QStringLiteral("/home/user/Texts"));
        window_.setHasFolder(true);
        window_.setHasInput(true);
        window_.setHasOutput(true);
        window_.setUndoAction(QStringLiteral("Clear Log"));
        window_.setRedoAction(QString());
    }
    static QString plain(QString title) { return title.remove(u'&').remove(QChar(0x2026)); }
    QList<QAction*> items() const {
        QList<QAction*> items;
        for (const QAction* menu : window_.menuBar()->actions())
            for (QAction* item : menu->menu()->actions())
                if (!item->isSeparator()) items.append(item);
        return items;
    }

    DiskFileWorld world_;
    FakeAlerts alerts_;
    MainWindow window_{alerts_, world_.workspace};
    QStringList called_;
    QStringList converted_;
};

TEST_F(MainWindowTest, buttonsRunTheirCommands) {
    enableAll();
    for (auto* button : window_.findChildren<QPushButton*>())
        button->click();
    called_.sort();
    EXPECT_EQ(called_, QStringList({QStringLiteral("changeDestination"), QStringLiteral("clearLog"),
                                    QStringLiteral("openOutput"), QStringLiteral("resetCounter"),
                                    QStringLiteral("showFolder"), QStringLiteral("showOutput")}));
}

TEST_F(MainWindowTest, everyMenuItemDoesSomething) {
    enableAll();
    window_.setBig(true);
    window_.setStatement(QStringLiteral("the statement"));
    window_.setIsolation([] { return QStringLiteral("the isolation"); });
    for (QAction* item : items()) {
        if (plain(item->text()) == QStringLiteral("Copy")) continue; // enabled by a selection
        EXPECT_TRUE(item->isEnabled()) << item->text().toStdString();
    }
    for (QAction* item : items()) {
        const QString title = plain(item->text());
        if (title == QStringLiteral("Minimize") || title == QStringLiteral("Close Window")) continue;
        item->trigger();
    }
    for (const char* name : {"changeDestination", "resetCounter", "showInput", "openInput", "showOutput", "openOutput",
                             "showFolder", "clearLog", "switchWindows", "showMainWindow", "undo", "redo",
                             "openPreferences", "openUserGuide", "emailUs", "visitAppUrl", "visitUs", "quit"})
        EXPECT_EQ(called_.count(QLatin1String(name)), 1) << name;
    EXPECT_EQ(alerts_.shown().size(), 1U); // Help
    EXPECT_NE(window_.findChild<QDialog*>(QStringLiteral("about")), nullptr);
    EXPECT_EQ(window_.findChildren<OpenDialog*>().size(), 1);
    EXPECT_NE(window_.findChild<QWidget*>(QStringLiteral("findBar")), nullptr);
}

TEST_F(MainWindowTest, aboutHasIconStatementReleaseLinkAndLicence) {
    window_.setStatement(QStringLiteral("the statement"));
    window_.setIsolation([] { return QStringLiteral("the isolation"); });
    for (QAction* item : items())
        if (plain(item->text()) == QStringLiteral("About Quillow")) item->trigger();
    auto* about = window_.findChild<QDialog*>(QStringLiteral("about"));
    ASSERT_NE(about, nullptr);
    EXPECT_TRUE(about->isVisible());
    QStringList texts;
    bool hasIcon = false;
    for (auto* label : about->findChildren<QLabel*>()) {
        hasIcon = hasIcon || !label->pixmap(Qt::ReturnByValue).isNull();
        texts.append(label->text());
        if (!label->text().contains(QStringLiteral("href"))) continue;
        Q_EMIT label->linkActivated(QString());
        EXPECT_EQ(called_.count(QStringLiteral("visitAppUrl")), 1);
    }
    EXPECT_TRUE(hasIcon);
    const QString all = texts.join(QLatin1Char('\n'));
    for (const char* text : {"Release 1.5.1", "the statement", "the isolation", "Quillow on the Web", "MIT licence"})
        EXPECT_TRUE(all.contains(QLatin1String(text))) << text;
    for (auto* label : about->findChildren<QLabel*>())
        EXPECT_GE(label->height(), label->heightForWidth(label->width())) << "cut: " << label->text().toStdString();
    about->reject();
    EXPECT_FALSE(about->isVisible());
}

TEST_F(MainWindowTest, theHelpMenuTakesItemsOfTheLogic) {
    QtMenu help(window_.helpMenu());
    bool ran = false;
    help.insertItem({QStringLiteral("More"), QString(), [&ran](Sender) { ran = true; }}, 1);
    EXPECT_EQ(window_.helpMenu().title(), QStringLiteral("&Help"));
    EXPECT_EQ(plain(window_.helpMenu().actions().value(0)->text()), QStringLiteral("Quillow Help"));
    window_.helpMenu().actions().value(1)->trigger();
    EXPECT_TRUE(ran);
}

TEST_F(MainWindowTest, shortcutsAndMnemonicsAreUnique) {
    QSet<QString> keys;
    for (const QAction* item : items()) {
        for (const QKeySequence& key : item->shortcuts()) {
            EXPECT_FALSE(keys.contains(key.toString())) << item->text().toStdString();
            keys.insert(key.toString());
        }
    }
    // Menu titles and buttons share the Alt key.
    QSet<QChar> mnemonics;
    const auto take = [&mnemonics](const QString& title) {
        const qsizetype mark = title.indexOf(u'&');
        ASSERT_GE(mark, 0) << title.toStdString();
        EXPECT_FALSE(mnemonics.contains(title[mark + 1].toLower())) << title.toStdString();
        mnemonics.insert(title[mark + 1].toLower());
    };
    for (const QAction* menu : window_.menuBar()->actions())
        take(menu->text());
    for (const auto* button : window_.findChildren<QPushButton*>())
        take(button->text());
    take(window_.discloseButton().text());
}

TEST_F(MainWindowTest, mnemonicsOfAMenuAreUnique) {
    enableAll();
    for (const QAction* menu : window_.menuBar()->actions()) {
        QSet<QChar> mnemonics;
        for (const QAction* item : menu->menu()->actions()) {
            if (item->isSeparator()) continue;
            const qsizetype mark = item->text().indexOf(u'&');
            ASSERT_GE(mark, 0) << item->text().toStdString();
            EXPECT_FALSE(mnemonics.contains(item->text()[mark + 1].toLower())) << item->text().toStdString();
            mnemonics.insert(item->text()[mark + 1].toLower());
        }
    }
}

TEST_F(MainWindowTest, whatCannotBeDoneIsDisabled) {
    const auto isEnabled = [this](const char16_t* title) {
        for (const QAction* item : items())
            if (plain(item->text()) == QString::fromUtf16(title)) return item->isEnabled();
        ADD_FAILURE() << QString::fromUtf16(title).toStdString();
        return false;
    };
    for (const char16_t* title : {u"Undo", u"Redo", u"Show Output", u"Open Output", u"Show Folder", u"Show Document"})
        EXPECT_FALSE(isEnabled(title)) << QString::fromUtf16(title).toStdString();
    enableAll();
    for (const char16_t* title :
         {u"Undo Clear Log", u"Redo", u"Show Output", u"Open Output", u"Show Folder", u"Show Document"})
        EXPECT_TRUE(isEnabled(title)) << QString::fromUtf16(title).toStdString();
}

TEST_F(MainWindowTest, destinationThatIsAskedForIsNoFolderToShow) {
    enableAll();
    window_.setHasFolder(false);
    window_.setDestination(QStringLiteral("<ASK WHEN SAVING>"));
    const auto buttons = window_.findChildren<QPushButton*>();
    const auto showFolder = std::find_if(buttons.begin(), buttons.end(), [](const QPushButton* button) {
        return plain(button->text()) == QStringLiteral("Show Folder");
    });
    ASSERT_NE(showFolder, buttons.end());
    EXPECT_FALSE((*showFolder)->isEnabled());
    window_.setHasFolder(true);
    EXPECT_TRUE((*showFolder)->isEnabled());
}

TEST_F(MainWindowTest, showsTheDestinationAsPlainText) {
    window_.setDestination(QStringLiteral("<b>/home/user/Texts</b>"));
    const auto* label = static_cast<const ElidedLabel*>(window_.findChild<QLabel*>(QStringLiteral("destination")));
    EXPECT_EQ(label->wholeText(), QStringLiteral("<b>/home/user/Texts</b>"));
    EXPECT_EQ(label->textFormat(), Qt::PlainText);
    runEvents();
    EXPECT_EQ(label->hoverText(), QString()) << "nothing is elided";
    window_.setDestination(QStringLiteral("<b>") + QString(400, u'x'));
    runEvents();
    EXPECT_TRUE(label->hoverText().contains(QStringLiteral("&lt;b&gt;")));
}

TEST_F(MainWindowTest, showsNoDestinationBeforeItIsKnown) {
    const auto* label = static_cast<const ElidedLabel*>(window_.findChild<QLabel*>(QStringLiteral("destination")));
    EXPECT_EQ(label->wholeText(), QString());
    window_.setDestination(std::nullopt);
    EXPECT_EQ(label->wholeText(), QStringLiteral("not chosen yet"));
}

TEST_F(MainWindowTest, descriptionsForAssistiveToolsHaveNoMarkup) {
    enableAll();
    window_.setDestination(QStringLiteral("/home/user/") + QString(400, u'x'));
    window_.logView().replaceCharactersInRange({0, 0},
                                               QStringLiteral("\nstamp} Converted /a  >>  /") + QString(400, u'b'));
    runEvents();
    for (auto* widget : window_.findChildren<QWidget*>()) {
        const QString description = QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Description);
        EXPECT_FALSE(description.contains(u'<') || description.contains(QStringLiteral("&gt;")))
            << description.toStdString();
    }
}

TEST_F(MainWindowTest, aLongDestinationDoesNotWidenTheWindow) {
    window_.resize(MainWindow::kMinimumWidth, 500);
    window_.setDestination(QStringLiteral("/home/user/") + QString(400, u'x'));
    window_.setConvertedCount(1234567);
    runEvents();
    EXPECT_EQ(window_.width(), MainWindow::kMinimumWidth);
    EXPECT_LE(window_.minimumSizeHint().width(), MainWindow::kMinimumWidth);
}

TEST_F(MainWindowTest, everyControlHasAName) {
    std::function<void(QAccessibleInterface*)> walk = [&](QAccessibleInterface* control) {
        const QSet<QAccessible::Role> needName{QAccessible::PushButton,   QAccessible::CheckBox,
                                               QAccessible::EditableText, QAccessible::ComboBox,
                                               QAccessible::MenuItem,     QAccessible::StaticText};
        if (needName.contains(control->role()) && !control->state().invisible) {
            EXPECT_FALSE(control->text(QAccessible::Name).isEmpty()) << control->role();
        }
        for (int i = 0; i < control->childCount(); ++i)
            if (auto* child = control->child(i)) walk(child);
    };
    walk(QAccessible::queryAccessibleInterface(&window_));
    auto* area = QAccessible::queryAccessibleInterface(&window_.dropArea());
    EXPECT_EQ(area->role(), QAccessible::PushButton);
    EXPECT_EQ(area->text(QAccessible::Name), QStringLiteral("Drop documents here"));
    EXPECT_TRUE(area->text(QAccessible::Description).contains(QStringLiteral("Ctrl+O")));
}

TEST_F(MainWindowTest, chosenDocumentsGoTheRoadOfADrop) {
    world_.addFile(world_.root() + QStringLiteral("/a.rtf"), "x");
    world_.addFile(world_.root() + QStringLiteral("/Letter.rtfd/TXT.rtf"), "x");
    window_.dropArea().click();
    auto* chooser = window_.findChild<OpenDialog*>();
    ASSERT_NE(chooser, nullptr);
    chooser->setDirectory(world_.root());
    auto* name = chooser->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    name->setText(QStringLiteral("\"a.rtf\" \"Letter.rtfd\""));
    QTest::keyClick(name, Qt::Key_Return);
    runEvents();
    EXPECT_EQ(converted_,
              QStringList({world_.root() + QStringLiteral("/a.rtf"), world_.root() + QStringLiteral("/Letter.rtfd")}));
    EXPECT_TRUE(window_.findChildren<OpenDialog*>().isEmpty());
}

TEST_F(MainWindowTest, steppingIntoABundleChoosesIt) {
    world_.addFile(world_.root() + QStringLiteral("/Letter.rtfd/TXT.rtf"), "x");
    window_.chooseDocuments();
    auto* chooser = window_.findChild<OpenDialog*>();
    Q_EMIT chooser->directoryEntered(world_.root() + QStringLiteral("/Letter.rtfd"));
    runEvents();
    EXPECT_EQ(converted_, QStringList{world_.root() + QStringLiteral("/Letter.rtfd")});
}

TEST_F(MainWindowTest, choosingStartsInTheFolderChosenFromBefore) {
    world_.addFile(world_.root() + QStringLiteral("/Papers/Letter.rtfd/TXT.rtf"), "x");
    window_.chooseDocuments();
    auto* chooser = window_.findChild<OpenDialog*>();
    chooser->setDirectory(world_.root() + QStringLiteral("/Papers"));
    Q_EMIT chooser->directoryEntered(world_.root() + QStringLiteral("/Papers/Letter.rtfd"));
    runEvents();
    window_.chooseDocuments();
    EXPECT_EQ(window_.findChild<OpenDialog*>()->directory().absolutePath(), world_.root() + QStringLiteral("/Papers"));
}

TEST_F(MainWindowTest, beginsSmallWithoutTheLog) {
    EXPECT_EQ(window_.size(), QSize(MainWindow::kMinimumWidth, MainWindow::kSmallHeight));
    EXPECT_FALSE(window_.logView().isVisible());
    EXPECT_TRUE(window_.discloseButton().isVisible());
    EXPECT_EQ(window_.discloseButton().state(), ButtonState::off);
    // The whole upper part is visible, with room below.
    const QRect button(window_.discloseButton().mapTo(&window_, QPoint(0, 0)), window_.discloseButton().size());
    EXPECT_LT(button.bottom(), MainWindow::kSmallHeight - 4);
    EXPECT_GE(button.height(), window_.discloseButton().sizeHint().height());
}

TEST_F(MainWindowTest, nothingMovesWhenTheLogIsDisclosed) {
    window_.logView().replaceCharactersInRange({0, 0}, QStringLiteral("\nstamp} text"));
    runEvents();
    const auto places = [this] {
        return QList<QPoint>{window_.dropArea().mapTo(&window_, QPoint(0, 0)),
                             window_.dropArea().mapTo(&window_, window_.dropArea().rect().bottomRight()),
                             window_.discloseButton().mapTo(&window_, QPoint(0, 0))};
    };
    const auto before = places();
    window_.resize(MainWindow::kMinimumWidth, 400);
    EXPECT_EQ(places(), before);
    EXPECT_TRUE(window_.logView().isVisible());
    const QSize uncovered = window_.logView().size();
    window_.resize(MainWindow::kMinimumWidth, MainWindow::kBigHeight);
    runEvents();
    EXPECT_EQ(places(), before);
    EXPECT_EQ(window_.logView().size(), uncovered);
    const QPoint end = window_.logView().mapTo(&window_, window_.logView().rect().bottomRight());
    EXPECT_LT(end.y(), MainWindow::kBigHeight - 30) << "the commands are below";
    window_.resize(MainWindow::kMinimumWidth, MainWindow::kSmallHeight);
    EXPECT_EQ(places(), before);
    EXPECT_FALSE(window_.logView().isVisible());
}

TEST_F(MainWindowTest, maximisedTheModeSaysWhetherTheLogIsDisclosed) {
    const int dropHeight = window_.dropArea().height();
    window_.setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    window_.setWindowState(Qt::WindowMaximized);
    ASSERT_TRUE(waitUntil([this] { return window_.height() > MainWindow::kBigHeight; }));
    EXPECT_FALSE(window_.logView().isVisible());
    EXPECT_GT(window_.dropArea().height(), window_.height() / 2);
    window_.setBig(true);
    runEvents();
    EXPECT_TRUE(window_.logView().isVisible());
    EXPECT_EQ(window_.dropArea().height(), dropHeight);
    window_.setBig(false);
    runEvents();
    EXPECT_FALSE(window_.logView().isVisible());
    window_.setWindowState(Qt::WindowNoState);
    ASSERT_TRUE(waitUntil([this] { return window_.height() == MainWindow::kSmallHeight; }));
    EXPECT_EQ(window_.dropArea().height(), dropHeight);
}

TEST_F(MainWindowTest, theDisclosureButtonSwitchesByEveryWay) {
    DiscloseButton& button = window_.discloseButton();
    button.click();
    EXPECT_EQ(called_, QStringList(QStringLiteral("switchWindows")));
    EXPECT_EQ(button.state(), ButtonState::on);
    button.setFocus();
    QTest::keyClick(&button, Qt::Key_Space);
    EXPECT_EQ(button.state(), ButtonState::off);
    QTest::keyClick(&button, Qt::Key_Return);
    EXPECT_EQ(called_.size(), 3);
    // Assistive tools toggle it without a click.
    auto* control = QAccessible::queryAccessibleInterface(&button);
    ASSERT_NE(control, nullptr);
    EXPECT_EQ(control->text(QAccessible::Name), QStringLiteral("Message log"));
    control->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_TRUE(waitUntil([this] { return called_.size() == 4; }));
    EXPECT_EQ(button.state(), ButtonState::off);
}

TEST_F(MainWindowTest, controlsFollowTheModeWithoutSwitching) {
    const auto titleOf = [this] {
        for (const QAction* item : items())
            if (item->text().contains(QStringLiteral("Message"))) return plain(item->text());
        return QString();
    };
    EXPECT_EQ(titleOf(), QStringLiteral("Show Message Log"));
    window_.setBig(true);
    EXPECT_EQ(window_.discloseButton().state(), ButtonState::on);
    EXPECT_EQ(titleOf(), QStringLiteral("Hide Message Log"));
    window_.setBig(false);
    EXPECT_EQ(window_.discloseButton().state(), ButtonState::off);
    EXPECT_TRUE(called_.isEmpty());
}

TEST_F(MainWindowTest, theLatestEntryIsShownWhileTheLogIsNot) {
    const auto* entry = window_.findChild<QLabel*>(QStringLiteral("latestEntry"));
    ASSERT_NE(entry, nullptr);
    EXPECT_FALSE(entry->isVisible());
    window_.logView().replaceCharactersInRange({0, 0}, QStringLiteral("\nstamp} first\nstamp} Not {able} <b>"));
    EXPECT_TRUE(entry->isVisible());
    EXPECT_EQ(static_cast<const ElidedLabel*>(entry)->wholeText(), QStringLiteral("Not {able} <b>"));
    EXPECT_EQ(entry->accessibleName(), QStringLiteral("Latest entry: Not {able} <b>"));
    window_.setBig(true);
    EXPECT_FALSE(entry->isVisible());
    window_.setBig(false);
    EXPECT_TRUE(entry->isVisible());
    window_.logView().replaceCharactersInRange({0, window_.logView().length()}, QString());
    EXPECT_FALSE(entry->isVisible());
}

TEST_F(MainWindowTest, theLatestEntryTellsWhatWasNotConverted) {
    auto* entry = static_cast<LatestEntry*>(window_.findChild<QLabel*>(QStringLiteral("latestEntry")));
    window_.logView().replaceCharactersInRange({0, 0}, QStringLiteral("\nstamp} Converted /") + QString(400, u'x'));
    window_.showOutcome({3, 1, 0});
    runEvents();
    EXPECT_TRUE(entry->hasMark());
    EXPECT_TRUE(entry->shownText().endsWith(QStringLiteral(" \u00B7 1 not converted"))) << "only the message is elided";
    EXPECT_TRUE(entry->accessibleName().endsWith(QStringLiteral(" \u00B7 1 not converted")));
    window_.showOutcome({2, 0, 0});
    EXPECT_FALSE(entry->hasMark());
    EXPECT_EQ(entry->remark(), QString());
    window_.showOutcome({1, 0, 1});
    EXPECT_EQ(entry->remark(), QStringLiteral("1 not written"));
    window_.logView().replaceCharactersInRange({0, window_.logView().length()}, QString());
    EXPECT_EQ(entry->remark(), QString()) << "the log was cleared";
}

TEST_F(MainWindowTest, aClickOnTheLatestEntryOpensTheLog) {
    auto* entry = window_.findChild<QLabel*>(QStringLiteral("latestEntry"));
    window_.logView().replaceCharactersInRange({0, 0}, QStringLiteral("\nstamp} text"));
    QTest::mouseClick(entry, Qt::RightButton);
    EXPECT_TRUE(called_.isEmpty());
    QTest::mouseClick(entry, Qt::LeftButton);
    EXPECT_EQ(called_, QStringList(QStringLiteral("switchWindows")));
}

TEST_F(MainWindowTest, theDropAreaMarksTheOutcomeForAMoment) {
    window_.showOutcome({2, 0, 0});
    EXPECT_EQ(window_.dropArea().mark(), OutcomeMark::done);
    window_.showOutcome({2, 1, 0});
    EXPECT_EQ(window_.dropArea().mark(), OutcomeMark::attention);
    EXPECT_TRUE(waitUntil([this] { return window_.dropArea().mark() == OutcomeMark::none; }));
}

TEST_F(MainWindowTest, aLongEntryDoesNotWidenTheWindow) {
    window_.logView().replaceCharactersInRange({0, 0}, QStringLiteral("\nstamp} ") + QString(400, u'x'));
    runEvents();
    EXPECT_LE(window_.minimumSizeHint().width(), MainWindow::kMinimumWidth);
    EXPECT_EQ(window_.width(), MainWindow::kMinimumWidth);
}

TEST_F(MainWindowTest, tellsOnceWhenItIsUp) {
    MainWindow other(alerts_, world_.workspace);
    int times = 0;
    other.callWhenUp([&times] { ++times; });
    runEvents();
    EXPECT_EQ(times, 0);
    other.show();
    EXPECT_TRUE(waitUntil([&times] { return times > 0; }));
    other.repaint();
    EXPECT_EQ(times, 1);
}

TEST_F(MainWindowTest, undoOfTheTextViewIsNotOurs) {
    // The Undo menu item must not reach the widget's own undo.
    EXPECT_FALSE(window_.logView().isUndoRedoEnabled());
}

/// A slow reader: it waits until the main thread has painted a few frames.
class SlowReader final : public HtmlTextReader {
public:
    explicit SlowReader(const std::atomic<int>& frames)
        : frames_(frames) {}
    std::optional<AttributedString> initWithHTML(const QByteArray& bytes) override {
        thread = std::this_thread::get_id();
        for (int i = 0; i < 6000 && frames_ < 3; ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        return AttributedString{bytes};
    }
    std::thread::id thread;

private:
    const std::atomic<int>& frames_;
};

/// Counts the paint events of a widget.
class PaintCounter final : public QObject {
public:
    std::atomic<int> count = 0;

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint) ++count;
        return false;
    }
};

TEST_F(MainWindowTest, theSpinnerTurnsAndNothingReEntersDuringALongReading) {
    PaintCounter frames;
    window_.spinner().installEventFilter(&frames);
    SlowReader slow(frames.count);
    const BackgroundWork work(&window_.spinner());
    BackgroundHtmlTextReader reader(slow, work);
    bool isReading = false;
    int reEntries = 0;
    int later = 0;
    const auto note = [&] { isReading ? ++reEntries : ++later; };
    // A timer, a posted call, and input that is already in the queue.
    QTimer::singleShot(0, &window_, note);
    QMetaObject::invokeMethod(&window_, note, Qt::QueuedConnection);

    window_.spinner().startAnimation();
    isReading = true;
    const auto text = reader.initWithHTML("text");
    isReading = false;
    window_.spinner().stopAnimation();

    EXPECT_EQ(text, AttributedString{"text"});
    EXPECT_NE(slow.thread, std::this_thread::get_id());
    EXPECT_GE(frames.count, 3);
    EXPECT_EQ(reEntries, 0);
    runEvents();
    EXPECT_EQ(later, 2);
}

TEST_F(MainWindowTest, aRequestToEndIsShownDuringALongReading) {
    const TerminationSignals termination([] {});
    BackgroundWork work(&window_.spinner());
    int shown = 0;
    work.setEnding(termination, [&] {
        ++shown;
        window_.showEnding();
    });
    const auto title = [this] { return window_.dropArea().title(); };
    EXPECT_EQ(title(), QStringLiteral("Drop documents here"));
    const auto done = work.wait<std::optional<int>>([&]() -> std::optional<int> {
        termination.request();
        std::this_thread::sleep_for(4 * BackgroundWork::kFrame);
        return 1;
    });
    EXPECT_EQ(done, 1);
    EXPECT_EQ(shown, 1);
    EXPECT_EQ(title(), QStringLiteral("Quitting\u2026"));
}

TEST(TerminationSignals, aRequestOfAnotherThreadBecomesACallOnTheMainThread) {
    int calls = 0;
    const TerminationSignals termination([&calls] { ++calls; });
    std::thread([&termination] { termination.request(); }).join();
    EXPECT_TRUE(termination.isRequested());
    EXPECT_EQ(calls, 0);
    EXPECT_TRUE(waitUntil([&calls] { return calls == 1; }));
}

TEST(QuitKey, isCtrlAndQInTheLayoutOfThePress) {
    using Symbols = std::vector<std::uint32_t>;
    const Symbols qwerty{'q', 'Q', 'q', 'Q'};
    const Symbols azertyFirst{'a', 'A', 'q', 'Q'};
    const Symbols cyrillicFirst{0x6CA, 0x6EA, 'q', 'Q'};
    constexpr std::uint16_t kControl = 4;
    EXPECT_TRUE(isQuitKey(kControl, qwerty));
    EXPECT_TRUE(isQuitKey(kControl | 2 | 16, qwerty)) << "Caps Lock and Num Lock do not matter";
    EXPECT_FALSE(isQuitKey(0, qwerty));
    for (const int other : {1, 8, 64})
        EXPECT_FALSE(isQuitKey(static_cast<std::uint16_t>(kControl | other), qwerty)) << other;
    EXPECT_FALSE(isQuitKey(kControl, azertyFirst));
    EXPECT_TRUE(isQuitKey(kControl | 1U << 13, azertyFirst)) << "the second layout";
    EXPECT_TRUE(isQuitKey(kControl, cyrillicFirst));
    EXPECT_FALSE(isQuitKey(kControl, Symbols{'w', 'W'}));
    EXPECT_FALSE(isQuitKey(kControl, Symbols{}));
}

TEST(TerminationSignals, aSignalBecomesACallOnTheMainThread) {
    std::thread::id where;
    const TerminationSignals guard([&where] { where = std::this_thread::get_id(); });
    std::raise(SIGTERM);
    EXPECT_EQ(where, std::thread::id());
    EXPECT_TRUE(waitUntil([&where] { return where != std::thread::id(); }));
    EXPECT_EQ(where, std::this_thread::get_id());
}

} // namespace
} // namespace quillow
