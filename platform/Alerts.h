// Port: alerts. An alert is a value; the adapter shows it as a sheet on a window or on its own.
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
    QStringList buttons; ///< in the order added, the first is the default; an empty list shows one button "OK"
    friend bool operator==(const Alert&, const Alert&) = default;
};

/// What an alert answers: the first button added 1000, the second 1001, and so on, wherever they stand on the screen.
inline constexpr int kAlertFirstButtonReturn = 1000;
inline constexpr int kAlertSecondButtonReturn = 1001;
inline constexpr int kAlertThirdButtonReturn = 1002;
/// The alert was dismissed without any button (Escape where no button is Cancel, the window went away).
inline constexpr int kAlertDismissed = 0;

class Alerts {
public:
    virtual ~Alerts() = default;

    /// Shows the alert as a sheet on the window (on its own when the window is null) and returns at once;
    /// `completionHandler` (may be empty) gets the code, once, never before this function has returned.
    /// Escape presses a button named "Cancel" where there is one; it never answers a sole button's code. An alert that is begun
    /// while an equal one is open on the same window may be answered as by Escape without being shown, right after the open
    /// one's handler has returned.
    virtual void beginSheetModalForWindow(const Alert& alert, Window* window,
                                          std::function<void(int returnCode)> completionHandler) = 0;

    /// Shows the alert on its own, modal to the whole program, and returns its code when it has been answered.
    [[nodiscard]] virtual int runModal(const Alert& alert) = 0;
};

} // namespace quillow
