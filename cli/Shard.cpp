#include "cli/Shard.h"

namespace quillow::cli {

bool Shard::has(std::string_view path) const {
    std::uint64_t hash = 0xcbf29ce484222325U;
    for (const char byte : path)
        hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001b3U;
    // The low bits of FNV-1a depend on little; the high ones are mixed in.
    hash ^= hash >> 32U;
    return hash % count == number - 1;
}

} // namespace quillow::cli
