// How the program asks for memory where it may have little.
#pragma once

namespace quillow::cli {

/// glibc lets each thread reserve addresses by 64 MiB, and gives a thread that gets none whole pages for the smallest wish. Where the
/// addresses are limited (ulimit -v) to less than `threads` take so, all of them share one store. To be called before they begin.
void shareMemoryWhereLimited(unsigned threads);

} // namespace quillow::cli
