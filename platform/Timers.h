// Port: something to be done after a while.
#pragma once

#include <functional>

namespace quillow {

class Timers {
public:
    virtual ~Timers() = default;
    /// Runs the callback once on the main thread when that many seconds have passed.
    virtual void scheduleOnce(double seconds, std::function<void()> callback) = 0;
};

} // namespace quillow
