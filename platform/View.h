// Port: an area of a window, and the views of the logic that stand in it.
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

    /// A view draws over those added before it, and the last one gets the drags.
    virtual void addView(View& view) = 0;
    virtual void removeView(View& view) = 0;

    virtual void setFrame(const Rect& frame) = 0;
    /// The area as its views draw in it: its lower left corner is the origin.
    [[nodiscard]] virtual Rect bounds() const = 0;
    /// Has the views drawn again soon, not within this call.
    virtual void setNeedsDisplay() = 0;

    /// Drags that have one of the types are told to the views from now on.
    virtual void registerForDraggedTypes(const QStringList& types) = 0;
    virtual void unregisterDraggedTypes() = 0;
};

/// Stands in its area, which outlives it, from construction to destruction.
class View {
public:
    View(const View&) = delete;
    View& operator=(const View&) = delete;
    virtual ~View() { area_.removeView(*this); }

    /// Draws the view; `rect` is the part that has to be drawn again.
    virtual void drawRect(const Rect& rect, Drawing& drawing) = 0;

    // The life of a drag over the view: entered, then either exited, or prepared for and performed. What is answered on entry
    // holds until then.
    [[nodiscard]] virtual DragOperation draggingEntered(const DraggingInfo&) { return DragOperation::none; }
    virtual void draggingExited() {}
    [[nodiscard]] virtual bool prepareForDragOperation(const DraggingInfo&) { return false; }
    /// True when the drop was dealt with.
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
