// Parses integers in attribute values.
#pragma once

#include "text/Ascii.h"

#include <charconv>
#include <cstdint>
#include <optional>
#include <string_view>

namespace quillow::html {

/// HTML, 2.3.4.1 "Rules for parsing integers". std::nullopt also for a number that does not fit into 32 bits.
[[nodiscard]] inline std::optional<std::int32_t> parseInteger(std::string_view text) {
    text = text::trimBlanks(text);
    if (text.starts_with("+")) text.remove_prefix(1);
    std::int32_t number = 0;
    if (std::from_chars(text.data(), text.data() + text.size(), number).ec != std::errc()) return std::nullopt;
    return number;
}

} // namespace quillow::html
