// Port: the panel in which the user names a file to be written.
#pragma once

#include <QString>
#include <QUrl>

#include <functional>
#include <memory>
#include <optional>

namespace quillow {

class Window;

/// Controls of the program's own that a save panel shows beside its name field.
class AccessoryView {
public:
    virtual ~AccessoryView() = default;
};

/// What a save panel answers.
inline constexpr int kSavePanelCancelled = 0;
inline constexpr int kSavePanelConfirmed = 1;

class SavePanel {
public:
    /// A sheet that is up goes away, and the completion handler is not called any more.
    virtual ~SavePanel() = default;
    /// The view outlives the panel.
    virtual void setAccessoryView(AccessoryView* view) = 0;
    /// The file's name with its extension, as it stands in the name field: what was set, until the user types another.
    [[nodiscard]] virtual QString nameFieldStringValue() const = 0;
    virtual void setNameFieldStringValue(const QString& name) = 0;
    /// The file that the user has confirmed; nothing before.
    [[nodiscard]] virtual std::optional<QUrl> URL() const = 0;
    /// Shows the panel as a sheet on the window (on its own when the window is null) and returns at once. The handler is called
    /// exactly once, never before this function has returned.
    virtual void beginSheetModalForWindow(Window* window, std::function<void(int result)> completionHandler) = 0;
};

class SavePanels {
public:
    virtual ~SavePanels() = default;
    [[nodiscard]] virtual std::unique_ptr<SavePanel> makeSavePanel() = 0;
};

} // namespace quillow
