// Operations deferred to the main thread's event loop. A nested loop, such as a modal alert's, continues to run them.
#pragma once

#include "platform/MainQueue.h"

#include <QObject>

#include <deque>
#include <mutex>

namespace quillow {

class QtMainQueue final : public QObject, public MainQueue {
public:
    /// May be called from any thread.
    void addOperation(std::function<void()> operation) override;

    /// Ends the event loop, and runs all waiting operations and those that they add. Their alerts do not wait for an
    /// answer: they return as dismissed.
    void runAllAtEnd();

    /// Suspends the running operation while it shows a modal alert: the operations after it run under the alert.
    class [[nodiscard]] Suspension {
    public:
        explicit Suspension(QtMainQueue& queue);
        Suspension(const Suspension&) = delete;
        Suspension& operator=(const Suspension&) = delete;
        ~Suspension() { queue_.isRunning_ = wasRunning_; }

    private:
        QtMainQueue& queue_;
        bool wasRunning_;
    };

protected:
    bool event(QEvent* event) override;

private:
    void runWaiting();
    std::function<void()> takeFirst();

    std::mutex mutex_;
    std::deque<std::function<void()>> waiting_; ///< guarded by mutex_
    bool isRunning_ = false;
};

} // namespace quillow
