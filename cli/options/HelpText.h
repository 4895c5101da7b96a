// What --help and --version print.
#pragma once

#include <string_view>

namespace quillow::cli {

extern const std::string_view kHelpText;
extern const std::string_view kVersion; ///< the number
extern const std::string_view kVersionText;

} // namespace quillow::cli
