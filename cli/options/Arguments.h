// Parses the command line of quillow-convert.
#pragma once

#include "cli/Shard.h"
#include "engines/Extract.h"
#include "worker/Limits.h"

#include <cstddef>
#include <cstdint>
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

/// Which documents that have a result from an earlier run are converted again.
enum class Retry { nothing, failed };

/// Where documents are read.
enum class ReadIn {
    workers,     ///< in processes that are locked in and limited
    thisProcess, ///< without isolation and limits
};
/// Where documents come from.
enum class DocumentsFrom {
    files,
    requests, ///< messages on standard input; the answers go to standard output
};

/// The argument that means standard input or, after -o, standard output.
inline constexpr std::string_view kStandardStream = "-";
/// The largest number of documents that -j can read at a time, and of threads for one of them.
inline constexpr unsigned kMaximumJobs = 256;
/// The largest number of parts that --shard makes of a run.
inline constexpr std::uint32_t kMaximumShards = 1'000'000;
/// The longest time for a document, in seconds: a day.
inline constexpr unsigned kMaximumTimeout = 86'400;
/// The least and the most memory for a document, in MiB. A worker has 7 MiB before it has a document.
inline constexpr std::size_t kMinimumMemory = 64;
inline constexpr std::size_t kMaximumMemory = std::size_t{1} << 20;

struct Arguments {
    std::vector<std::string> inputs;      ///< in the order given; empty only if there is an input list
    std::optional<std::string> inputList; ///< a file with the names of more inputs, or kStandardStream
    NameEnd nameEnd = NameEnd::newline;   ///< in that list
    Folders folders = Folders::refused;
    std::optional<std::string> output;     ///< as given: a folder, a file or kStandardStream
    std::optional<std::string> mirrorRoot; ///< the texts keep the folders of their documents below this root
    IfExists ifExists = IfExists::overwrite;
    std::optional<std::string> results;        ///< the file of results, or kStandardStream
    std::optional<std::string> resumedResults; ///< if given, the same file: documents that have a result are left out
    std::optional<std::string> mergedResults;  ///< or kStandardStream: the inputs are files of results, not documents
    Retry retry = Retry::nothing;
    Shard shard;                      ///< only these documents are converted
    std::optional<DocumentKind> type; ///< the kind of every input, whatever its name
    Options options;
    std::optional<std::size_t> explainedPage; ///< of the one input: its picture takes the place of the text
    std::optional<std::string> passwordFile;  ///< or kStandardStream; its first line is the password
    AskForPassword askForPassword = AskForPassword::never;
    unsigned jobs = 0; ///< 0: as many as there are processors
    /// For one document that is read in this process; workers have one. 0: as many as there are processors if the
    /// document is the only one, else 1.
    unsigned threads = 0;
    ReadIn readIn = ReadIn::workers;
    worker::Limits limits; ///< of a document in a worker
    DocumentsFrom documentsFrom = DocumentsFrom::files;
    PartialCountsAs partial = PartialCountsAs::converted;
    Verbosity verbosity = Verbosity::normal;

    [[nodiscard]] bool isResumed() const { return resumedResults.has_value(); }
};

enum class Request { help, version, versionAndIsolation };

struct UsageError {
    std::string message;
};

/// Parses the arguments after the program's name. Parsing ends at the first --help, --version or error.
[[nodiscard]] std::variant<Arguments, Request, UsageError> parseArguments(std::span<const std::string_view> arguments);

/// Parses the options of one document: those that say what it is and how to write its text. They are added to the
/// arguments. Returns an error message; empty on success.
[[nodiscard]] std::string addDocumentOptions(Arguments& arguments, std::span<const std::string_view> words);

} // namespace quillow::cli
