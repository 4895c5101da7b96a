// Parses the command line of quillow-convert.
#pragma once

#include "engines/Extract.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace quillow::cli {

enum class Verbosity { quiet, normal, verbose };
enum class PartialCountsAs { converted, failed };

/// What to do if the text's file exists already.
enum class IfExists {
    overwrite, ///< the text replaces it
    skip,      ///< the document is not converted
    rename,    ///< the text gets another name
    error,     ///< the document fails
    newer,     ///< the text replaces it when the document was changed after it
};
/// How to treat an input folder that is not an RTFD bundle.
enum class Folders { refused, walked };
/// When to ask for a password on the terminal.
enum class AskForPassword { never, whenNeeded };
/// What follows each name in a list of inputs.
enum class NameEnd { newline, nul };

/// The argument that means standard input or, after -o, standard output.
inline constexpr std::string_view kStandardStream = "-";
/// The largest number of documents that -j can read at a time, and of threads for one of them.
inline constexpr unsigned kMaximumJobs = 256;

struct Arguments {
    std::vector<std::string> inputs;      ///< in the order given; empty only if there is an input list
    std::optional<std::string> inputList; ///< a file with the names of more inputs, or kStandardStream
    NameEnd nameEnd = NameEnd::newline;   ///< in that list
    Folders folders = Folders::refused;
    std::optional<std::string> output;     ///< as given: a folder, a file or kStandardStream
    std::optional<std::string> mirrorRoot; ///< the texts keep the folders of their documents below this root
    IfExists ifExists = IfExists::overwrite;
    std::optional<DocumentKind> type; ///< the kind of every input, whatever its name
    Options options;
    std::optional<std::size_t> explainedPage; ///< of the one input: its picture takes the place of the text
    std::optional<std::string> passwordFile;  ///< or kStandardStream; its first line is the password
    AskForPassword askForPassword = AskForPassword::never;
    unsigned jobs = 0;    ///< 0: as many as there are processors
    unsigned threads = 0; ///< for one document; 0: as many as there are processors if it is the only one, else 1
    PartialCountsAs partial = PartialCountsAs::converted;
    Verbosity verbosity = Verbosity::normal;
};

enum class Request { help, version };

struct UsageError {
    std::string message;
};

/// Parses the arguments after the program's name. Parsing ends at the first --help, --version or error.
[[nodiscard]] std::variant<Arguments, Request, UsageError> parseArguments(std::span<const std::string_view> arguments);

} // namespace quillow::cli
