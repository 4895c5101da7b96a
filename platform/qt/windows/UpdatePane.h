// The Update pane: whether newer releases are told, when one was last looked for, and looking now.
#pragma once

#include "platform/Platform.h"

#include <QString>
#include <QWidget>

#include <functional>

class QCheckBox;
class QLabel;

namespace quillow {

struct UpdatePaneCommands {
    std::function<void(bool notifies)> setNotifies; ///< the user has changed it
    std::function<void()> checkNow;
};

class UpdatePane final : public QWidget {
public:
    explicit UpdatePane(UpdateCheck updateCheck);

    void setCommands(const UpdatePaneCommands& commands) { commands_ = commands; }

    // What is shown; showing runs no command.
    void setNotifies(bool notifies);
    /// The instant as the user reads it; empty for never.
    void setLastCheck(const QString& instant);

private:
    UpdatePaneCommands commands_;
    bool isShowing_ = false; ///< the switch is being set, not used
    QCheckBox* notifies_ = nullptr;
    QLabel* lastCheck_ = nullptr;
};

} // namespace quillow
