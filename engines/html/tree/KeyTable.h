// A hash table of names, built at compile time, with open addressing over the names' keys.
#pragma once

#include "engines/html/tree/NameKey.h"

#include <array>

namespace quillow::html {

/// Maps a name's key to the name's index in a list. Every name that is not in the list maps to the index of the
/// first entry, 0. The table has 2 to the power of `bits` slots; at least two thirds of them stay empty.
template <unsigned bits, std::size_t count>
class KeyTable {
public:
    constexpr explicit KeyTable(const std::array<std::string_view, count>& names) {
        static_assert(count <= 0x100 && count * 3 < kSlots);
        for (std::size_t place = 1; place < count; ++place) {
            keys_[place] = keyOf(names[place]);
            std::size_t slot = keys_[place].hash(bits);
            while (slots_[slot] != 0)
                slot = (slot + 1) % kSlots;
            slots_[slot] = static_cast<std::uint8_t>(place);
        }
    }

    [[nodiscard]] constexpr std::size_t find(const NameKey& key) const {
        std::size_t slot = key.hash(bits);
        while (slots_[slot] != 0 && keys_[slots_[slot]] != key)
            slot = (slot + 1) % kSlots;
        return slots_[slot];
    }

private:
    static constexpr std::size_t kSlots = std::size_t{1} << bits;
    std::array<std::uint8_t, kSlots> slots_{};
    std::array<NameKey, count> keys_{};
};

} // namespace quillow::html
