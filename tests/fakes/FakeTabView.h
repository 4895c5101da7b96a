// A tab view that remembers which pane is shown.
#pragma once

#include "platform/TabView.h"
#include "tests/fakes/Journal.h"

namespace quillow {

class FakeTabView final : public TabView, public Recorded {
public:
    void selectTabViewItemAtIndex(int index) override {
        record(QStringLiteral("pane ") + QString::number(index));
        selected_ = index;
    }
    /// -1 until a pane is selected.
    [[nodiscard]] int selected() const { return selected_; }

private:
    int selected_ = -1;
};

} // namespace quillow
