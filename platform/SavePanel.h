// Port: the panel in which the user names a file to be written.
#pragma once

#include <QString>
#include <QUrl>

#include <functional>
#include <memory>
#include <optional>

namespace quillow {

class Window;

/// Custom controls that a save panel shows beside its name field.
class AccessoryView {
public:
    virtual ~AccessoryView() = default;
};

/// Results of a save panel.
inline constexpr int kSavePanelCancelled = 0;
inline constexpr int kSavePanelConfirmed = 1;

class SavePanel {
public:
    /// Closes a sheet that is open. The completion handler is no longer called.
    virtual ~SavePanel() = default;
    /// The view outlives the panel.
    virtual void setAccessoryView(AccessoryView* view) = 0;
    /// The file's name with its extension, as the name field shows it: the name that was set, until the user types
    /// another.
    [[nodiscard]] virtual QString nameFieldStringValue() const = 0;
    virtual void setNameFieldStringValue(const QString& name) = 0;
    /// The file that the user has confirmed; std::nullopt before that.
    [[nodiscard]] virtual std::optional<QUrl> URL() const = 0;
    /// Shows the panel as a sheet on the window (as a separate dialog if the window is null) and returns at once. The
    /// handler is called exactly once, never before this function has returned.
    virtual void beginSheetModalForWindow(Window* window, std::function<void(int result)> completionHandler) = 0;
};

class SavePanels {
public:
    virtual ~SavePanels() = default;
    [[nodiscard]] virtual std::unique_ptr<SavePanel> makeSavePanel() = 0;
};

} // namespace quillow
