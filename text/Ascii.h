// ASCII classes and comparisons, independent of any locale (Infra Standard, "code points").
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace quillow::text {

/// The white space of HTML and CSS: TAB, LF, FF, CR and SP.
[[nodiscard]] constexpr bool isBlank(char c) {
    constexpr std::uint64_t kBlanks = 1ULL << ' ' | 1ULL << '\t' | 1ULL << '\n' | 1ULL << '\f' | 1ULL << '\r';
    const auto byte = static_cast<std::uint8_t>(c);
    return byte <= ' ' && (kBlanks >> byte & 1) != 0;
}

[[nodiscard]] constexpr bool isDigit(char c) {
    return static_cast<std::uint8_t>(c - '0') < 10;
}

[[nodiscard]] constexpr bool isLetter(char c) {
    return static_cast<std::uint8_t>((c | 0x20) - 'a') < 26;
}

[[nodiscard]] constexpr bool isLineEnd(char c) {
    return c == '\r' || c == '\n';
}

inline constexpr std::array<std::int8_t, 256> kHexValues = [] {
    std::array<std::int8_t, 256> values{};
    values.fill(-1);
    for (std::uint8_t digit = 0; digit < 10; ++digit)
        values['0' + digit] = static_cast<std::int8_t>(digit);
    for (std::uint8_t digit = 10; digit < 16; ++digit) {
        values['a' + digit - 10] = static_cast<std::int8_t>(digit);
        values['A' + digit - 10] = static_cast<std::int8_t>(digit);
    }
    return values;
}();

/// The value of a hexadecimal digit, or -1.
[[nodiscard]] constexpr int hexValue(char c) {
    return kHexValues[static_cast<std::uint8_t>(c)];
}

[[nodiscard]] constexpr char toLower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c;
}

[[nodiscard]] constexpr bool equalsIgnoringCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) { return toLower(x) == toLower(y); });
}

[[nodiscard]] constexpr bool startsWithIgnoringCase(std::string_view text, std::string_view prefix) {
    return equalsIgnoringCase(text.substr(0, prefix.size()), prefix);
}

/// The position of `needle` at or after `from`, or npos. `needle` is in lower case.
[[nodiscard]] constexpr std::size_t findIgnoringCase(std::string_view text, std::string_view needle,
                                                     std::size_t from = 0) {
    const auto equal = [](char x, char y) { return toLower(x) == y; };
    const auto start = text.begin() + static_cast<std::ptrdiff_t>(std::min(from, text.size()));
    const auto found = std::search(start, text.end(), needle.begin(), needle.end(), equal);
    return found == text.end() && !needle.empty() ? std::string_view::npos
                                                  : static_cast<std::size_t>(found - text.begin());
}

/// The text without leading and trailing blanks.
[[nodiscard]] constexpr std::string_view trimBlanks(std::string_view text) {
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

} // namespace quillow::text
