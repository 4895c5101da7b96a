// A panel shown as a sheet. It makes a new dialog each time that it is shown.
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
    /// A sheet that has ended is hidden already. An open sheet is ended, so that it does not block its window unseen.
    void orderOut() override { sheet_.end(QDialog::Rejected); }

private:
    MakeDialog makeDialog_;
    SheetHandle sheet_;
};

} // namespace quillow
