// Port: a window of the program, as the logic sees it. Sheets are attached to one.
#pragma once

namespace quillow {

class Window {
public:
    virtual ~Window() = default;
    /// Shows the window, raises it and gives it the keyboard.
    virtual void makeKeyAndOrderFront() = 0;
};

} // namespace quillow
