// Timers that the test fires.
#pragma once

#include "platform/Timers.h"

#include <utility>
#include <vector>

namespace quillow {

class FakeTimers final : public Timers {
public:
    struct Scheduled {
        double seconds = 0;
        std::function<void()> callback;
    };
    void scheduleOnce(double seconds, std::function<void()> callback) override {
        scheduled_.push_back({seconds, std::move(callback)});
    }
    [[nodiscard]] const std::vector<Scheduled>& scheduled() const { return scheduled_; }
    void fireAll() {
        for (const Scheduled& timer : std::exchange(scheduled_, {}))
            timer.callback();
    }

private:
    std::vector<Scheduled> scheduled_;
};

} // namespace quillow
