// Port: a window of the program, as the logic sees it. Sheets are attached to one.
#pragma once

#include "base/Rect.h"

#include <QString>

namespace quillow {

enum class Animate { no, yes };

class Window {
public:
    virtual ~Window() = default;
    /// Shows the window, raises it and gives it the keyboard focus.
    virtual void makeKeyAndOrderFront() = 0;
    [[nodiscard]] virtual bool isVisible() const = 0;
    /// Centres the window on its screen.
    virtual void center() = 0;
    virtual void setTitle(const QString& title) = 0;

    /// The place and size of the window's contents, without its decoration.
    [[nodiscard]] virtual Rect frame() const = 0;
    /// Moves, resizes and repaints the window. Size limits do not restrict it.
    virtual void setFrame(const Rect& frame, Animate animate) = 0;

    /// The smallest and the largest size of the window's contents. A window outside these limits is resized to fit
    /// them and keeps its top left corner; an animated frame change finishes first. If the two limits contradict each
    /// other, the smallest size wins. They do not restrict `setFrame`.
    virtual void setMinSize(const Size& size) = 0;
    virtual void setMaxSize(const Size& size) = 0;

    /// Whether the Window menu lists the window.
    virtual void setExcludedFromWindowsMenu(bool excluded) = 0;
};

} // namespace quillow
