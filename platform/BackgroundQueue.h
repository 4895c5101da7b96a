// Port: work off the main thread.
#pragma once

#include <functional>

namespace quillow {

class BackgroundQueue {
public:
    virtual ~BackgroundQueue() = default;
    /// Runs the operation on another thread, to its end, though the caller keeps nothing of it.
    virtual void addOperation(std::function<void()> operation) = 0;
};

} // namespace quillow
