#include "platform/qt/dialogs/AlertBox.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>

namespace quillow {
namespace {

/// The buttons that Escape presses: they start no action.
const QStringList kDismissing{QStringLiteral("Cancel"), QStringLiteral("Later"), QStringLiteral("Close")};

/// With a short message, the informative text would otherwise wrap into a narrow column.
constexpr int kMinimumCharacters = 60;

QMessageBox::Icon iconFor(AlertStyle style) {
    switch (style) {
    case AlertStyle::warning: return QMessageBox::Warning;
    case AlertStyle::informational: return QMessageBox::Information;
    case AlertStyle::critical: return QMessageBox::Critical;
    }
    return QMessageBox::Warning;
}

} // namespace

int neutralReturnCode(const Alert& alert) {
    if (alert.buttons.size() < 2) return kAlertDismissed;
    for (int place = 0; place < alert.buttons.size(); ++place)
        if (kDismissing.contains(alert.buttons[place])) return kAlertFirstButtonReturn + place;
    return kAlertDismissed;
}

AlertBox::AlertBox(const Alert& alert, QWidget* parent)
    : QMessageBox(parent) {
    setWindowTitle(QStringLiteral("Quillow"));
    // A screen reader reads this when the alert appears, and then the other texts in it.
    setAccessibleName(alert.messageText);
    setIcon(iconFor(alert.alertStyle));
    setTextFormat(Qt::PlainText);
    setText(alert.messageText);
    setInformativeText(alert.informativeText);
    if (auto* message = findChild<QLabel*>(QStringLiteral("qt_msgbox_label"))) {
        QFont bold = message->font();
        bold.setBold(true);
        message->setFont(bold);
        // Not as the label's minimum width: the message box would then not see that a long message needs word wrap.
        if (auto* grid = qobject_cast<QGridLayout*>(layout())) {
            const int width = message->fontMetrics().averageCharWidth() * kMinimumCharacters;
            grid->addItem(new QSpacerItem(width, 0), grid->rowCount(), 0, 1, grid->columnCount());
        }
    }
    // The message box passes its text format to the message only.
    if (auto* informative = findChild<QLabel*>(QStringLiteral("qt_msgbox_informativelabel")))
        informative->setTextFormat(Qt::PlainText);

    const QStringList titles = alert.buttons.isEmpty() ? QStringList{QStringLiteral("OK")} : alert.buttons;
    for (const QString& title : titles) {
        const bool isDismissing = kAlertFirstButtonReturn + inOrderAdded_.size() == neutralReturnCode(alert);
        QPushButton* button = addButton(title, isDismissing ? RejectRole : AcceptRole);
        if (inOrderAdded_.isEmpty()) setDefaultButton(button);
        if (isDismissing) dismissing_ = button;
        inOrderAdded_.append(button);
    }
}

int AlertBox::returnCode() const {
    const qsizetype place = inOrderAdded_.indexOf(clickedButton());
    return place < 0 ? kAlertDismissed : kAlertFirstButtonReturn + static_cast<int>(place);
}

// By default, Escape and the close button press a sole button, whatever it does.

void AlertBox::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Cancel))
        dismiss();
    else
        QMessageBox::keyPressEvent(event);
}

void AlertBox::closeEvent(QCloseEvent* event) {
    event->accept();
    if (isVisible()) dismiss();
}

void AlertBox::dismiss() {
    if (dismissing_)
        dismissing_->click();
    else
        done(kAlertDismissed);
}

} // namespace quillow
