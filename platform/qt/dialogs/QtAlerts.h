// Alerts as sheets, and as dialogs that are modal to the whole program.
#pragma once

#include "platform/Alerts.h"
#include "platform/qt/dialogs/Sheets.h"
#include "platform/qt/services/QtMainQueue.h"

namespace quillow {

class QtAlerts final : public Alerts {
public:
    QtAlerts(Sheets& sheets, QtMainQueue& mainQueue)
        : sheets_(sheets)
        , mainQueue_(mainQueue) {}

    void beginSheetModalForWindow(const Alert& alert, Window* window,
                                  std::function<void(int returnCode)> completionHandler) override;
    [[nodiscard]] int runModal(const Alert& alert) override;

private:
    Sheets& sheets_;
    QtMainQueue& mainQueue_;
};

} // namespace quillow
