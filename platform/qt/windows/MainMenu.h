// The main window's menu bar. Items that are not possible at the moment are disabled.
#pragma once

#include "platform/Alerts.h"
#include "platform/qt/windows/MainWindowCommands.h"

#include <QString>

#include <functional>
#include <optional>
#include <utility>

class QAction;
class QMenu;
class QKeySequence;

namespace quillow {

class MainWindow;
class QtLogView;

class MainMenu {
public:
    MainMenu(MainWindow& window, QtLogView& logView, Alerts& alerts);

    [[nodiscard]] QMenu& applicationMenu() { return *applicationMenu_; }
    [[nodiscard]] QMenu& helpMenu() { return *helpMenu_; }
    /// The one-line description of the product that About shows.
    void setStatement(const QString& statement) { statement_ = statement; }
    /// Asked for the line that About shows below the statement.
    void setIsolation(std::function<QString()> isolation) { isolation_ = std::move(isolation); }
    void setCommands(const MainWindowCommands& commands) { commands_ = commands; }
    void setHasInput(bool hasInput);
    void setHasOutput(bool hasOutput);
    void setHasFolder(bool hasFolder);
    void setBig(bool isBig);
    void setUndoAction(const std::optional<QString>& actionName);
    void setRedoAction(const std::optional<QString>& actionName);

private:
    using Command = std::function<void()> MainWindowCommands::*;
    QAction* add(QMenu& menu, const QString& title, const QKeySequence& keys, std::function<void()> action);
    QAction* add(QMenu& menu, const QString& title, const QKeySequence& keys, Command command);
    void makeEditMenu();
    void addFindItems(QMenu& edit);
    void makeLogMenu();
    void makeWindowMenu();
    void makeHelpMenu();
    void tellAbout();
    void tell(const QString& message, const QString& informative);

    MainWindow& window_;
    QtLogView& logView_;
    Alerts& alerts_;
    MainWindowCommands commands_;
    QString statement_;
    std::function<QString()> isolation_;
    QMenu* applicationMenu_ = nullptr;
    QMenu* helpMenu_ = nullptr;
    QAction* undo_ = nullptr;
    QAction* redo_ = nullptr;
    QAction* showInput_ = nullptr;
    QAction* openInput_ = nullptr;
    QAction* showOutput_ = nullptr;
    QAction* openOutput_ = nullptr;
    QAction* showFolder_ = nullptr;
    QAction* switchWindows_ = nullptr;
};

} // namespace quillow
