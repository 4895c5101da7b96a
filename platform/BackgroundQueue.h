// Port: work off the main thread.
#pragma once

#include <functional>

namespace quillow {

class BackgroundQueue {
public:
    virtual ~BackgroundQueue() = default;
    /// Runs the operation to completion on another thread. The caller keeps no handle to it.
    virtual void addOperation(std::function<void()> operation) = 0;
};

} // namespace quillow
