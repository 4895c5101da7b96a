// Port: an area of a window, and the logic's views in it.
#pragma once

#include "base/Rect.h"
#include "platform/Dragging.h"

#include <QStringList>

namespace quillow {

class Drawing;
class View;

class ViewArea {
public:
    virtual ~ViewArea() = default;

    /// A view draws over the views added before it. The view added last gets the drags.
    virtual void addView(View& view) = 0;
    virtual void removeView(View& view) = 0;

    virtual void setFrame(const Rect& frame) = 0;
    /// The area in its views' coordinates: the origin is its lower left corner.
    [[nodiscard]] virtual Rect bounds() const = 0;
    /// Schedules a repaint of the views. Nothing is drawn within this call.
    virtual void setNeedsDisplay() = 0;

    /// From now on, drags with one of these types are reported to the views.
    virtual void registerForDraggedTypes(const QStringList& types) = 0;
    virtual void unregisterDraggedTypes() = 0;
};

/// Is in its area from construction to destruction. The area outlives it.
class View {
public:
    View(const View&) = delete;
    View& operator=(const View&) = delete;
    virtual ~View() { area_.removeView(*this); }

    /// Draws the view; `rect` is the part that has to be drawn again.
    virtual void drawRect(const Rect& rect, Drawing& drawing) = 0;

    // A drag over the view: entered, then either exited, or prepared for and performed. The operation returned on
    // entry is valid until then.
    [[nodiscard]] virtual DragOperation draggingEntered(const DraggingInfo&) { return DragOperation::none; }
    virtual void draggingExited() {}
    [[nodiscard]] virtual bool prepareForDragOperation(const DraggingInfo&) { return false; }
    /// Returns true if the view has handled the drop.
    [[nodiscard]] virtual bool performDragOperation(const DraggingInfo&) { return false; }

protected:
    explicit View(ViewArea& area)
        : area_(area) {
        area_.addView(*this);
    }
    [[nodiscard]] ViewArea& area() const { return area_; }

private:
    ViewArea& area_;
};

} // namespace quillow
