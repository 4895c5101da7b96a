// Computes the frame of the preferences window for a pane.
#pragma once

#include "base/Rect.h"

#include <cstdint>

namespace quillow {

/// Height of the title bar and toolbar above the pane of a preferences window, in points.
inline constexpr std::int32_t kPaneAllowance = 78;

/// The window's frame for a pane of this height. The top edge, x and the width do not change.
[[nodiscard]] Rect frameForPane(const Rect& frame, std::int32_t paneHeight); // selector: none

} // namespace quillow
