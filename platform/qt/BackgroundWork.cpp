#include "platform/qt/BackgroundWork.h"

namespace quillow {
namespace {

/// Frames between two paintings of the whole window: what another window uncovered comes back within half a second.
constexpr int kFramesBetweenFullPaintings = 12;

} // namespace

void BackgroundWork::paint(int frame) const {
    if (!spinner_ || !spinner_->window()->isVisible() || spinner_->window()->isMinimized()) return;
    if (frame % kFramesBetweenFullPaintings == 0) spinner_->window()->repaint();
    if (spinner_->isAnimated()) spinner_->turnNow();
}

} // namespace quillow
