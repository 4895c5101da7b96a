#include "platform/qt/controls/KeyedButton.h"

#include <QKeyEvent>

namespace quillow {

void KeyedButton::keyPressEvent(QKeyEvent* event) {
    // Qt's buttons handle Space themselves, and leave Return to dialogs.
    const bool isPlain = !(event->modifiers() & ~Qt::KeyboardModifiers(Qt::KeypadModifier));
    if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && isPlain)
        click();
    else
        QAbstractButton::keyPressEvent(event);
}

} // namespace quillow
