// What protects the system from a worker on this machine. Kernels and containers differ, so this is known at run time
// only.
#pragma once

#include <cstdint>
#include <string>

namespace quillow::worker {

struct Isolation {
    std::uint32_t landlockAbi = 0; ///< the kernel's version of Landlock; 0: it has none or refused it
    bool systemCalls = false;      ///< a filter ends the worker at any system call that it does not need
    bool memory = false;           ///< the address space has a limit
    bool limits = false;           ///< no file may be written, no process made, no memory image left behind
    bool privileges = false;       ///< no capabilities, and none to gain

    friend bool operator==(const Isolation&, const Isolation&) = default;
};

/// True if everything but the memory limit is on, which the user may have switched off.
[[nodiscard]] bool isComplete(const Isolation& isolation);

/// One line for the user, such as "file system and network (Landlock 7), system calls, limits, privileges". What is
/// missing is named: "...; not isolated: system calls".
[[nodiscard]] std::string describe(const Isolation& isolation);

} // namespace quillow::worker
