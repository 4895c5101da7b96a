// Alerts as sheets.
#pragma once

#include "platform/Alerts.h"
#include "platform/qt/Sheets.h"

namespace quillow {

class QtAlerts final : public Alerts {
public:
    explicit QtAlerts(Sheets& sheets)
        : sheets_(sheets) {}

    void beginSheetModalForWindow(const Alert& alert, Window* window,
                                  std::function<void(int returnCode)> completionHandler) override;

private:
    Sheets& sheets_;
};

} // namespace quillow
