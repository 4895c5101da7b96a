// The width at the beginning of a Type 1 charstring (Adobe Type 1 Font Format 1.1, 6.4: hsbw, sbw).
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace quillow::pdf {

/// `randomBytes`: the font's lenIV; negative if its charstrings are not encrypted.
[[nodiscard]] std::optional<double> widthOfType1Charstring(std::string_view charstring, int randomBytes);

} // namespace quillow::pdf
