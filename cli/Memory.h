// Adapts memory allocation to a limited address space.
#pragma once

namespace quillow::cli {

/// glibc reserves an arena of 64 MiB of addresses for each thread. A thread without one gets whole pages for the
/// smallest request. If the limit of addresses (ulimit -v) is too low for `threads` arenas, all threads share one.
/// Call it before they start.
void shareMemoryWhereLimited(unsigned threads);

} // namespace quillow::cli
