// How much one document may use in a worker.
#pragma once

#include <chrono>
#include <cstddef>

namespace quillow::worker {

struct Limits {
    /// Wall-clock time for one document; zero: no limit.
    std::chrono::milliseconds time = std::chrono::seconds(60);
    /// Address space of a worker: the program, the document and its text; zero: no limit.
    std::size_t memory = std::size_t{2} << 30;
    /// The longest text that is taken from a worker.
    std::size_t text = std::size_t{1} << 30;
};

} // namespace quillow::worker
