// A stack of panes. Its size is that of the pane shown: a higher pane that is hidden does not hold the window up.
#pragma once

#include "platform/TabView.h"

#include <QStackedWidget>

namespace quillow {

class QtTabView final : public QStackedWidget, public TabView {
public:
    /// An index that is none changes nothing.
    void selectTabViewItemAtIndex(int index) override;

    /// As wide as the widest pane, in any height.
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] QSize sizeHint() const override;
};

} // namespace quillow
