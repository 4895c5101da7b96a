// An area of a window in memory. The test can drag into its views and record their drawing.
#pragma once

#include "platform/View.h"
#include "tests/fakes/FakeDrawing.h"

#include <vector>

namespace quillow {

class FakeViewArea final : public ViewArea {
public:
    void addView(View& view) override { views_.push_back(&view); }
    void removeView(View& view) override { std::erase(views_, &view); }
    void setFrame(const Rect& frame) override { frame_ = frame; }
    [[nodiscard]] Rect bounds() const override { return {0, 0, frame_.width, frame_.height}; }
    void setNeedsDisplay() override { needsDisplay_ = true; }
    void registerForDraggedTypes(const QStringList& types) override { draggedTypes_ = types; }
    void unregisterDraggedTypes() override { draggedTypes_.clear(); }

    [[nodiscard]] const Rect& frame() const { return frame_; }
    [[nodiscard]] const std::vector<View*>& views() const { return views_; }
    [[nodiscard]] const QStringList& draggedTypes() const { return draggedTypes_; }
    [[nodiscard]] bool needsDisplay() const { return needsDisplay_; }
    /// The drawing calls of the views for this rectangle.
    [[nodiscard]] QStringList draw(const Rect& rect) {
        needsDisplay_ = false;
        QStringList drawn;
        for (View* view : views_) {
            FakeDrawing drawing;
            view->drawRect(rect, drawing);
            drawn += drawing.drawn();
        }
        return drawn;
    }

private:
    std::vector<View*> views_;
    Rect frame_{0, 0, 587, 114};
    QStringList draggedTypes_;
    bool needsDisplay_ = false;
};

} // namespace quillow
