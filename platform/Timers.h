// Port: calls after a delay.
#pragma once

#include <functional>

namespace quillow {

class Timers {
public:
    virtual ~Timers() = default;
    /// Runs the callback once on the main thread after that many seconds.
    virtual void scheduleOnce(double seconds, std::function<void()> callback) = 0;
};

} // namespace quillow
