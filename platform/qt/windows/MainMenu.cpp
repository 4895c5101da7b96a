#include "platform/qt/windows/MainMenu.h"

#include "platform/qt/controls/QtWindow.h"
#include "platform/qt/controls/TitleDirection.h"
#include "platform/qt/windows/AboutBox.h"
#include "platform/qt/windows/MainWindow.h"
#include "platform/qt/windows/QtLogView.h"

#include <QAction>
#include <QApplication>
#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>

#include <utility>

namespace quillow {
namespace {

constexpr char kHelp[] =
    "Drop documents of the types RTF, RTFD, HTM, HTML and PDF on the drop area, or choose them with Ctrl+O. The text "
    "of each is "
    "written as a UTF-8 file with the extension .txt into the destination folder; an older file of the same name is "
    "replaced.\n\n"
    "The message log says what became of every document. Show Output and Open Output work on the latest text.";

void setTitle(QAction& action, const QString& verb, const std::optional<QString>& actionName) {
    action.setEnabled(actionName.has_value());
    // An ampersand in the name is not a mnemonic.
    QString name = actionName.value_or(QString());
    name.replace(QLatin1Char('&'), QLatin1String("&&"));
    action.setText(name.isEmpty() ? verb : verb + QLatin1Char(' ') + name);
}

} // namespace

MainMenu::MainMenu(MainWindow& window, QtLogView& logView, Alerts& alerts)
    : window_(window)
    , logView_(logView)
    , alerts_(alerts) {
    applicationMenu_ = window_.menuBar()->addMenu(QStringLiteral("&Quillow"));
    QMenu& program = *applicationMenu_;
    add(program, QStringLiteral("&About Quillow"), {}, [this] { tellAbout(); });
    program.addSeparator();
    add(program, QStringLiteral("&Preferences\u2026"), QKeySequence(Qt::CTRL | Qt::Key_Comma),
        &MainWindowCommands::openPreferences);
    program.addSeparator();
    add(program, QStringLiteral("&Quit Quillow"), QKeySequence(Qt::CTRL | Qt::Key_Q), &MainWindowCommands::quit);

    QMenu& file = *window_.menuBar()->addMenu(QStringLiteral("&File"));
    add(file, QStringLiteral("C&onvert Documents\u2026"), QKeySequence(Qt::CTRL | Qt::Key_O),
        [this] { window_.chooseDocuments(); });
    add(file, QStringLiteral("Change &Destination\u2026"), QKeySequence(Qt::CTRL | Qt::Key_D),
        &MainWindowCommands::changeDestination);
    file.addSeparator();
    add(file, QStringLiteral("&Close Window"), QKeySequence(Qt::CTRL | Qt::Key_W), [this] { window_.close(); });

    makeEditMenu();
    makeLogMenu();

    makeWindowMenu();
    makeHelpMenu();
}

void MainMenu::makeEditMenu() {
    QMenu& edit = *window_.menuBar()->addMenu(QStringLiteral("&Edit"));
    undo_ = add(edit, QString(), QKeySequence(Qt::CTRL | Qt::Key_Z), &MainWindowCommands::undo);
    redo_ = add(edit, QString(), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z), &MainWindowCommands::redo);
    setUndoAction(std::nullopt);
    setRedoAction(std::nullopt);
    edit.addSeparator();
    QAction* copy = add(edit, QStringLiteral("&Copy"), QKeySequence(Qt::CTRL | Qt::Key_C), [this] { logView_.copy(); });
    copy->setEnabled(false);
    QObject::connect(&logView_, &QPlainTextEdit::copyAvailable, copy, &QAction::setEnabled);
    add(edit, QStringLiteral("Select &All"), QKeySequence(Qt::CTRL | Qt::Key_A), [this] { logView_.selectAll(); });
    edit.addSeparator();
    addFindItems(edit);
}

void MainMenu::addFindItems(QMenu& edit) {
    add(edit, QStringLiteral("&Find\u2026"), QKeySequence(Qt::CTRL | Qt::Key_F), [this] { window_.openFindBar(); });
    const auto addAgain = [&](const QString& title, Qt::KeyboardModifiers shift, FindStep step) {
        const auto again = [this, step] { window_.findAgain(step); };
        add(edit, title, {}, again)
            ->setShortcuts(
                {QKeyCombination(shift, Qt::Key_F3), QKeyCombination(shift | Qt::ControlModifier, Qt::Key_G)});
    };
    addAgain(QStringLiteral("Find &Next"), Qt::NoModifier, FindStep::next);
    addAgain(QStringLiteral("Find &Previous"), Qt::ShiftModifier, FindStep::previous);
}

void MainMenu::makeLogMenu() {
    QMenu& log = *window_.menuBar()->addMenu(QStringLiteral("&Log"));
    showOutput_ =
        add(log, QStringLiteral("&Show Output"), QKeySequence(Qt::CTRL | Qt::Key_R), &MainWindowCommands::showOutput);
    openOutput_ = add(log, QStringLiteral("&Open Output"), QKeySequence(Qt::CTRL | Qt::Key_Return),
                      &MainWindowCommands::openOutput);
    showFolder_ = add(log, QStringLiteral("Show Fol&der"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_R),
                      &MainWindowCommands::showFolder);
    log.addSeparator();
    showInput_ = add(log, QStringLiteral("Show Doc&ument"), {}, &MainWindowCommands::showInput);
    openInput_ = add(log, QStringLiteral("Open Docu&ment"), {}, &MainWindowCommands::openInput);
    log.addSeparator();
    add(log, QStringLiteral("&Reset Counter"), {}, &MainWindowCommands::resetCounter);
    add(log, QStringLiteral("&Clear Log\u2026"), {}, &MainWindowCommands::clearLog);
}

void MainMenu::makeWindowMenu() {
    QMenu* windows = window_.menuBar()->addMenu(QStringLiteral("&Window"));
    add(*windows, QStringLiteral("&Minimize"), QKeySequence(Qt::CTRL | Qt::Key_M), [this] { window_.showMinimized(); });
    switchWindows_ = add(*windows, QString(), QKeySequence(Qt::CTRL | Qt::Key_L), &MainWindowCommands::switchWindows);
    windows->addSeparator();
    add(*windows, QStringLiteral("Main &Window"), QKeySequence(Qt::CTRL | Qt::Key_1),
        &MainWindowCommands::showMainWindow);
    const qsizetype ownItems = windows->actions().size();
    QObject::connect(windows, &QMenu::aboutToShow, windows, [windows, ownItems] {
        while (windows->actions().size() > ownItems)
            delete windows->actions().constLast();
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (!qobject_cast<QMainWindow*>(window) || !window->isVisible()) continue;
            if (window->property(kExcludedFromWindowsMenu).toBool()) continue;
            QObject::connect(windows->addAction(window->windowTitle()), &QAction::triggered, window, [window] {
                window->raise();
                window->activateWindow();
            });
        }
    });
}

void MainMenu::makeHelpMenu() {
    helpMenu_ = window_.menuBar()->addMenu(QStringLiteral("&Help"));
    QMenu& help = *helpMenu_;
    add(help, QStringLiteral("Quillow &Help"), QKeySequence(Qt::Key_F1),
        [this] { tell(QStringLiteral("Quillow turns documents into plain text"), QString::fromUtf8(kHelp)); });
    add(help, QStringLiteral("User &Guide"), {}, &MainWindowCommands::openUserGuide);
    help.addSeparator();
    add(help, QStringLiteral("Quillow on the &Web"), {}, &MainWindowCommands::visitAppUrl);
    add(help, QStringLiteral("Visit &Us"), {}, &MainWindowCommands::visitUs);
    add(help, QStringLiteral("&Mail to Support"), {}, &MainWindowCommands::emailUs);
}

QAction* MainMenu::add(QMenu& menu, const QString& title, const QKeySequence& keys, std::function<void()> action) {
    QAction* item = menu.addAction(directed(title));
    item->setShortcut(keys);
    QObject::connect(item, &QAction::triggered, &window_, [action = std::move(action)] { action(); });
    return item;
}

QAction* MainMenu::add(QMenu& menu, const QString& title, const QKeySequence& keys, Command command) {
    return add(menu, title, keys, [this, command] {
        if (commands_.*command) (commands_.*command)();
    });
}

void MainMenu::tellAbout() {
    const auto visitPage = [this] {
        if (commands_.visitAppUrl) commands_.visitAppUrl();
    };
    auto* about = new AboutBox(statement_, isolation_ ? isolation_() : QString(), visitPage, &window_);
    about->open();
}

void MainMenu::tell(const QString& message, const QString& informative) {
    alerts_.beginSheetModalForWindow({message, informative, AlertStyle::informational, {}}, &window_.window(), {});
}

void MainMenu::setHasInput(bool hasInput) {
    showInput_->setEnabled(hasInput);
    openInput_->setEnabled(hasInput);
}

void MainMenu::setHasOutput(bool hasOutput) {
    showOutput_->setEnabled(hasOutput);
    openOutput_->setEnabled(hasOutput);
}

void MainMenu::setHasFolder(bool hasFolder) {
    showFolder_->setEnabled(hasFolder);
}

void MainMenu::setBig(bool isBig) {
    switchWindows_->setText(isBig ? QStringLiteral("Hide Message &Log") : QStringLiteral("Show Message &Log"));
}

void MainMenu::setUndoAction(const std::optional<QString>& actionName) {
    setTitle(*undo_, QStringLiteral("&Undo"), actionName);
}

void MainMenu::setRedoAction(const std::optional<QString>& actionName) {
    setTitle(*redo_, QStringLiteral("&Redo"), actionName);
}

} // namespace quillow
