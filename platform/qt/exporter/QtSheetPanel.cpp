#include "platform/qt/exporter/QtSheetPanel.h"

#include "platform/qt/controls/QtWindow.h"

namespace quillow {

void QtSheetPanel::beginSheetModalForWindow(Window* window, std::function<void(int returnCode)> didEnd) {
    sheet_.begin(WidgetWindow::of(window), {makeDialog_, {}, std::move(didEnd)});
}

} // namespace quillow
