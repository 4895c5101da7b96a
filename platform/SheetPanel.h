// Port: a panel of controls that is shown as a sheet.
#pragma once

#include <functional>

namespace quillow {

class Window;

class SheetPanel {
public:
    /// A sheet that is up goes away, and `didEnd` is not called any more.
    virtual ~SheetPanel() = default;
    /// Shows the panel as a sheet on the window (on its own when the window is null) and returns at once. `didEnd` gets the code
    /// with which the sheet was ended. Without effect while the sheet is up or waits for the window to be free.
    virtual void beginSheetModalForWindow(Window* window, std::function<void(int returnCode)> didEnd) = 0;
    /// Ends the sheet. Without effect when it is not up.
    virtual void endSheet(int returnCode) = 0;
    /// Takes the panel off the screen.
    virtual void orderOut() = 0;
};

} // namespace quillow
