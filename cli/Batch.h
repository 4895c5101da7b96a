// Runs a batch on several threads and delivers the results in order.
#pragma once

#include "cli/Result.h"

#include <cstddef>
#include <functional>

namespace quillow::cli {

enum class Next { goOn, stop };

/// The most results per thread that may wait for delivery. Together with kWaitingBytes it limits the memory that a
/// run uses for anything but the documents being read.
inline constexpr std::size_t kWaitingPerJob = 16;
/// If the waiting texts have this many bytes, threads begin only the document that is delivered next.
inline constexpr std::size_t kWaitingBytes = std::size_t{64} << 20;

/// Calls `work` for 0 ... count-1 on up to `jobs` threads, and `deliver` in that order on the caller's thread. After
/// `deliver` returns stop, no more work begins; the function returns when all work in progress has ended.
void runBatch(std::size_t count, unsigned jobs, const std::function<Result(std::size_t)>& work,
              const std::function<Next(std::size_t, Result)>& deliver);

} // namespace quillow::cli
