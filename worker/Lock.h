// Locks this process in, before it gets its first document.
#pragma once

#include "worker/Isolation.h"

#include <cstddef>
#include <functional>

namespace quillow::worker {

enum class LandlockUse { whereAvailable, off };

struct LockSettings {
    std::size_t memory = 0;     ///< bytes of address space; 0: no limit
    unsigned processorTime = 0; ///< seconds until SIGXCPU; 0: no limit
    unsigned threads = 1;
    LandlockUse landlock = LandlockUse::whereAvailable; ///< off for tests of systems without it
};

/// Takes from this process everything that reading a document does not need, for good: all descriptors but the channel,
/// which is standard input; files, network, other processes, privileges, further system calls. If its parent thread
/// ends, it is killed. Load libraries before. `makeThreads` makes the only other threads that this process will have;
/// when it returns, they wait and have no rights either.
/// Each step is independent of the others: what the system does not offer is missing in the answer.
[[nodiscard]] Isolation lockDown(const LockSettings& settings, const std::function<void()>& makeThreads);

} // namespace quillow::worker
