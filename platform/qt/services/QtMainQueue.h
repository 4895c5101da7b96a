// Operations put off to the main thread's event loop. A nested loop, as a modal alert runs it, carries them on.
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

    /// Runs what waits now, and what that adds: for a program that ends.
    void runAll() { runWaiting(); }

    /// An operation that shows a modal alert stands still meanwhile: those behind it run under the alert.
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
