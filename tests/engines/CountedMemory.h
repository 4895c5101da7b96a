// How much memory a program asks for, counted by what is asked, not by what the system gives. A test program that is built
// with CountedMemory.cpp has the global allocation functions replaced.
#pragma once

#include <atomic>
#include <cstddef>

namespace quillow::test {

extern std::atomic<std::size_t> liveBytes; ///< asked for and not given back
extern std::atomic<std::size_t> mostBytes; ///< the most of them since a test last set it

} // namespace quillow::test
