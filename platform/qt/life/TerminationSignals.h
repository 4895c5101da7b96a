// Turns SIGTERM, SIGINT, SIGHUP and a request from another thread into a call on the main thread.
#pragma once

#include "platform/Termination.h"
#include "posix/FileDescriptor.h"

#include <QSocketNotifier>

#include <functional>
#include <memory>

namespace quillow {

/// One instance at a time, because signal handlers belong to the process. A second signal of the same kind ends the
/// process at once.
class TerminationSignals final : public Termination {
public:
    /// `handler` is called from the event loop.
    explicit TerminationSignals(std::function<void()> handler);
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;
    ~TerminationSignals() override;

    /// As if a signal arrived. Callable from any thread.
    void request() const;
    /// True as soon as the signal arrives, even while the event loop does not run. Callable from any thread.
    [[nodiscard]] bool isRequested() const override;

private:
    FileDescriptor readEnd_;
    FileDescriptor writeEnd_;
    std::unique_ptr<QSocketNotifier> notifier_;
};

} // namespace quillow
