// From the order on the page, left to right, to the order of reading (Unicode Standard Annex #9, backwards).
#pragma once

#include <cstdint>
#include <span>

namespace quillow::pdf {

/// What a character says of its direction (UAX #9, 3.2), as far as reordering needs it.
enum class Direction : std::uint8_t { neutral, left, right, number, mark };

[[nodiscard]] Direction directionOf(char32_t character);

/// A unit of a line that is moved as a whole: a glyph with its characters.
struct Cluster {
    std::uint32_t index = 0; ///< the caller's
    Direction direction = Direction::neutral;
    bool isBlank = false;
};

/// Whether a line of such clusters is read from the right.
[[nodiscard]] bool readsFromTheRight(std::span<const Cluster> clusters);

/// Puts clusters that are in visual order, from left to right, into logical order.
void reorder(std::span<Cluster> clusters, bool fromTheRight);

} // namespace quillow::pdf
