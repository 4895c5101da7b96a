// The preferences window: a toolbar, which its delegate puts on it, above two panes. General sets where texts go and
// what happens at start-up. Update sets whether the user is notified of newer releases.
#pragma once

#include "platform/Platform.h"
#include "platform/qt/controls/QtTabView.h"
#include "platform/qt/controls/QtWindow.h"

#include <QMainWindow>

namespace quillow {

class GeneralPane;
class UpdatePane;

class PreferencesWindow final : public QMainWindow {
public:
    /// The logic sets the window's height to the height of its pane plus this constant, which it reserves for the
    /// title bar and the toolbar. Frames here do not include the title bar, so the toolbar gets all of it and the
    /// pane gets exactly its own height.
    static constexpr int kToolbarHeight = 78;

    explicit PreferencesWindow(UpdateCheck updateCheck);

    [[nodiscard]] QtWindow& window() { return window_; }
    [[nodiscard]] QtTabView& tabView() { return *tabView_; }
    [[nodiscard]] GeneralPane& generalPane() { return *generalPane_; }
    [[nodiscard]] UpdatePane& updatePane() { return *updatePane_; }

protected:
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void fitPanes();

    QtWindow window_{*this};
    QtTabView* tabView_;
    GeneralPane* generalPane_;
    UpdatePane* updatePane_;
};

} // namespace quillow
