// Port: alerts. An alert is a value. The adapter shows it as a sheet on a window or as a separate dialog.
#pragma once

#include <QString>
#include <QStringList>

#include <functional>

namespace quillow {

class Window;

enum class AlertStyle { warning = 0, informational = 1, critical = 2 };

struct Alert {
    QString messageText;
    QString informativeText;
    AlertStyle alertStyle = AlertStyle::warning;
    QStringList buttons; ///< in the order added; the first is the default; an empty list means one button "OK"
    friend bool operator==(const Alert&, const Alert&) = default;
};

/// Return codes of an alert: 1000 for the first button added, 1001 for the second, and so on, wherever the screen
/// shows them.
inline constexpr int kAlertFirstButtonReturn = 1000;
inline constexpr int kAlertSecondButtonReturn = 1001;
inline constexpr int kAlertThirdButtonReturn = 1002;
/// Return code of an alert that was dismissed without a button: by Escape while no button is one that Escape presses,
/// or by closing the alert's window.
inline constexpr int kAlertDismissed = 0;

class Alerts {
public:
    virtual ~Alerts() = default;

    /// Shows the alert as a sheet on the window (as a separate dialog if the window is null) and returns at once.
    /// `completionHandler` (may be empty) gets the code, once, never before this function has returned. Of several
    /// buttons, Escape presses the first one named "Cancel", "Later" or "Close"; it never returns the code of a sole
    /// button. If an equal alert is already open on the same window, the adapter may dismiss the new one as by
    /// Escape, without showing it, right after the open one's handler has returned.
    virtual void beginSheetModalForWindow(const Alert& alert, Window* window,
                                          std::function<void(int returnCode)> completionHandler) = 0;

    /// Shows the alert as a dialog that is modal to the whole program. Returns its code when the user has closed it.
    [[nodiscard]] virtual int runModal(const Alert& alert) = 0;
};

} // namespace quillow
