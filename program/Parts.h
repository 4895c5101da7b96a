// The delegate with its outlets: connects all parts of the program.
#pragma once

#include "app/QuillowAppDelegate.h"
#include "frame/MWOutlinedDragDropView.h"
#include "frame/MWWhiteView.h"
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

private:
    void connectOutlets();
    void connectWindows(std::function<void()> quit);

    Adapters adapters_;
    MWWhiteView whitePanel_;
    MWOutlinedDragDropView dropView_;
    std::optional<QuillowAppDelegate> delegate_;
    std::optional<MyPrefToolbarDelegate> prefToolbarDelegate_;
    std::optional<Bindings> bindings_;
    std::optional<PreferencesBindings> preferencesBindings_;
};

} // namespace quillow
