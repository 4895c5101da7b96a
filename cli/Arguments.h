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

/// What an existing file of a text's name means for the text.
enum class IfExists {
    overwrite, ///< the text replaces it
    skip,      ///< the document is not converted
    rename,    ///< the text gets another name
    error,     ///< the document fails
    newer,     ///< the text replaces it when the document was changed after it
};
/// What becomes of a folder among the inputs that is no RTFD bundle.
enum class Folders { refused, walked };
/// What follows each name in a list of inputs.
enum class NameEnd { newline, nul };

/// The argument that stands for standard input, and for standard output after -o.
inline constexpr std::string_view kStandardStream = "-";
/// More documents at a time than this help nobody.
inline constexpr unsigned kMaximumJobs = 256;

struct Arguments {
    std::vector<std::string> inputs;      ///< in the order given; not empty unless there is a list
    std::optional<std::string> inputList; ///< a file of further inputs' names, or kStandardStream
    NameEnd nameEnd = NameEnd::newline;   ///< in that list
    Folders folders = Folders::refused;
    std::optional<std::string> output;     ///< as given: a folder, a file or kStandardStream
    std::optional<std::string> mirrorRoot; ///< texts keep their documents' folders below it
    IfExists ifExists = IfExists::overwrite;
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
