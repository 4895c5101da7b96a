// The arenas from which glibc's allocator serves threads. It reserves 64 MiB of addresses for each.
#pragma once

#include <malloc.h>
#include <sys/resource.h>

namespace quillow {

/// How many arenas so many threads should have: one each, or one for all if the limit of addresses (ulimit -v) is too
/// low for that. A thread whose arena cannot be made gets whole pages for the smallest request.
[[nodiscard]] inline unsigned arenasFor(unsigned threads) {
    // An arena needs twice its size because it is aligned to that size, and a thread needs a stack.
    constexpr rlim_t kForAThread = rlim_t{128 + 8} << 20;
    constexpr rlim_t kForTheRest = rlim_t{256} << 20; // the program and the documents
    rlimit limits = {};
    if (::getrlimit(RLIMIT_AS, &limits) != 0 || limits.rlim_cur == RLIM_INFINITY) return threads;
    return limits.rlim_cur < kForTheRest + threads * kForAThread ? 1 : threads;
}

/// Makes all threads share one arena if the limit of addresses is too low for more. Call it before they start.
inline void shareMemoryWhereLimited(unsigned threads) {
    if (arenasFor(threads) < threads) ::mallopt(M_ARENA_MAX, 1);
}

} // namespace quillow
