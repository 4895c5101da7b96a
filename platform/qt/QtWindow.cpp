#include "platform/qt/QtWindow.h"

namespace quillow {

void QtWindow::makeKeyAndOrderFront() {
    if (widget_.isMinimized()) widget_.setWindowState(widget_.windowState() & ~Qt::WindowMinimized);
    widget_.show();
    widget_.raise();
    widget_.activateWindow();
}

} // namespace quillow
