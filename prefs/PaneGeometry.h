// Where the preferences window lies when another pane is shown.
#pragma once

#include "base/Rect.h"

#include <cstdint>

namespace quillow {

/// What a preferences window takes above its pane, title bar and toolbar, in points.
inline constexpr std::int32_t kPaneAllowance = 78;

/// The frame for a pane of that height: the top edge, x and the width stay.
[[nodiscard]] Rect frameForPane(const Rect& frame, std::int32_t paneHeight); // selector: none

} // namespace quillow
