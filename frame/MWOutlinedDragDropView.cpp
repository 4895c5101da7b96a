#include "frame/MWOutlinedDragDropView.h"

#include "platform/Drawing.h"

namespace quillow {
namespace {

// Lengths in points.
constexpr double kInset = 3.0;
constexpr double kCornerRadius = 6.0;
constexpr double kLineWidth = 1.0;
constexpr double kHilitedLineWidth = 2.0;
constexpr double kDash = 2.0;

} // namespace

MWOutlinedDragDropView::MWOutlinedDragDropView(ViewArea& area)
    : MWDragDropView(area) {}

void MWOutlinedDragDropView::drawRect(const Rect&, Drawing& drawing) {
    const Rect bounds = area().bounds();
    const Rect outline{bounds.x + kInset, bounds.y + kInset, bounds.width - 2 * kInset, bounds.height - 2 * kInset};
    const Stroke stroke{hilited() ? kHilitedLineWidth : kLineWidth, {kDash, kDash}, 0.0};
    // deliberate: no colour is set. The outline has the current colour, which is black by default.
    drawing.strokeRoundedRect(outline, kCornerRadius, kCornerRadius, stroke);
}

} // namespace quillow
