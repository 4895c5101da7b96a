// Runs a batch on several threads and delivers the results in order.
#pragma once

#include "cli/Result.h"

#include <cstddef>
#include <functional>
#include <memory>

namespace quillow::cli {

enum class Next { goOn, stop };
/// Whether the next result is there already.
enum class Following { none, arrived };

/// The most results that may wait for delivery, per thread and in all. Together with kWaitingBytes it limits the memory
/// that a run uses for anything but the documents being read.
inline constexpr std::size_t kWaitingPerJob = 64;
inline constexpr std::size_t kMaximumWaiting = 256;
/// If the waiting texts have this many bytes, threads begin only the document that is delivered next.
inline constexpr std::size_t kWaitingBytes = std::size_t{64} << 20;

/// The work of one thread of a batch: each item is begun and then ended, in the same order.
class Job {
public:
    Job() = default;
    Job(const Job&) = delete;
    Job& operator=(const Job&) = delete;
    virtual ~Job() = default;

    /// Whether an item may be begun before the one that was begun last has ended. Two items at most are begun and not
    /// ended.
    [[nodiscard]] virtual bool mayBeginEarly(std::size_t index) const = 0;
    virtual void begin(std::size_t index) = 0;
    [[nodiscard]] virtual Result end(std::size_t index) = 0;
};

/// Does the work for 0 ... count-1 on up to `jobs` threads, each with a job of its own, and calls `deliver` in that
/// order on the caller's thread, which therefore works while documents are read. After `deliver` returns stop, no more
/// work begins; the function returns when all work in progress has ended.
void runBatch(std::size_t count, unsigned jobs, const std::function<std::unique_ptr<Job>()>& makeJob,
              const std::function<Next(std::size_t, Result, Following)>& deliver);

} // namespace quillow::cli
