// The drop area with a dashed, rounded outline that grows heavier while a drag that would be taken hovers.
#pragma once

#include "frame/MWDragDropView.h"

namespace quillow {

class MWOutlinedDragDropView final : public MWDragDropView {
public:
    using MWDragDropView::MWDragDropView;
    explicit MWOutlinedDragDropView(ViewArea& area); // selector: init
    /// Draws the whole outline, whatever part has to be drawn again, in the drawing's current colour.
    void drawRect(const Rect& rect, Drawing& drawing) override; // selector: drawRect:
};

} // namespace quillow
