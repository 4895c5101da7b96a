// Waits in the event loop for a condition, not for a time; the limit only keeps a broken test from hanging.
#pragma once

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QThread>

#include <functional>

namespace quillow {

[[nodiscard]] inline bool waitUntil(const std::function<bool()>& condition) {
    constexpr qint64 kLimitMilliseconds = 60000;
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.elapsed() > kLimitMilliseconds) return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QThread::msleep(1);
    }
    return true;
}

/// Runs all queued events, and the events that they queue.
inline void runEvents() {
    for (int i = 0; i < 5; ++i)
        QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace quillow
