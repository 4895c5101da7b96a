// A background queue that runs operations on the test's thread when the test calls it.
#pragma once

#include "platform/BackgroundQueue.h"
#include "tests/fakes/Journal.h"

#include <cstddef>
#include <deque>
#include <utility>

namespace quillow {

class FakeBackgroundQueue final : public BackgroundQueue, public Recorded {
public:
    void addOperation(std::function<void()> operation) override {
        record(QStringLiteral("begun in the background"));
        queued_.push_back(std::move(operation));
    }
    [[nodiscard]] std::size_t queuedCount() const { return queued_.size(); }
    /// Runs the oldest operation.
    void runNext() {
        const auto operation = std::move(queued_.at(0));
        queued_.pop_front();
        operation();
    }

private:
    std::deque<std::function<void()>> queued_;
};

} // namespace quillow
