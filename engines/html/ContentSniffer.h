// Recognises content that is plainly not HTML, whatever the file's name says.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quillow::html {

/// A short phrase for the user, such as "the content is a PDF", if the content is neither HTML nor text;
/// std::nullopt otherwise.
[[nodiscard]] std::optional<std::string> foreignContent(std::string_view bytes);

} // namespace quillow::html
