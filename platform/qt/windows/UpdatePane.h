// The Update pane: whether to notify the user of newer releases, the time of the last check, and a button that checks
// now.
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

    // Setters for what the pane shows. They run no command.
    void setNotifies(bool notifies);
    /// The formatted time of the last check; empty for never.
    void setLastCheck(const QString& instant);

private:
    UpdatePaneCommands commands_;
    bool isShowing_ = false; ///< true while code, not the user, changes the switch
    QCheckBox* notifies_ = nullptr;
    QLabel* lastCheck_ = nullptr;
};

} // namespace quillow
