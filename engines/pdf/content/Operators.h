// Operators of content streams (ISO 32000-2, annex A) as numbers that a switch can take.
#pragma once

#include <cstdint>
#include <string_view>

namespace quillow::pdf {

/// The last four bytes of an operator, the last one lowest. No operator is longer than three.
using Operator = std::uint32_t;

/// No operator: the content has ended.
inline constexpr Operator kNoOperator = 0;

[[nodiscard]] constexpr Operator operatorOf(std::string_view name) {
    Operator word = 0;
    for (const char byte : name)
        word = word << 8 | static_cast<std::uint8_t>(byte);
    return word;
}

} // namespace quillow::pdf
