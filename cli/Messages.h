// The lines that the program writes to standard error.
#pragma once

#include "cli/Result.h"

#include <string>
#include <string_view>

namespace quillow::cli {

/// Escapes the control characters of a path, so that it fits in one line. Other bytes stay, UTF-8 or not.
[[nodiscard]] std::string printable(std::string_view path);

[[nodiscard]] std::string inQuotes(std::string_view text);

/// "quillow-convert: PATH: REASON (DETAIL)" and a line end; without the brackets if there is no detail.
[[nodiscard]] std::string resultLine(std::string_view path, Reason reason, std::string_view detail);

/// "quillow-convert: MESSAGE" and a line end.
[[nodiscard]] std::string programLine(std::string_view message);

/// Writes the line to standard error.
void complain(std::string_view line);

} // namespace quillow::cli
