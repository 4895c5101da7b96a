// The preferences window: a toolbar, which its delegate puts on it, above two panes. General says where texts go and what happens
// at start-up, Update whether newer releases are told.
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
    /// The logic gives the window the height of its pane and this much for title bar and toolbar. The title bar stands outside
    /// of the frames that it is told here, so all of it is the toolbar's, and a pane has just the height that it asked for.
    static constexpr int kToolbarHeight = 78;

    explicit PreferencesWindow(UpdateCheck updateCheck);

    [[nodiscard]] QtWindow& window() { return window_; }
    [[nodiscard]] QtTabView& tabView() { return *tabView_; }
    [[nodiscard]] GeneralPane& generalPane() { return *generalPane_; }
    [[nodiscard]] UpdatePane& updatePane() { return *updatePane_; }

private:
    QtWindow window_{*this};
    QtTabView* tabView_;
    GeneralPane* generalPane_;
    UpdatePane* updatePane_;
};

} // namespace quillow
