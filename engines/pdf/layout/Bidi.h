// From the order on the page, left to right, to the order of reading (Unicode Standard Annex #9, backwards).
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace quillow::pdf {

/// What a character says of its direction (UAX #9, 3.2), as far as reordering needs it.
enum class Direction : std::uint8_t { neutral, left, right, number, mark };

[[nodiscard]] Direction directionOf(char32_t character);

/// A unit of a line that is moved as a whole: a glyph with its characters.
struct Cluster {
    std::uint32_t index = 0; ///< the caller's
    Direction direction = Direction::neutral;
    bool isBlank = false;
    char32_t character = 0; ///< if it is a single one
    bool isTurned = false;  ///< set by `reorder`: whether it is in text from the right, where brackets are mirrored
    bool partsText = false; ///< set by `settlePunctuation`: it separates texts of one direction
};

/// Whether a line of such clusters, in visual order, is read from the right. `onPageFromTheRight`: whether its page is
/// mostly text from the right.
[[nodiscard]] bool readsFromTheRight(std::span<const Cluster> clusters, bool onPageFromTheRight);

/// Uses blanks to find what UAX #9 cannot tell of text in visual order: closing punctuation follows its word without a
/// blank. Signs of text from the left get its direction in a line from the right: `f():` and `\name` stay whole.
/// Punctuation that is written in the direction of the line parts the words on its sides: `c ,b ,a` is a list from the
/// right of three words from the left.
void settlePunctuation(std::span<Cluster> clusters, bool fromTheRight);

/// Whether so much of a page's text is from the right that the page is read from the right.
[[nodiscard]] bool isMostlyFromTheRight(std::u32string_view text);

/// A sign or unit that belongs to the number beside it (UAX #9, W5), such as a percent sign.
[[nodiscard]] bool endsNumbers(char32_t character);

/// The other bracket of a pair, or 0 (Bidi_Mirroring_Glyph of the Unicode Character Database, the common ones).
[[nodiscard]] char32_t mirrored(char32_t character);

/// Puts clusters that are in visual order, from left to right, into logical order.
void reorder(std::span<Cluster> clusters, bool fromTheRight);

} // namespace quillow::pdf
