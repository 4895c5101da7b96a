// Work off the main thread, in a separate thread pool.
#pragma once

#include "platform/BackgroundQueue.h"

#include <QThreadPool>

#include <utility>

namespace quillow {

/// The destructor waits for operations that have begun and drops those that have not.
class QtBackgroundQueue final : public BackgroundQueue {
public:
    ~QtBackgroundQueue() override {
        pool_.clear();
        pool_.waitForDone();
    }
    void addOperation(std::function<void()> operation) override { pool_.start(std::move(operation)); }

private:
    QThreadPool pool_;
};

} // namespace quillow
