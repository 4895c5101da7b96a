// Names of tags and attributes as numbers: a name of up to sixteen bytes is read, put in lower case and compared at a stroke.
#pragma once

#include "engines/html/Ascii.h"

#include <cstdint>

namespace quillow::html {

/// The bytes of a lower-case name, the first in the lowest bits; all zero for a name that is longer than both halves hold
/// or has U+0000 in it.
struct NameKey {
    static constexpr std::size_t kMaxLength = 16;
    std::uint64_t low = 0;
    std::uint64_t high = 0;
    friend constexpr bool operator==(const NameKey&, const NameKey&) = default;

    /// Sets the byte at `index`, which is zero so far.
    constexpr void put(std::size_t index, char c) {
        (index < 8 ? low : high) |= std::uint64_t{static_cast<unsigned char>(c)} << (index % 8 * 8);
    }
    /// Spreads the keys over 2 to the power of `bits` numbers.
    [[nodiscard]] constexpr std::size_t hash(unsigned bits) const {
        constexpr std::uint64_t kOdd = 0x9E3779B97F4A7C15; // 2 to the power of 64 over the golden ratio
        return static_cast<std::size_t>(((low ^ (high * kOdd)) * kOdd) >> (64 - bits));
    }
};

[[nodiscard]] constexpr NameKey keyOf(std::string_view lowerCase) {
    NameKey key;
    if (lowerCase.size() > NameKey::kMaxLength) return key;
    for (std::size_t i = 0; i < lowerCase.size(); ++i)
        key.put(i, lowerCase[i]);
    return key;
}

/// What ends a name: white space, "/" and ">", and for an attribute's name "=" too.
enum class NameEnd { tag, attribute };

struct ScannedName {
    NameKey key; ///< of the name in lower case
    std::size_t length = 0;
    bool asWritten = true; ///< no upper-case letter and no U+0000 in it: the source has it as it is to be
};

/// Reads the name at `from`, which is not past the end of the source.
[[nodiscard]] ScannedName scanName(std::string_view source, std::size_t from, NameEnd end);
/// The same, one byte after the other.
[[nodiscard]] ScannedName scanNamePortable(std::string_view source, std::size_t from, NameEnd end);

} // namespace quillow::html
