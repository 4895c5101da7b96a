#include "cli/Memory.h"

#include <malloc.h>
#include <sys/resource.h>

namespace quillow::cli {

namespace {

/// Address space of a thread: its arena, which needs twice its size because it is aligned to that size, and its stack.
constexpr rlim_t kForAThread = rlim_t{128 + 8} << 20;
/// Address space of the program and the documents.
constexpr rlim_t kForTheRest = rlim_t{256} << 20;

} // namespace

void shareMemoryWhereLimited(unsigned threads) {
    rlimit limits = {};
    if (::getrlimit(RLIMIT_AS, &limits) != 0 || limits.rlim_cur == RLIM_INFINITY) return;
    if (limits.rlim_cur < kForTheRest + threads * kForAThread) ::mallopt(M_ARENA_MAX, 1);
}

} // namespace quillow::cli
