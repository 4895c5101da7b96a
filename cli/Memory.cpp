#include "cli/Memory.h"

#include <malloc.h>
#include <sys/resource.h>

namespace quillow::cli {

namespace {

/// A thread's store is aligned to its size, so twice as much is asked for, and there is its stack.
constexpr rlim_t kForAThread = rlim_t{128 + 8} << 20;
/// For the program and the documents.
constexpr rlim_t kForTheRest = rlim_t{256} << 20;

} // namespace

void shareMemoryWhereLimited(unsigned threads) {
    rlimit limits = {};
    if (::getrlimit(RLIMIT_AS, &limits) != 0 || limits.rlim_cur == RLIM_INFINITY) return;
    if (limits.rlim_cur < kForTheRest + threads * kForAThread) ::mallopt(M_ARENA_MAX, 1);
}

} // namespace quillow::cli
