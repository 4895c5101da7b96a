// Port: a window of the program, as the logic sees it. Sheets are attached to one.
#pragma once

#include "base/Rect.h"

#include <QString>

namespace quillow {

enum class Animate { no, yes };

class Window {
public:
    virtual ~Window() = default;
    /// Shows the window, raises it and gives it the keyboard.
    virtual void makeKeyAndOrderFront() = 0;
    [[nodiscard]] virtual bool isVisible() const = 0;
    /// Puts the window into the middle of its screen.
    virtual void center() = 0;
    virtual void setTitle(const QString& title) = 0;

    /// The place and size of the window's contents, without its decoration.
    [[nodiscard]] virtual Rect frame() const = 0;
    /// Moves and resizes the window and repaints it; size limits do not hold it back.
    virtual void setFrame(const Rect& frame, Animate animate) = 0;

    /// The least and the largest size of the window's contents. A window that is outside of them is resized into them, its
    /// top left corner where it was; a frame that is still on its way is reached first. Where the two contradict each other
    /// the least size holds. `setFrame` is not held back by them.
    virtual void setMinSize(const Size& size) = 0;
    virtual void setMaxSize(const Size& size) = 0;

    /// Whether the Window menu lists the window.
    virtual void setExcludedFromWindowsMenu(bool excluded) = 0;
};

} // namespace quillow
