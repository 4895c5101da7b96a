// The dialog of one alert. Its return code is the button's position in the alert's list, wherever the desktop's style
// puts the button.
#pragma once

#include "platform/Alerts.h"

#include <QList>
#include <QMessageBox>

namespace quillow {

/// The code with which Escape ends the alert: that of the first button that starts no action ("Cancel", "Later",
/// "Close"), else kAlertDismissed. deliberate: it is never the code of a sole button, whatever the button's name.
[[nodiscard]] int neutralReturnCode(const Alert& alert);

class AlertBox final : public QMessageBox {
public:
    AlertBox(const Alert& alert, QWidget* parent);

    /// The code of the button that ended the dialog.
    [[nodiscard]] int returnCode() const;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void dismiss();

    QList<QAbstractButton*> inOrderAdded_;
    QAbstractButton* dismissing_ = nullptr; ///< the button that Escape presses
};

} // namespace quillow
