// ASCII classes and comparisons, independent of any locale (Infra Standard, "code points").
#pragma once

#include "text/ByteScan.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace quillow::html {

[[nodiscard]] constexpr bool isWhiteSpace(char c) {
    return text::isBlank(c);
}
[[nodiscard]] constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}
[[nodiscard]] constexpr bool isAlpha(char c) {
    return static_cast<unsigned char>((c | 0x20) - 'a') < 26;
}
[[nodiscard]] constexpr bool isHexDigit(char c) {
    return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}
[[nodiscard]] constexpr unsigned hexValue(char c) {
    return static_cast<unsigned>(isDigit(c) ? c - '0' : (c | 0x20) - 'a' + 10);
}
[[nodiscard]] constexpr char toLower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c;
}
[[nodiscard]] constexpr bool equalsIgnoringCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) { return toLower(x) == toLower(y); });
}
[[nodiscard]] constexpr std::string_view trimWhiteSpace(std::string_view text) {
    while (!text.empty() && isWhiteSpace(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isWhiteSpace(text.back()))
        text.remove_suffix(1);
    return text;
}

/// HTML, 2.3.4.1 "Rules for parsing integers"; nothing where the number is too large for 32 bits, too.
[[nodiscard]] inline std::optional<std::int32_t> parseInteger(std::string_view text) {
    text = trimWhiteSpace(text);
    if (text.starts_with("+")) text.remove_prefix(1);
    std::int32_t number = 0;
    if (std::from_chars(text.data(), text.data() + text.size(), number).ec != std::errc()) return std::nullopt;
    return number;
}

/// The position of an ASCII lower-case needle in a text of any case, or npos.
[[nodiscard]] constexpr std::size_t findIgnoringCase(std::string_view text, std::string_view needle,
                                                     std::size_t from = 0) {
    const auto equal = [](char x, char y) { return toLower(x) == y; };
    const auto start = text.begin() + static_cast<std::ptrdiff_t>(std::min(from, text.size()));
    const auto found = std::search(start, text.end(), needle.begin(), needle.end(), equal);
    return found == text.end() && !needle.empty() ? std::string_view::npos
                                                  : static_cast<std::size_t>(found - text.begin());
}

} // namespace quillow::html
