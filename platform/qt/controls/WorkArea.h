// Where a window that has grown belongs on its screen.
#pragma once

#include <QRect>

#include <algorithm>

namespace quillow {

/// By how much a window must move up so that its lower edge is in the work area. It does not move further than the
/// upper edge of the area: the title bar stays in reach. Both rectangles are in the same points.
[[nodiscard]] inline int riseInto(const QRect& workArea, const QRect& windowWithFrame) {
    const int below = windowWithFrame.bottom() - workArea.bottom();
    const int above = windowWithFrame.top() - workArea.top();
    return std::max(0, std::min(below, above));
}

} // namespace quillow
