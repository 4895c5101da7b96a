// SIGTERM, SIGINT and SIGHUP as a call on the main thread.
#pragma once

#include "platform/Termination.h"
#include "posix/FileDescriptor.h"

#include <QSocketNotifier>

#include <functional>
#include <memory>

namespace quillow {

/// One at a time: the signals are the process's. The second signal of a kind ends the process at once.
class TerminationSignals final : public Termination {
public:
    /// The handler is called from the event loop.
    explicit TerminationSignals(std::function<void()> handler);
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;
    ~TerminationSignals() override;

    /// True from the moment of the signal on, also while the event loop does not run. May be asked on any thread.
    [[nodiscard]] bool isRequested() const override;

private:
    FileDescriptor readEnd_;
    FileDescriptor writeEnd_;
    std::unique_ptr<QSocketNotifier> notifier_;
};

} // namespace quillow
