// Open panels as sheets.
#pragma once

#include "platform/Panels.h"
#include "platform/qt/Sheets.h"

namespace quillow {

class QtPanels final : public Panels {
public:
    explicit QtPanels(Sheets& sheets)
        : sheets_(sheets) {}

    void beginSheetModalForWindow(const OpenPanel& panel, Window* window,
                                  std::function<void(const std::optional<QUrl>& url)> completionHandler) override;

private:
    Sheets& sheets_;
};

} // namespace quillow
