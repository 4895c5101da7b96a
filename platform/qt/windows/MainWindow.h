// The program's window: the drop area, the destination folder, the counter and, if the window is tall enough, the
// message log with its commands.
#pragma once

#include "base/Outcome.h"
#include "platform/Alerts.h"
#include "platform/Workspace.h"
#include "platform/qt/controls/QtWindow.h"
#include "platform/qt/dialogs/DocumentChooser.h"
#include "platform/qt/windows/FindBar.h"
#include "platform/qt/windows/MainWindowCommands.h"

#include <QMainWindow>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

class QLabel;
class QMenu;
class QPushButton;
class QVBoxLayout;

namespace quillow {

class DiscloseButton;
class DisclosedContent;
class DropArea;
class ElidedLabel;
class LatestEntry;
class MainMenu;
class QtLogView;
class Spinner;

class MainWindow final : public QMainWindow {
public:
    // In points, including the menu bar.
    static constexpr int kMinimumWidth = 615;
    static constexpr int kSmallHeight = 255; ///< all but the message log
    static constexpr int kBigHeight = 580;

    MainWindow(Alerts& alerts, const Workspace& workspace);
    ~MainWindow() override;

    void setCommands(const MainWindowCommands& commands);
    /// The one-line description of the product that About shows.
    void setStatement(const QString& statement);
    /// Asked for the line that About shows below, about what protects the system from documents.
    void setIsolation(std::function<QString()> isolation);

    /// The displayed destination of texts; std::nullopt if the folder cannot be found. Until the first call, the window
    /// shows none.
    void setDestination(const std::optional<QString>& folder);
    /// Whether the preferences have a fixed folder. "Show Folder" shows it, whether texts go there or not.
    void setHasFolder(bool hasFolder);
    void setConvertedCount(qint64 count);
    /// Tells what became of the latest drop: with a mark in the drop area for a moment, and beside the latest entry.
    void showOutcome(const Outcome& outcome);
    /// Shows that the program ends after the current document, and paints it at once.
    void showEnding();
    /// Updates the controls for the big or the small mode. Does not change the window's height.
    void setBig(bool isBig);
    /// Whether there is a latest document, or a latest text, to show and open.
    void setHasInput(bool hasInput);
    void setHasOutput(bool hasOutput);
    /// The action that can be undone or redone: std::nullopt if there is none, an empty name for an unnamed action.
    void setUndoAction(const std::optional<QString>& actionName);
    void setRedoAction(const std::optional<QString>& actionName);

    [[nodiscard]] QtWindow& window() { return window_; }
    /// The first menu of the menu bar.
    [[nodiscard]] QMenu& applicationMenu();
    [[nodiscard]] QMenu& helpMenu();
    [[nodiscard]] DropArea& dropArea() { return *dropArea_; }
    [[nodiscard]] QtLogView& logView() { return *logView_; }
    [[nodiscard]] Spinner& spinner() { return *spinner_; }
    [[nodiscard]] DiscloseButton& discloseButton() { return *discloseButton_; }

    /// Calls the handler once, when the window is on the screen: now, or at its next paint. If the window is kept off
    /// the screen, for example on another workspace, it calls the handler after a few seconds.
    void callWhenUp(std::function<void()> handler);

    /// Shows the dialog for choosing documents. The chosen documents are converted like dropped ones.
    void chooseDocuments();
    /// Opens the log and its find bar.
    void openFindBar();
    /// Goes to another place of the text in the find bar. Opens the log.
    void findAgain(FindStep step);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] QWidget* makeUpperPart();
    [[nodiscard]] QWidget* makeLowerPart();
    [[nodiscard]] QLayout* makeDestinationLine();
    [[nodiscard]] QLayout* makeLogTitle();
    [[nodiscard]] QLayout* makeLogCommands();
    [[nodiscard]] QPushButton* makeButton(const QString& title, const QString& description,
                                          std::function<void()> MainWindowCommands::*command);
    void openLog();
    [[nodiscard]] FindBar& findBar();
    void showLatestEntry();
    void tellThatItIsUp();
    void run(std::function<void()> MainWindowCommands::*command) const;

    QtWindow window_{*this};
    DocumentChooser documentChooser_;
    MainWindowCommands commands_;
    std::vector<std::function<void()>> whenUp_;
    DropArea* dropArea_;
    ElidedLabel* destination_;
    QLabel* convertedCount_;
    Spinner* spinner_;
    QtLogView* logView_;
    QVBoxLayout* logLayout_ = nullptr;
    FindBar* findBar_ = nullptr; ///< made at its first use
    DisclosedContent* content_ = nullptr;
    DiscloseButton* discloseButton_;
    LatestEntry* latestEntry_;
    bool isBig_ = false;
    QPushButton* showOutput_ = nullptr;
    QPushButton* openOutput_ = nullptr;
    QPushButton* showFolder_ = nullptr;
    std::unique_ptr<MainMenu> menu_;
};

} // namespace quillow
