// Save panels as sheets. A panel without an accessory view is the desktop's own if there is a portal. It cannot take
// another name while it is open.
#pragma once

#include "platform/SavePanel.h"
#include "platform/qt/dialogs/FilePortal.h"
#include "platform/qt/dialogs/Sheets.h"

#include <utility>

namespace quillow {

/// The accessory views of its panels must be QtAccessoryViews.
class QtSavePanels final : public SavePanels {
public:
    explicit QtSavePanels(Sheets& sheets, FilePortal portal = FilePortal())
        : sheets_(sheets)
        , portal_(std::move(portal)) {}
    [[nodiscard]] std::unique_ptr<SavePanel> makeSavePanel() override;

private:
    Sheets& sheets_;
    FilePortal portal_;
};

} // namespace quillow
