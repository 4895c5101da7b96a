// Sorted names in one string, for binary search.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace quillow::pdf {

struct NameTable {
    const char* pool;
    const std::uint16_t* starts; ///< one more than there are names
    std::size_t count;

    [[nodiscard]] constexpr std::string_view operator[](std::size_t index) const {
        return {pool + starts[index], static_cast<std::size_t>(starts[index + 1] - starts[index])};
    }

    /// The index of a name.
    [[nodiscard]] constexpr std::optional<std::size_t> find(std::string_view name) const {
        std::size_t first = 0;
        std::size_t last = count;
        while (first < last) {
            const std::size_t middle = (first + last) / 2;
            const int order = (*this)[middle].compare(name);
            if (order == 0) return middle;
            if (order < 0)
                first = middle + 1;
            else
                last = middle;
        }
        return std::nullopt;
    }
};

} // namespace quillow::pdf
