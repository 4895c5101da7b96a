// The system calls that a worker may make.
#pragma once

namespace quillow::worker {

/// From now on every system call that reading a document does not need ends this process by SIGSYS, whichever thread
/// makes it. Needs no_new_privs.
/// Returns false if the kernel or the architecture has no such filter.
///
/// deliberate: SIGSYS, not an error code. Nothing that an engine or the C library does after the lock is refused, so
/// a refused call is an attack or a mistake of ours. It must not get a second try, and it must be seen.
[[nodiscard]] bool filterSystemCalls();

} // namespace quillow::worker
