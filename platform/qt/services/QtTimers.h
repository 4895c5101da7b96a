// Timers on the event loop.
#pragma once

#include "platform/Timers.h"

#include <QObject>
#include <QTimer>

#include <chrono>
#include <utility>

namespace quillow {

/// Callbacks that are still pending when this object is destroyed are dropped.
class QtTimers final : public Timers {
public:
    void scheduleOnce(double seconds, std::function<void()> callback) override {
        const std::chrono::duration<double> wait(seconds);
        QTimer::singleShot(std::chrono::duration_cast<std::chrono::milliseconds>(wait), &context_, std::move(callback));
    }

private:
    QObject context_;
};

} // namespace quillow
