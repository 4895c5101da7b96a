// A part of a run's documents: several machines that get the same list convert one part each.
#pragma once

#include <cstdint>
#include <string_view>

namespace quillow::cli {

struct Shard {
    std::uint32_t number = 1; ///< from 1 to count
    std::uint32_t count = 1;

    /// Whether the document with that path belongs to the part. Depends on nothing but the path as it was given, so it
    /// is the same on every machine and in every release: FNV-1a with 64 bits, its halves combined by exclusive or,
    /// modulo the count.
    [[nodiscard]] bool has(std::string_view path) const;

    friend bool operator==(const Shard&, const Shard&) = default;
};

} // namespace quillow::cli
