// A panel as a sheet, over a dialog that is made anew each time that the panel is shown.
#pragma once

#include "platform/SheetPanel.h"
#include "platform/qt/dialogs/SheetHandle.h"

namespace quillow {

class QtSheetPanel final : public SheetPanel {
public:
    using MakeDialog = std::function<QDialog*(QWidget* window)>;
    QtSheetPanel(Sheets& sheets, MakeDialog makeDialog)
        : makeDialog_(std::move(makeDialog))
        , sheet_(sheets) {}

    void beginSheetModalForWindow(Window* window, std::function<void(int returnCode)> didEnd) override;
    void endSheet(int returnCode) override { sheet_.end(returnCode); }
    /// A sheet that has ended is off the screen already; one that is up cannot stay behind it unseen.
    void orderOut() override { sheet_.end(QDialog::Rejected); }

private:
    MakeDialog makeDialog_;
    SheetHandle sheet_;
};

} // namespace quillow
