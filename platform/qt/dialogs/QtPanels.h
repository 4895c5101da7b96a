// Open panels as sheets.
#pragma once

#include "platform/Panels.h"
#include "platform/Workspace.h"
#include "platform/qt/dialogs/FilePortal.h"
#include "platform/qt/dialogs/Sheets.h"

#include <utility>

namespace quillow {

class QtPanels final : public Panels {
public:
    QtPanels(Sheets& sheets, const Workspace& workspace, FilePortal portal = FilePortal())
        : sheets_(sheets)
        , workspace_(workspace)
        , portal_(std::move(portal)) {}

    void beginSheetModalForWindow(const OpenPanel& panel, Window* window,
                                  std::function<void(const std::optional<QUrl>& url)> completionHandler) override;

private:
    Sheets& sheets_;
    const Workspace& workspace_;
    FilePortal portal_;
};

} // namespace quillow
