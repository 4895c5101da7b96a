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
    // The bounds themselves, not inset: the frame's outer half lies outside of the view.
    drawing.setColor(DrawingColor::gray);
    drawing.strokeRect(bounds, {});
}

} // namespace quillow
