// The man page and the completions of shells, made from the table of options.
#pragma once

#include <string>

namespace quillow::cli {

/// The source of quillow-convert(1), in the macros of man(7).
[[nodiscard]] std::string manPage();

[[nodiscard]] std::string bashCompletion();
[[nodiscard]] std::string zshCompletion();
[[nodiscard]] std::string fishCompletion();

} // namespace quillow::cli
