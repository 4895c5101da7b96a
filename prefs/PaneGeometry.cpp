#include "prefs/PaneGeometry.h"

namespace quillow {

Rect frameForPane(const Rect& frame, std::int32_t paneHeight) {
    const std::int32_t newHeight = paneHeight + kPaneAllowance;
    const auto difference = static_cast<std::int32_t>(newHeight - frame.height); // truncates toward zero
    return {frame.x, frame.y - difference, frame.width, static_cast<double>(newHeight)};
}

} // namespace quillow
