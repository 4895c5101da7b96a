// The delegate with its outlets: connects all parts of the program.
#pragma once

#include "app/QuillowAppDelegate.h"
#include "frame/MWOutlinedDragDropView.h"
#include "frame/MWWhiteView.h"
#include "platform/qt/controls/LazyWindow.h"
#include "platform/qt/life/DesktopNotification.h"
#include "platform/qt/life/TaskbarProgress.h"
#include "platform/qt/windows/PreferencesBindings.h"
#include "platform/qt/windows/PreferencesWindow.h"
#include "platform/qt/windows/QtToolbar.h"
#include "prefs/MyPrefToolbarDelegate.h"
#include "program/Adapters.h"
#include "program/Wiring.h"

#include <functional>
#include <optional>

namespace quillow {

class Parts {
public:
    /// Runs the delegate's class initialisation, then constructs the delegate.
    Parts(QtMainQueue& mainQueue, const Termination& termination, std::function<void()> quit);
    Parts(const Parts&) = delete;
    Parts& operator=(const Parts&) = delete;

    [[nodiscard]] QuillowAppDelegate& delegate() { return *delegate_; }
    [[nodiscard]] MainWindow& window() { return adapters_.window; }
    [[nodiscard]] MWDragDropView& dropView() { return dropView_; }
    /// Made when they are first needed.
    [[nodiscard]] PreferencesWindow& preferences();

    /// The rest of the start, once the window is on the screen: the windows' icon and the work of the background queue.
    void doWhatCanWait();

private:
    /// The preferences window with its toolbar's delegate.
    struct Preferences {
        Preferences(Adapters& adapters, QuillowAppDelegate& delegate);
        Preferences(const Preferences&) = delete;
        Preferences& operator=(const Preferences&) = delete;
        ~Preferences();

        PreferencesWindow window;
        QtToolbarFactory toolbarFactory;
        MyPrefToolbarDelegate toolbarDelegate;
        PreferencesBindings bindings;
    };

    /// After a batch in the background.
    void notifyOf(const Outcome& outcome);
    /// The number of documents of the current drop or batch.
    [[nodiscard]] qint64 documentsOfBatch(int documentsBefore) const;
    void connectOutlets();
    void connectWindows(std::function<void()> quit);

    Adapters adapters_;
    MWWhiteView whitePanel_;
    MWOutlinedDragDropView dropView_;
    LazyWindow prefWindow_{[this]() -> QtWindow& { return preferences().window(); }};
    std::optional<QuillowAppDelegate> delegate_;
    std::optional<Bindings> bindings_;
    DesktopNotification notification_;
    TaskbarProgress taskbarProgress_{adapters_.clock};
    std::optional<Preferences> preferences_;
};

} // namespace quillow
