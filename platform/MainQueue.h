// Port: deferred work on the main thread.
#pragma once

#include <functional>

namespace quillow {

class MainQueue {
public:
    virtual ~MainQueue() = default;

    /// Runs the operation later on the main thread: after the outermost callback that is running now has returned
    /// (the whole drop, a panel's completion). Operations run in the order in which they were added, never one inside
    /// another. A modal alert does not delay them.
    virtual void addOperation(std::function<void()> operation) = 0;
};

} // namespace quillow
