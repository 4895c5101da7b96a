// Work off the main thread, in a separate thread pool.
#pragma once

#include "platform/BackgroundQueue.h"

#include <QThreadPool>

#include <utility>
#include <vector>

namespace quillow {

/// The destructor waits for operations that have begun and drops those that have not.
class QtBackgroundQueue final : public BackgroundQueue {
public:
    ~QtBackgroundQueue() override {
        pool_.clear();
        pool_.waitForDone();
    }
    void addOperation(std::function<void()> operation) override {
        if (isHeld_)
            held_.push_back(std::move(operation));
        else
            pool_.start(std::move(operation));
    }

    /// After this, operations wait for release(). Call both on the main thread, as addOperation() then.
    void hold() { isHeld_ = true; }
    void release() {
        isHeld_ = false;
        for (auto& operation : std::exchange(held_, {}))
            pool_.start(std::move(operation));
    }

private:
    QThreadPool pool_;
    bool isHeld_ = false;
    std::vector<std::function<void()>> held_;
};

} // namespace quillow
