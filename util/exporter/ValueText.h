// The text of a value in a table cell.
#pragma once

#include "base/Boxed.h"

#include <QString>

namespace quillow {

/// Limits for the number and the nesting depth of values inside an array or a dictionary; "…" replaces the rest.
inline constexpr int kMaximumValuesInCell = 10'000;
inline constexpr int kMaximumDepthInCell = 16;

/// A string is unchanged. Nil and an object that is read by key are empty. A boolean is "1" or "0", an integer is
/// decimal, and a fraction has the fewest digits that read back as the same number, with a point. A date is in ISO 8601
/// to the second, with its offset from UTC. Bytes are in Base64. An image is its size, "640x480". Arrays and
/// dictionaries are their values, separated by ", ", with "key: " before each value of a dictionary. The result does
/// not depend on the locale.
[[nodiscard]] QString textOfValue(const Boxed& value); // selector: none

} // namespace quillow
