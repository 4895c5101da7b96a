#include "cli/Interrupt.h"

#include "cli/PasswordPrompt.h"
#include "cli/PendingFile.h"
#include "cli/Program.h"
#include "cli/Progress.h"

#include <signal.h>
#include <unistd.h>

#include <system_error>
#include <thread>

namespace quillow::cli {

namespace {

bool isIgnored(int signal) {
    struct sigaction action = {};
    return ::sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

bool pipeSignalWasIgnored = false;

void waitForInterrupt(sigset_t signals) {
    int signal = 0;
    while (::sigwait(&signals, &signal) != 0) {
    }
    PendingFile::abandonAll();
    PasswordPrompt::abandon();
    Progress::abandon();
    ::_exit(kInterrupted);
}

} // namespace

void handleInterrupts() {
    pipeSignalWasIgnored = isIgnored(SIGPIPE);
    ::signal(SIGPIPE, SIG_IGN);
    ::signal(SIGXFSZ, SIG_IGN); // a file that is larger than allowed (ulimit -f) is a write error like others
    ::signal(SIGCHLD, SIG_DFL); // if it is ignored, nobody learns how a worker ended
    sigset_t signals;
    ::sigemptyset(&signals);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        if (!isIgnored(signal)) ::sigaddset(&signals, signal);
    sigset_t before;
    ::pthread_sigmask(SIG_BLOCK, &signals, &before);
    try {
        std::thread(waitForInterrupt, signals).detach();
    } catch (const std::system_error&) {
        // The thread cannot be started, so the signals have their default effect again: they end the program.
        ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
    }
}

void endWithoutReader() {
    if (!pipeSignalWasIgnored) {
        ::signal(SIGPIPE, SIG_DFL);
        ::raise(SIGPIPE);
    }
    ::_exit(kReaderGone); // SIGPIPE is ignored or blocked
}

} // namespace quillow::cli
