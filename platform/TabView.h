// Port: a stack of panes of which one is shown; its tabs are not.
#pragma once

namespace quillow {

class TabView {
public:
    virtual ~TabView() = default;
    virtual void selectTabViewItemAtIndex(int index) = 0;
};

} // namespace quillow
