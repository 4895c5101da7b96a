// A stack of panes. Its height is that of the visible pane: a taller hidden pane does not keep the window tall.
#pragma once

#include "platform/TabView.h"

#include <QStackedWidget>

namespace quillow {

class QtTabView final : public QStackedWidget, public TabView {
public:
    /// An index out of range changes nothing.
    void selectTabViewItemAtIndex(int index) override;

    /// As wide as the widest pane; the height is 0.
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] QSize sizeHint() const override;
};

} // namespace quillow
