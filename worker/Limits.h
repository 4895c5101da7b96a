// How much one document may use in a worker.
#pragma once

#include <chrono>
#include <cstddef>

namespace quillow::worker {

/// The largest number of threads of a worker, and the addresses that it needs for each: a stack, an arena of the
/// allocator, and what they read.
inline constexpr unsigned kMaximumThreads = 256;
inline constexpr std::size_t kAddressesOfAThread = std::size_t{256} << 20;

struct Limits {
    /// Wall-clock time for one document; zero: no limit.
    std::chrono::milliseconds time = std::chrono::seconds(60);
    /// Address space of a worker: the program, the document and its text; zero: no limit.
    std::size_t memory = std::size_t{2} << 30;
    /// The longest text that is taken from a worker.
    std::size_t text = std::size_t{1} << 30;
    /// The most threads of a worker, which may read one document together. Fewer if the memory is too low for so many.
    unsigned threads = 1;
};

} // namespace quillow::worker
