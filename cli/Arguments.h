// The command line of quillow-convert, taken apart.
#pragma once

#include "engines/Extract.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace quillow::cli {

enum class Verbosity { quiet, normal, verbose };
enum class PartialCountsAs { converted, failed };

/// The argument that stands for standard input.
inline constexpr std::string_view kStandardInput = "-";
/// More documents at a time than this help nobody.
inline constexpr unsigned kMaximumJobs = 256;

struct Arguments {
    std::vector<std::string> inputs; ///< in the order given; never empty
    std::optional<std::string> outputFolder;
    std::optional<DocumentKind> type; ///< what every input is taken for, whatever its name
    Options options;
    unsigned jobs = 0; ///< 0: as many as there are processors
    PartialCountsAs partial = PartialCountsAs::converted;
    Verbosity verbosity = Verbosity::normal;
};

enum class Request { help, version };

struct UsageError {
    std::string message;
};

/// Takes the arguments after the program's name. The first thing that settles the matter does: help, version or a mistake.
[[nodiscard]] std::variant<Arguments, Request, UsageError> parseArguments(std::span<const std::string_view> arguments);

} // namespace quillow::cli
