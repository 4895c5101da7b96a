// Takes the file system and the network from this process by Landlock, which needs no privileges.
#pragma once

#include <cstdint>

namespace quillow::worker {

/// From now on this thread opens no file and no TCP connection, and reaches no process outside by signals or abstract
/// sockets, as far as the kernel knows these rights. Descriptors that are open stay open. Needs no_new_privs or
/// privileges. Returns the kernel's ABI version; 0 if Landlock is missing, switched off or refused.
[[nodiscard]] std::uint32_t denyFilesAndNetwork();

} // namespace quillow::worker
