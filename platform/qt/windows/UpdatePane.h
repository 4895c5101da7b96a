// The Update pane: whether to notify the user of newer releases, the time of the last check, and a button that checks
// now.
#pragma once

#include "platform/Platform.h"
#include "platform/qt/windows/ScrolledPane.h"

#include <QString>

#include <functional>

class QCheckBox;
class QLabel;
class QPushButton;

namespace quillow {

class Spinner;

struct UpdatePaneCommands {
    std::function<void(bool notifies)> setNotifies; ///< the user has changed it
    std::function<void()> checkNow;
};

class UpdatePane final : public ScrolledPane {
public:
    explicit UpdatePane(UpdateCheck updateCheck);

    void focusFirst() override;

    void setCommands(const UpdatePaneCommands& commands) { commands_ = commands; }

    // Setters for what the pane shows. They run no command.
    void setNotifies(bool notifies);
    /// The formatted time of the last check; empty for never.
    void setLastCheck(const QString& instant);
    /// While a check runs, the spinner turns and no other check can be started.
    void setChecking(bool isChecking);
    [[nodiscard]] bool isSpinning() const;

private:
    UpdatePaneCommands commands_;
    bool isShowing_ = false; ///< true while code, not the user, changes the switch
    QCheckBox* notifies_ = nullptr;
    QLabel* lastCheck_ = nullptr;
    Spinner* spinner_ = nullptr;
    QPushButton* checkNow_ = nullptr;
};

} // namespace quillow
