// What --help and --version print.
#pragma once

#include <string>
#include <string_view>

namespace quillow::cli {

/// Lines of at most 80 columns, made from the table of options.
[[nodiscard]] std::string helpText();

extern const std::string_view kVersion;
/// The line that --version prints.
extern const std::string_view kVersionText;

/// The paragraphs that the man page shares with --help.
extern const std::string_view kPurpose;
extern const std::string_view kDescription;
extern const std::string_view kMessageForm; ///< the form of a message, on a line of its own
extern const std::string_view kReasons;
extern const std::string_view kSizes;

} // namespace quillow::cli
