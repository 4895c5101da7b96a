#include "platform/qt/QtSheetPanel.h"

#include "platform/qt/QtWindow.h"

namespace quillow {

void QtSheetPanel::beginSheetModalForWindow(Window* window, std::function<void(int returnCode)> didEnd) {
    sheet_.begin(QtWindow::widgetOf(window), {makeDialog_, {}, std::move(didEnd)});
}

} // namespace quillow
