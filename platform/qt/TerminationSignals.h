// SIGTERM, SIGINT and SIGHUP as a call on the main thread.
#pragma once

#include "platform/qt/FileDescriptor.h"

#include <QSocketNotifier>

#include <functional>
#include <memory>

namespace quillow {

/// One at a time: the signals are the process's. A second signal while the first is being dealt with ends the process.
class TerminationSignals {
public:
    explicit TerminationSignals(std::function<void()> handler);
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;
    ~TerminationSignals();

private:
    FileDescriptor readEnd_;
    FileDescriptor writeEnd_;
    std::unique_ptr<QSocketNotifier> notifier_;
};

} // namespace quillow
