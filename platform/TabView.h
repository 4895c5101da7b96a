// Port: a stack of panes that shows one pane at a time and no tabs.
#pragma once

namespace quillow {

class TabView {
public:
    virtual ~TabView() = default;
    virtual void selectTabViewItemAtIndex(int index) = 0;
};

} // namespace quillow
