// A main queue that runs what was added when the test says so.
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

    /// Runs the operation that was added first.
    void runNext() {
        const auto operation = std::move(queued_.at(0));
        queued_.pop_front();
        operation();
    }

    /// Runs all, those included that are added meanwhile.
    void runAll() {
        while (!queued_.empty())
            runNext();
    }

private:
    std::deque<std::function<void()>> queued_;
};

} // namespace quillow
