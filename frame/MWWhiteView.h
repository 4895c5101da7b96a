// A plain white panel with a grey frame: the background of the drop area.
#pragma once

#include "platform/View.h"

namespace quillow {

class MWWhiteView final : public View {
public:
    /// Fills its whole area.
    explicit MWWhiteView(ViewArea& area);
    MWWhiteView(ViewArea& area, const Rect& frame); // selector: initWithFrame:
    /// Draws the whole panel, whatever `rect` is.
    void drawRect(const Rect& rect, Drawing& drawing) override; // selector: drawRect:
};

} // namespace quillow
