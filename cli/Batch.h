// Runs a batch on several threads and hands the results out in order.
#pragma once

#include "cli/Result.h"

#include <cstddef>
#include <functional>

namespace quillow::cli {

enum class Next { goOn, stop };

/// Results that wait for their turn, for each thread; with kWaitingBytes the bound of what a run keeps in memory beside the
/// documents being read.
inline constexpr std::size_t kWaitingPerJob = 16;
/// Bytes of waiting texts beyond which no thread begins another document but the one whose turn it is.
inline constexpr std::size_t kWaitingBytes = std::size_t{64} << 20;

/// Does `work` for 0 ... count-1 on up to `jobs` threads, and calls `deliver` in that order on the caller's thread. After
/// `deliver` answers stop no further work begins, and the call returns when what was begun has ended.
void runBatch(std::size_t count, unsigned jobs, const std::function<Result(std::size_t)>& work,
              const std::function<Next(std::size_t, Result)>& deliver);

} // namespace quillow::cli
