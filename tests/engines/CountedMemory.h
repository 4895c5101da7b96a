// Counts the memory that a program allocates, by the sizes that it requests. CountedMemory.cpp replaces the global
// allocation functions of the test program that it is built into.
#pragma once

#include <atomic>
#include <cstddef>

namespace quillow::test {

extern std::atomic<std::size_t> liveBytes; ///< allocated and not yet freed
extern std::atomic<std::size_t> mostBytes; ///< the maximum of liveBytes since a test last set it

} // namespace quillow::test
