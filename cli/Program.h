// Runs quillow-convert: takes its arguments and returns its exit code.
#pragma once

#include <span>
#include <string_view>

namespace quillow::cli {

inline constexpr int kAllConverted = 0;
inline constexpr int kSomeFailed = 1;
inline constexpr int kUsage = 2;
inline constexpr int kNothingAccepted = 3;
inline constexpr int kDestinationUnwritable = 4;
inline constexpr int kIncomplete = 5;
inline constexpr int kInterrupted = 130;
inline constexpr int kReaderGone = 141; ///< the exit code that a shell shows for a filter ended by SIGPIPE

/// `arguments` are those after the program's name. Returns the exit code.
[[nodiscard]] int runProgram(std::span<const std::string_view> arguments);

} // namespace quillow::cli
