// Operators of content streams (ISO 32000-2, annex A) as numbers that a switch can take.
#pragma once

#include <array>
#include <cstddef>
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

/// The operators that text depends on.
inline constexpr std::array<std::string_view, 46> kOperators{
    "q",  "Q",  "cm", "gs", "BMC", "BDC", "EMC", "Do", "BI", "ID", "m",  "l",  "c",  "v",  "y",  "re",
    "h",  "s",  "S",  "f",  "F",   "f*",  "b",   "b*", "B",  "B*", "n",  "W",  "W*", "BT", "ET", "Tc",
    "Tw", "Tz", "TL", "Ts", "Tf",  "Tr",  "Td",  "TD", "T*", "Tm", "Tj", "TJ", "'",  "\""};

/// Numbers from 0 that differ for all of kOperators, so that a switch becomes a table. The factor was found by trying.
inline constexpr std::size_t kOperatorPlaces = 128;
[[nodiscard]] constexpr std::uint32_t placeOf(Operator word) {
    constexpr std::uint32_t kFactor = 0x98A52FA1;
    constexpr int kShift = 25; // leaves the 7 bits of a place
    return word * kFactor >> kShift;
}
[[nodiscard]] constexpr std::uint32_t placeOf(std::string_view name) {
    return placeOf(operatorOf(name));
}

inline constexpr std::array<Operator, kOperatorPlaces> kOperatorAtPlace = [] {
    std::array<Operator, kOperatorPlaces> operators{};
    for (const std::string_view name : kOperators)
        operators[placeOf(name)] = operatorOf(name);
    return operators;
}();

/// Whether the operator is one of kOperators. Others have places too.
[[nodiscard]] constexpr bool isKnown(Operator word) {
    return kOperatorAtPlace[placeOf(word)] == word;
}

static_assert([] {
    for (const std::string_view name : kOperators)
        if (!isKnown(operatorOf(name))) return false;
    return true;
}());

} // namespace quillow::pdf
