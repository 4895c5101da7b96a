#include "cli/Program.h"

#include "cli/Destination.h"
#include "cli/DocumentReader.h"
#include "cli/InputList.h"
#include "cli/Interrupt.h"
#include "cli/Messages.h"
#include "cli/Plan.h"
#include "cli/Report.h"
#include "cli/RequestServer.h"
#include "cli/Run.h"
#include "cli/Threads.h"
#include "cli/options/Arguments.h"
#include "cli/options/HelpText.h"
#include "cli/results/Merge.h"
#include "posix/Arenas.h"
#include "posix/FileDescriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <new>
#include <string>
#include <variant>
#include <vector>

namespace quillow::cli {

namespace {

int print(std::string_view text) {
    if (writeAll(STDOUT_FILENO, text)) return kAllConverted;
    if (errno == EPIPE) endWithoutReader();
    return failOnStandardOutput(lastError());
}

bool isOpen(int number) {
    return ::fcntl(number, F_GETFD) >= 0;
}

/// Opens /dev/null for each closed standard stream. Otherwise the next file opened would get its number, and messages
/// or texts would go into that file.
void occupyStandardStreams() {
    for (const int number : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        // The access mode is the opposite one, so that use of the stream still fails.
        if (!isOpen(number)) static_cast<void>(::open("/dev/null", number == STDIN_FILENO ? O_WRONLY : O_RDONLY));
}

std::optional<FileIdentity> identityOf(const std::string& path) {
    struct stat status = {};
    if (::stat(path.c_str(), &status) != 0) return std::nullopt;
    return FileIdentity{status.st_dev, status.st_ino};
}

bool isFolder(const std::string& path) {
    struct stat status = {};
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

int failOnUsage(const std::string& mistake) {
    complain(programLine(mistake + "; see --help"));
    return kUsage;
}

std::string currentFolder() {
    std::error_code none; // if the folder was deleted, relative paths do not work anyway
    return std::filesystem::current_path(none).string();
}

/// Reads the password file, if there is one. Returns why it cannot be read.
std::optional<InputFailure> addPassword(Arguments& arguments) {
    if (!arguments.passwordFile) return std::nullopt;
    InputOutcome read = readList(*arguments.passwordFile);
    if (auto* const failure = std::get_if<InputFailure>(&read)) return std::move(*failure);
    const auto bytes = std::get<InputDocument>(read).bytes.view();
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    arguments.options.password = text.substr(0, text.find_first_of("\r\n"));
    return std::nullopt;
}

int answer(Request request) {
    if (request == Request::help) return print(helpText());
    if (request == Request::version) return print(kVersionText);
    return print(std::string(kVersionText) + isolationLine() + "\n");
}

int serveAll(Arguments arguments) {
    arguments.threads = std::max(arguments.threads, 1U);
    arguments.options.threads = arguments.threads;
    DocumentReader reader(arguments);
    if (const auto obstacle = reader.obstacle()) {
        complain(programLine(*obstacle));
        return kSomeFailed;
    }
    const auto mistake = serveRequests(STDIN_FILENO, STDOUT_FILENO, arguments, reader);
    if (!mistake) return kAllConverted;
    complain(programLine(*mistake));
    return kSomeFailed;
}

/// The input whose file is that of the results; nullptr if there is none. A resumed run needs no such look: a document
/// does not begin as results do, and is left alone.
const std::string* inputAtResults(const Arguments& arguments, const std::vector<NamedInput>& inputs) {
    const bool isLooked = *arguments.results != kStandardStream && !arguments.isResumed();
    const auto identity = isLooked ? identityOf(*arguments.results) : std::nullopt;
    if (!identity) return nullptr;
    for (const NamedInput& input : inputs)
        if (identityOf(input.path) == identity) return &input.path;
    return nullptr;
}

/// The file for the results, and those that it has if the run goes on from them.
std::variant<ResultsFile::Resumed, ResultsFailure> openResults(const Arguments& arguments) {
    if (arguments.isResumed())
        return ResultsFile::resume(*arguments.results, arguments.retry,
                                   [&](Reason reason) { return isFailure(reason, arguments.partial); });
    auto created = ResultsFile::create(*arguments.results);
    if (auto* const failure = std::get_if<ResultsFailure>(&created)) return std::move(*failure);
    return ResultsFile::Resumed{std::move(std::get<ResultsFile>(created)), {}};
}

int mergeAll(const Arguments& arguments) {
    const auto merged = identityOf(*arguments.mergedResults);
    for (const std::string& file : arguments.inputs)
        if (merged && identityOf(file) == merged)
            return failOnUsage("the merged results would replace the results '" + file + "'");
    return mergeResults(arguments);
}

int convertDocuments(Arguments arguments) {
    if (arguments.mergedResults) return mergeAll(arguments);
    if (arguments.documentsFrom == DocumentsFrom::requests) return serveAll(std::move(arguments));
    const bool isPicture = arguments.explainedPage.has_value();
    if (isPicture && arguments.output && isFolder(*arguments.output))
        return failOnUsage("option '--explain' needs a file after '-o', not the folder '" + *arguments.output + "'");
    const Destination destination =
        isPicture ? destinationOfPicture(arguments.output) : destinationOf(arguments.output, isFolder);
    if (arguments.mirrorRoot && destination.kind == DestinationKind::file)
        return failOnUsage("option '--mirror' needs a folder after '-o', not the file '" + *arguments.output + "'");
    if (arguments.mirrorRoot && !isFolder(*arguments.mirrorRoot))
        return failOnUsage("the folder to mirror, '" + *arguments.mirrorRoot + "', is not a folder");

    if (const auto failure = addPassword(arguments)) {
        complain(resultLine(*arguments.passwordFile, failure->reason, failure->detail));
        return kSomeFailed;
    }
    DocumentReader reader(arguments); // its first worker starts while the run is planned
    if (const auto obstacle = reader.obstacle()) {
        complain(programLine(*obstacle));
        return kSomeFailed;
    }
    auto found = findInputs(arguments);
    if (const auto* const failure = std::get_if<InputFailure>(&found)) {
        complain(resultLine(*arguments.inputList, failure->reason, failure->detail));
        return kSomeFailed;
    }
    auto& inputs = std::get<std::vector<NamedInput>>(found);
    if (inputs.empty()) {
        if (arguments.verbosity != Verbosity::quiet) complain(programLine("no RTF, HTML or PDF document is found"));
        return kNothingAccepted;
    }
    if (isPicture && inputs.size() > 1) return failOnUsage("option '--explain' takes one document");
    if (destination.kind == DestinationKind::file && inputs.size() > 1)
        return failOnUsage("the texts of several documents cannot go into the one file '" + *arguments.output +
                           "': name a folder");

    std::optional<ResultsFile> results;
    EarlierResults earlier;
    if (arguments.results) {
        if (const std::string* const input = inputAtResults(arguments, inputs))
            return failOnUsage("the results would replace the document '" + *input + "'");
        auto opened = openResults(arguments);
        if (const auto* const failure = std::get_if<ResultsFailure>(&opened)) {
            complain(resultLine(*arguments.results, Reason::unwritable, failure->detail));
            return kDestinationUnwritable;
        }
        results = std::move(std::get<ResultsFile::Resumed>(opened).file);
        earlier = std::move(std::get<ResultsFile::Resumed>(opened).earlier);
    }

    const Surroundings surroundings = {identityOf, currentFolder(),
                                       arguments.results ? identityOf(*arguments.results) : std::nullopt};
    Plan plan = makePlan(arguments, destination, std::move(inputs), surroundings, std::move(earlier));
    if (arguments.verbosity != Verbosity::quiet)
        for (const std::string& notice : plan.notices)
            complain(programLine(notice));
    shareThreads(arguments, plan);
    // In this process one document has all threads, or each of several has one, unless the user wants more. One more
    // thread delivers.
    shareMemoryWhereLimited(jobsOf(arguments) * std::max(arguments.threads, 1U) + 1);
    return convertAll({arguments, destination, plan, reader, results ? &*results : nullptr});
}

} // namespace

int runProgram(std::span<const std::string_view> words) {
    occupyStandardStreams();
    handleInterrupts();
    try {
        auto parsed = parseArguments(words);
        if (const auto* const error = std::get_if<UsageError>(&parsed)) return failOnUsage(error->message);
        if (const auto* const request = std::get_if<Request>(&parsed)) return answer(*request);
        return convertDocuments(std::get<Arguments>(std::move(parsed)));
    } catch (const std::bad_alloc&) {
        complain("quillow-convert: there is no memory for the list of documents\n");
        return kSomeFailed;
    }
}

} // namespace quillow::cli
