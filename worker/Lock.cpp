#include "worker/Lock.h"

#include "worker/Landlock.h"
#include "worker/SystemCallFilter.h"

#include <linux/capability.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>

namespace quillow::worker {

namespace {

/// The address sanitizer reserves terabytes of addresses.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool kAddressesAreLimitable = false;
constexpr unsigned kFirstClosed = STDERR_FILENO + 1; ///< its reports go to standard error
#else
constexpr bool kAddressesAreLimitable = true;
constexpr unsigned kFirstClosed = STDOUT_FILENO + 1;
#endif

void closeAllButChannels() {
    if (::syscall(SYS_close_range, kFirstClosed, ~0U, 0U) == 0) return;
    // A kernel before 5.9.
    for (long number = kFirstClosed; number < ::sysconf(_SC_OPEN_MAX); ++number)
        ::close(static_cast<int>(number));
}

/// A limit that the user has set lower stays.
bool limit(__rlimit_resource resource, rlim_t soft, rlim_t hard) {
    rlimit values{};
    if (::getrlimit(resource, &values) != 0) return false;
    values.rlim_max = std::min(values.rlim_max, hard);
    values.rlim_cur = std::min({values.rlim_cur, values.rlim_max, soft});
    return ::setrlimit(resource, &values) == 0;
}

bool limitMemory(std::size_t bytes) {
    return bytes > 0 && kAddressesAreLimitable && limit(RLIMIT_AS, bytes, bytes);
}

/// The wall clock of the parent ends a worker that takes too long. This limit ends one whose parent has stopped.
void limitProcessorTime(unsigned seconds) {
    if (seconds > 0) static_cast<void>(limit(RLIMIT_CPU, seconds, seconds + 1));
}

bool limitFiles() {
    const bool noFile = limit(RLIMIT_FSIZE, 0, 0);
    const bool noMemoryImage = limit(RLIMIT_CORE, 0, 0);
    // Nor may other processes of the user look into it.
    const bool isHidden = ::prctl(PR_SET_DUMPABLE, 0, 0, 0, 0) == 0;
    return noFile && noMemoryImage && isHidden;
}

/// Threads count as processes.
bool limitProcesses() {
    return limit(RLIMIT_NPROC, 0, 0);
}

bool dropCapabilities() {
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    const __user_cap_data_struct none[_LINUX_CAPABILITY_U32S_3] = {};
    return ::syscall(SYS_capset, &header, none) == 0;
}

} // namespace

Isolation lockDown(const LockSettings& settings, const std::function<void()>& makeThreads) {
    Isolation isolation;
    static_cast<void>(::prctl(PR_SET_PDEATHSIG, SIGKILL, 0, 0, 0));
    closeAllButChannels();
    isolation.memory = limitMemory(settings.memory);
    limitProcessorTime(settings.processorTime);
    const bool noFile = limitFiles();
    const bool gainsNothing = ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0;
    isolation.privileges = dropCapabilities() && gainsNothing;
    if (settings.landlock == LandlockUse::whereAvailable) isolation.landlockAbi = denyFilesAndNetwork();
    // The kernel takes rights from one thread at a time. Threads that are made now have none; the filter then applies
    // to all of them.
    makeThreads();
    isolation.limits = limitProcesses() && noFile;
    isolation.systemCalls = filterSystemCalls();
    return isolation;
}

} // namespace quillow::worker
