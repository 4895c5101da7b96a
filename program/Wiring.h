// Connects the delegate to the windows: shows its properties in them and binds their controls to its actions.
#pragma once

#include "app/QuillowAppDelegate.h"
#include "base/UndoManager.h"
#include "frame/MWDragDropView.h"
#include "platform/Defaults.h"
#include "platform/qt/windows/MainWindow.h"
#include "platform/qt/windows/PreferencesBindings.h"
#include "util/MWValueTransformer.h"

#include <functional>
#include <vector>

namespace quillow {

class MWPhoneHome;
class UpdatePane;

/// Shows the delegate's properties in the window, now and after every change; the destination from the first change on.
class Bindings {
public:
    Bindings(QuillowAppDelegate& delegate, const Defaults& defaults, UndoManager& undoManager, MainWindow& window);

private:
    void bind(KVObject& object, const char16_t* key, const std::function<void()>& show);
    void observe(KVObject& object, const char16_t* key, const std::function<void()>& show);

    std::vector<Observation> observations_;
};

[[nodiscard]] MainWindowCommands commandsOf(QuillowAppDelegate& delegate, MWDragDropView& dropView,
                                            UndoManager& undoManager, std::function<void()> quit);
[[nodiscard]] PreferencesBindings::Actions preferencesActionsOf(QuillowAppDelegate& delegate);
/// The transformers that the panes need, looked up by name: the delegate's own, and the standard ones by class name.
/// If a name is not registered, its transform returns nil.
[[nodiscard]] PreferencesBindings::Transforms transformsOf(const ValueTransformerRegistry& registry);

/// Shows in the pane whether an update check runs, now and whenever that changes. The checker must lose its handler
/// before the pane ends.
void showChecks(MWPhoneHome& checker, UpdatePane& pane);

} // namespace quillow
