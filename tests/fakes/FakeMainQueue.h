// A main queue that runs operations when the test calls it.
#pragma once

#include "platform/MainQueue.h"

#include <cstddef>
#include <deque>
#include <utility>

namespace quillow {

class FakeMainQueue final : public MainQueue {
public:
    void addOperation(std::function<void()> operation) override { queued_.push_back(std::move(operation)); }

    [[nodiscard]] std::size_t queuedCount() const { return queued_.size(); }

    /// Runs the oldest operation.
    void runNext() {
        const auto operation = std::move(queued_.at(0));
        queued_.pop_front();
        operation();
    }

    /// Runs all operations, including those that are added meanwhile.
    void runAll() {
        while (!queued_.empty())
            runNext();
    }

private:
    std::deque<std::function<void()>> queued_;
};

} // namespace quillow
