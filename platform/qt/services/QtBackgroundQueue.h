// Work off the main thread on a pool of our own.
#pragma once

#include "platform/BackgroundQueue.h"

#include <QThreadPool>

#include <utility>

namespace quillow {

/// Operations that have begun are waited for when the queue goes; those that have not are dropped.
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
