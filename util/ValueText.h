// Values as the text of a table's cell.
#pragma once

#include "base/Boxed.h"

#include <QString>

namespace quillow {

/// At most so many values inside an array or a dictionary are written, and so deep; "…" stands for the rest.
inline constexpr int kMaximumValuesInCell = 10'000;
inline constexpr int kMaximumDepthInCell = 16;

/// A string as it is; nil and an object that is read by key empty; a boolean "1" or "0"; an integer in decimal; a fraction in the fewest digits that read back as the
/// same number, with a point; a date in ISO 8601 to the second with its offset from UTC; bytes in Base64; an image by its size, "640x480";
/// arrays and dictionaries by their values, with ", " between them and "key: " before each of a dictionary's. Whatever the locale.
[[nodiscard]] QString textOfValue(const Boxed& value); // selector: none

} // namespace quillow
