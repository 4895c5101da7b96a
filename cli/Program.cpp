#include "cli/Program.h"

#include "cli/Arguments.h"
#include "cli/Batch.h"
#include "cli/Conversion.h"
#include "cli/Destination.h"
#include "cli/DocumentReader.h"
#include "cli/HelpText.h"
#include "cli/InputList.h"
#include "cli/Interrupt.h"
#include "cli/Messages.h"
#include "cli/OutputFolder.h"
#include "cli/PasswordPrompt.h"
#include "cli/Plan.h"
#include "cli/Report.h"
#include "cli/RequestServer.h"
#include "cli/Threads.h"
#include "posix/Arenas.h"
#include "posix/FileDescriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <new>
#include <string>

namespace quillow::cli {

namespace {

void complain(std::string_view line) {
    // If standard error fails, there is no place left to report it.
    static_cast<void>(writeAll(STDERR_FILENO, line));
}

int failOnStandardOutput(const std::string& why) {
    complain(resultLine("standard output", Reason::unwritable, why));
    return kDestinationUnwritable;
}

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

void tell(Report& report, const PlannedDocument& document, const Result& result) {
    const std::string line = report.add(document, result);
    if (!line.empty()) complain(line);
}

int failOnFolder(const std::string& path, const OutputFailure& failure) {
    const bool isOtherFile = identityOf(path) && !isFolder(path);
    complain(resultLine(path, Reason::unwritable,
                        isOtherFile ? "is neither a folder nor a file that ends in .txt" : failure.detail));
    return kDestinationUnwritable;
}

int convertToFolder(const Arguments& arguments, const Destination& destination, const Plan& plan,
                    DocumentReader& reader) {
    const auto missing =
        destination.kind == DestinationKind::folder ? OutputFolder::Missing::made : OutputFolder::Missing::failure;
    const auto opened = OutputFolder::open(destination.folder, missing);
    if (const auto* const failure = std::get_if<OutputFailure>(&opened))
        return failOnFolder(destination.folder, *failure);
    const OutputFolder& folder = std::get<OutputFolder>(opened);
    PasswordPrompt prompt;
    Report report(arguments);
    runBatch(
        plan.documents.size(), jobsOf(arguments),
        [&](std::size_t i) { return convert(plan.documents[i], arguments, reader, prompt, &folder); },
        [&](std::size_t i, const Result& result) {
            tell(report, plan.documents[i], result);
            return Next::goOn;
        });
    if (const auto failure = folder.sync()) return failOnFolder(destination.folder, *failure);
    return report.exitCode();
}

int convertToStandardOutput(const Arguments& arguments, const Plan& plan, DocumentReader& reader) {
    PasswordPrompt prompt;
    Report report(arguments);
    std::optional<std::string> broken;
    runBatch(
        plan.documents.size(), jobsOf(arguments),
        [&](std::size_t i) { return convert(plan.documents[i], arguments, reader, prompt, nullptr); },
        [&](std::size_t i, const Result& result) {
            if (result.text && !writeAll(STDOUT_FILENO, *result.text)) {
                if (errno == EPIPE) endWithoutReader();
                broken = lastError();
                return Next::stop;
            }
            tell(report, plan.documents[i], result);
            return Next::goOn;
        });
    // Some file systems report write errors only on close.
    if (!broken && ::close(STDOUT_FILENO) != 0 && errno != EINTR) broken = lastError();
    return broken ? failOnStandardOutput(*broken) : report.exitCode();
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
    if (request == Request::help) return print(kHelpText);
    if (request == Request::version) return print(kVersionText);
    return print(std::string(kVersionText) + isolationLine() + "\n");
}

int serveAll(Arguments arguments) {
    arguments.options.threads = std::max(arguments.threads, 1U);
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

int convertAll(Arguments arguments) {
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

    Plan plan = makePlan(arguments, destination, std::move(inputs), {identityOf, currentFolder()});
    if (arguments.verbosity != Verbosity::quiet)
        for (const std::string& notice : plan.notices)
            complain(programLine(notice));
    shareThreads(arguments, plan);
    // In this process one document has all threads, or each of several has one, unless the user wants more.
    shareMemoryWhereLimited(jobsOf(arguments) * std::max(arguments.threads, 1U));
    return destination.kind == DestinationKind::standardOutput ? convertToStandardOutput(arguments, plan, reader)
                                                               : convertToFolder(arguments, destination, plan, reader);
}

} // namespace

int runProgram(std::span<const std::string_view> words) {
    occupyStandardStreams();
    handleInterrupts();
    try {
        auto parsed = parseArguments(words);
        if (const auto* const error = std::get_if<UsageError>(&parsed)) return failOnUsage(error->message);
        if (const auto* const request = std::get_if<Request>(&parsed)) return answer(*request);
        return convertAll(std::get<Arguments>(std::move(parsed)));
    } catch (const std::bad_alloc&) {
        complain("quillow-convert: there is no memory for the list of documents\n");
        return kSomeFailed;
    }
}

} // namespace quillow::cli
