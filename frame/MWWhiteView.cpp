#include "frame/MWWhiteView.h"

#include "platform/Drawing.h"

namespace quillow {

MWWhiteView::MWWhiteView(ViewArea& area)
    : View(area) {}

MWWhiteView::MWWhiteView(ViewArea& area, const Rect& frame)
    : View(area) {
    area.setFrame(frame);
}

void MWWhiteView::drawRect(const Rect&, Drawing& drawing) {
    const Rect bounds = area().bounds();
    drawing.setColor(DrawingColor::white);
    drawing.fillRect(bounds);
    // The bounds are not inset, so the outer half of the frame's line is outside the view.
    drawing.setColor(DrawingColor::gray);
    drawing.strokeRect(bounds, {});
}

} // namespace quillow
