// Port: work put off to the main thread.
#pragma once

#include <functional>

namespace quillow {

class MainQueue {
public:
    virtual ~MainQueue() = default;

    /// Runs the operation later on the main thread: after the outermost callback that is running now has returned (the
    /// whole drop, a panel's completion), in the order in which operations were added, never one inside another. A modal
    /// alert does not hold them back.
    virtual void addOperation(std::function<void()> operation) = 0;
};

} // namespace quillow
