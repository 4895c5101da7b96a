// Save panels as sheets.
#pragma once

#include "platform/SavePanel.h"
#include "platform/qt/dialogs/Sheets.h"

namespace quillow {

/// The accessory views of its panels must be QtAccessoryViews.
class QtSavePanels final : public SavePanels {
public:
    explicit QtSavePanels(Sheets& sheets)
        : sheets_(sheets) {}
    [[nodiscard]] std::unique_ptr<SavePanel> makeSavePanel() override;

private:
    Sheets& sheets_;
};

} // namespace quillow
