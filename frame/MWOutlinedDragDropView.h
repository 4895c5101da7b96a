// The drop area with a dashed, rounded outline. The outline is thicker while an acceptable drag is over the area.
#pragma once

#include "frame/MWDragDropView.h"

namespace quillow {

class MWOutlinedDragDropView final : public MWDragDropView {
public:
    using MWDragDropView::MWDragDropView;
    explicit MWOutlinedDragDropView(ViewArea& area); // selector: init
    /// Draws the whole outline in the current colour, whatever `rect` is.
    void drawRect(const Rect& rect, Drawing& drawing) override; // selector: drawRect:
};

} // namespace quillow
