// Locks this process in, before it gets its first document.
#pragma once

#include "worker/Isolation.h"

#include <cstddef>

namespace quillow::worker {

enum class LandlockUse { whereAvailable, off };

struct LockSettings {
    std::size_t memory = 0;                             ///< bytes of address space; 0: no limit
    unsigned processorTime = 0;                         ///< seconds until SIGXCPU; 0: no limit
    LandlockUse landlock = LandlockUse::whereAvailable; ///< off for tests of systems without it
};

/// Takes from this process everything that reading a document does not need, for good: all descriptors but the channel,
/// which is standard input; files, network, other processes, privileges, further system calls. If its parent thread
/// ends, it is killed. Load libraries and make threads before.
/// Each step is independent of the others: what the system does not offer is missing in the answer.
[[nodiscard]] Isolation lockDown(const LockSettings& settings);

} // namespace quillow::worker
