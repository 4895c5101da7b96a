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

    /// Whether the Window menu lists the window.
    virtual void setExcludedFromWindowsMenu(bool excluded) = 0;
};

} // namespace quillow
