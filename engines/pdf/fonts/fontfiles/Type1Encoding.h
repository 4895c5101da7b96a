// The encoding of a Type 1 font (Adobe Type 1 Font Format 1.1, 2.3).
#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace quillow::pdf {

/// Names of glyphs by code, empty for ".notdef".
using Type1Encoding = std::array<std::string_view, 256>;

/// The last entry /Encoding of a text that has any name: the name of the standard encoding, `dup CODE /NAME put` any
/// number of times, or an array of names.
[[nodiscard]] std::optional<Type1Encoding> readType1Encoding(std::string_view text);

} // namespace quillow::pdf
