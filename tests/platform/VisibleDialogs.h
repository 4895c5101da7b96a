// Finds the visible dialogs of one class on a window.
#pragma once

#include <QList>
#include <QWidget>

namespace quillow {

template <class Dialog>
QList<Dialog*> visibleDialogs(const QWidget& window) {
    QList<Dialog*> dialogs;
    for (auto* dialog : window.findChildren<Dialog*>())
        if (dialog->isVisible()) dialogs.append(dialog);
    return dialogs;
}

} // namespace quillow
