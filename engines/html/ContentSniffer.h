// Tells content that is plainly no HTML, whatever the file's name says.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quillow::html {

/// What the content is when it is not HTML or text, "the content is a PDF"; nothing otherwise.
[[nodiscard]] std::optional<std::string> foreignContent(std::string_view bytes);

} // namespace quillow::html
