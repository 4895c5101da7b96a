// Port: a panel of controls that is shown as a sheet.
#pragma once

#include <functional>

namespace quillow {

class Window;

class SheetPanel {
public:
    /// Closes a sheet that is open. `didEnd` is no longer called.
    virtual ~SheetPanel() = default;
    /// Shows the panel as a sheet on the window (as a separate dialog if the window is null) and returns at once.
    /// `didEnd` gets the code that ended the sheet. No effect while the sheet is open or waits for the window to be
    /// free.
    virtual void beginSheetModalForWindow(Window* window, std::function<void(int returnCode)> didEnd) = 0;
    /// Ends the sheet. No effect if it is not open.
    virtual void endSheet(int returnCode) = 0;
    /// Hides the panel.
    virtual void orderOut() = 0;
};

} // namespace quillow
