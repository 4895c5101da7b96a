#include "platform/qt/services/QtMainQueue.h"

#include <QCoreApplication>
#include <QEvent>

#include <utility>

namespace quillow {

void QtMainQueue::addOperation(std::function<void()> operation) {
    {
        const std::lock_guard lock(mutex_);
        waiting_.push_back(std::move(operation));
    }
    QCoreApplication::postEvent(this, new QEvent(QEvent::User));
}

void QtMainQueue::runAllAtEnd() {
    QCoreApplication::exit(0); // every nested event loop that begins after this returns at once
    runWaiting();
}

QtMainQueue::Suspension::Suspension(QtMainQueue& queue)
    : queue_(queue)
    , wasRunning_(std::exchange(queue.isRunning_, false)) {
    // The events of operations that were added while this one ran may have been consumed already.
    QCoreApplication::postEvent(&queue, new QEvent(QEvent::User));
}

bool QtMainQueue::event(QEvent* event) {
    if (event->type() != QEvent::User) return QObject::event(event);
    // One event was posted for each operation. An event that arrives while an operation runs is skipped: runWaiting()
    // runs its operation afterwards.
    if (!isRunning_) runWaiting();
    return true;
}

void QtMainQueue::runWaiting() {
    isRunning_ = true;
    while (const std::function<void()> operation = takeFirst())
        operation();
    isRunning_ = false;
}

std::function<void()> QtMainQueue::takeFirst() {
    const std::lock_guard lock(mutex_);
    if (waiting_.empty()) return {};
    std::function<void()> first = std::move(waiting_.front());
    waiting_.pop_front();
    return first;
}

} // namespace quillow
