#include "platform/qt/life/TerminationSignals.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <utility>

namespace quillow {
namespace {

constexpr int kSignals[] = {SIGTERM, SIGINT, SIGHUP};

/// A signal handler may do little more than write a byte to a pipe that the event loop reads.
volatile sig_atomic_t signalPipe = -1;
std::atomic<bool> isRaised = false;
static_assert(std::atomic<bool>::is_always_lock_free, "used in a signal handler");

void passOn(int) {
    const int errnoOfOthers = errno;
    isRaised = true;
    const char byte = 1;
    [[maybe_unused]] const ssize_t written = ::write(signalPipe, &byte, 1);
    errno = errnoOfOthers;
}

} // namespace

TerminationSignals::TerminationSignals(std::function<void()> handler) {
    int ends[2] = {-1, -1};
    if (::pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0) return;
    isRaised = false;
    readEnd_ = FileDescriptor(ends[0]);
    writeEnd_ = FileDescriptor(ends[1]);
    signalPipe = writeEnd_.number();
    notifier_ = std::make_unique<QSocketNotifier>(readEnd_.number(), QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(),
                     [this, handler = std::move(handler)] {
                         char byte = 0;
                         if (::read(readEnd_.number(), &byte, 1) == 1) handler();
                     });

    struct sigaction action = {};
    action.sa_handler = &passOn;
    action.sa_flags = SA_RESTART | static_cast<int>(SA_RESETHAND);
    for (const int number : kSignals)
        ::sigaction(number, &action, nullptr);
}

TerminationSignals::~TerminationSignals() {
    for (const int number : kSignals)
        ::signal(number, SIG_DFL);
    signalPipe = -1;
}

void TerminationSignals::request() const {
    passOn(0);
}

bool TerminationSignals::isRequested() const {
    return isRaised;
}

} // namespace quillow
