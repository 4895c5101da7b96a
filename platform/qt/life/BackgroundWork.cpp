#include "platform/qt/life/BackgroundWork.h"

#include <QApplication>
#include <QWindow>

#include <cstdio>
#include <string>

namespace quillow {
namespace {

/// Frames between two full repaints of the windows: an area that another window uncovers is repainted within half a
/// second.
constexpr int kFramesBetweenFullPaintings = 12;

bool isOnScreen(const QWidget& widget) {
    const QWindow* window = widget.window()->windowHandle();
    return widget.isVisible() && window && window->isExposed();
}

} // namespace

void BackgroundWork::tell(const std::exception& failure) const {
    if (log_)
        log_(std::string("could not be read: ") + failure.what());
    else
        std::fprintf(stderr, "quillow: a document could not be read: %s\n", failure.what());
}

std::uintptr_t BackgroundWork::spinnersWindow() const {
    const QWindow* window = spinner_ ? spinner_->window()->windowHandle() : nullptr;
    return window && window->handle() ? static_cast<std::uintptr_t>(window->winId()) : 0;
}

void BackgroundWork::paint(int frame) const {
    if (showEnding_ && termination_ && termination_->isRequested()) std::exchange(showEnding_, nullptr)();
    if (frame % kFramesBetweenFullPaintings == 0) {
        const QWidgetList widgets = QApplication::topLevelWidgets();
        for (QWidget* widget : widgets)
            if (isOnScreen(*widget)) widget->repaint();
    }
    if (spinner_ && spinner_->isAnimated() && isOnScreen(*spinner_)) spinner_->turnNow();
}

} // namespace quillow
