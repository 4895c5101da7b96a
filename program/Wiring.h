// Ties the delegate to the windows: what its properties show, what their controls do.
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

/// Tells the window what the delegate's properties say, now and after every change.
class Bindings {
public:
    Bindings(QuillowAppDelegate& delegate, const Defaults& defaults, UndoManager& undoManager, MainWindow& window);

private:
    void bind(KVObject& object, const char16_t* key, const std::function<void()>& show);

    std::vector<Observation> observations_;
};

[[nodiscard]] MainWindowCommands commandsOf(QuillowAppDelegate& delegate, MWDragDropView& dropView,
                                            UndoManager& undoManager, std::function<void()> quit);
[[nodiscard]] PreferencesBindings::Actions preferencesActionsOf(QuillowAppDelegate& delegate);
/// The transformers that the panes need, looked up by their names: the delegate's and, by class name, the standard ones.
[[nodiscard]] PreferencesBindings::Transforms transformsOf(const ValueTransformerRegistry& registry);

} // namespace quillow
