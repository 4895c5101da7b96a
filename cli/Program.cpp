#include "cli/Program.h"

#include "cli/Arguments.h"
#include "cli/Batch.h"
#include "cli/Conversion.h"
#include "cli/FileDescriptor.h"
#include "cli/HelpText.h"
#include "cli/Interrupt.h"
#include "cli/Messages.h"
#include "cli/OutputFolder.h"
#include "cli/Plan.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <string>
#include <thread>

namespace quillow::cli {

namespace {

void complain(std::string_view line) {
    // There is nowhere to say that nothing can be said.
    static_cast<void>(writeAll(STDERR_FILENO, line));
}

int failOnStandardOutput(const std::string& why) {
    complain(resultLine("standard output", Reason::unwritable, why));
    return kDestinationUnwritable;
}

int print(std::string_view text) {
    return writeAll(STDOUT_FILENO, text) ? kAllConverted : failOnStandardOutput(lastError());
}

bool isOpen(int number) {
    return ::fcntl(number, F_GETFD) >= 0;
}

/// A closed standard stream's number would go to the next file opened, and messages or texts into that file.
void occupyStandardStreams() {
    for (const int number : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        // Opened the wrong way round, so that use of it still fails as that of a closed stream does.
        if (!isOpen(number)) static_cast<void>(::open("/dev/null", number == STDIN_FILENO ? O_WRONLY : O_RDONLY));
}

std::optional<FileIdentity> identityOf(const std::string& path) {
    struct stat status = {};
    if (::stat(path.c_str(), &status) != 0) return std::nullopt;
    return FileIdentity{status.st_dev, status.st_ino};
}

/// Sums up a run and says what there is to say about each document, in order.
class Report {
public:
    explicit Report(const Arguments& arguments)
        : arguments_(arguments) {}

    void add(const PlannedDocument& document, const Result& result) {
        const bool isFailure = failed(result);
        if (isFailure) ++failures_;
        if (result.acceptance == Acceptance::notAccepted) ++notAccepted_;
        if (result.reason == Reason::unwritable) isUnwritable_ = true;
        ++documents_;
        if (isTold(result, isFailure)) complain(resultLine(document.path, result.reason, detailOf(result)));
    }

    [[nodiscard]] int exitCode() const {
        if (isUnwritable_) return kDestinationUnwritable;
        if (documents_ > 0 && notAccepted_ == documents_) return kNothingAccepted;
        return failures_ > 0 ? kSomeFailed : kAllConverted;
    }

private:
    [[nodiscard]] bool failed(const Result& result) const {
        if (result.reason == Reason::partial) return arguments_.partial == PartialCountsAs::failed;
        return !hasText(result.reason);
    }

    [[nodiscard]] bool isTold(const Result& result, bool isFailure) const {
        if (arguments_.verbosity == Verbosity::quiet) return false;
        return isFailure || result.reason == Reason::partial || arguments_.verbosity == Verbosity::verbose;
    }

    static std::string detailOf(const Result& result) {
        if (!result.detail.empty() || !hasText(result.reason)) return result.detail;
        std::string detail = std::to_string(result.textBytes) + " bytes";
        if (result.pages > 0) detail += ", " + std::to_string(result.pages) + (result.pages == 1 ? " page" : " pages");
        return detail;
    }

    const Arguments& arguments_;
    std::size_t documents_ = 0;
    std::size_t failures_ = 0;
    std::size_t notAccepted_ = 0;
    bool isUnwritable_ = false;
};

unsigned jobsOf(const Arguments& arguments) {
    if (arguments.jobs > 0) return arguments.jobs;
    return std::clamp(std::thread::hardware_concurrency(), 1U, kMaximumJobs);
}

int convertToFolder(const Arguments& arguments, const Plan& plan) {
    std::variant<OutputFolder, OutputFailure> opened = OutputFolder::open(*arguments.outputFolder);
    if (const auto* const failure = std::get_if<OutputFailure>(&opened)) {
        complain(resultLine(*arguments.outputFolder, Reason::unwritable, failure->detail));
        return kDestinationUnwritable;
    }
    const OutputFolder& folder = std::get<OutputFolder>(opened);
    Report report(arguments);
    runBatch(
        plan.documents.size(), jobsOf(arguments),
        [&](std::size_t i) { return convert(plan.documents[i], arguments.options, &folder); },
        [&](std::size_t i, const Result& result) {
            report.add(plan.documents[i], result);
            return Next::goOn;
        });
    if (const auto failure = folder.sync()) {
        complain(resultLine(*arguments.outputFolder, Reason::unwritable, failure->detail));
        return kDestinationUnwritable;
    }
    return report.exitCode();
}

int convertToStandardOutput(const Arguments& arguments, const Plan& plan) {
    Report report(arguments);
    std::optional<std::string> broken;
    runBatch(
        plan.documents.size(), jobsOf(arguments),
        [&](std::size_t i) { return convert(plan.documents[i], arguments.options, nullptr); },
        [&](std::size_t i, const Result& result) {
            if (result.text && !writeAll(STDOUT_FILENO, *result.text)) {
                broken = lastError();
                return Next::stop;
            }
            report.add(plan.documents[i], result);
            return Next::goOn;
        });
    // Some file systems tell only now that they did not take it.
    if (!broken && ::close(STDOUT_FILENO) != 0 && errno != EINTR) broken = lastError();
    return broken ? failOnStandardOutput(*broken) : report.exitCode();
}

int convertAll(const Arguments& arguments) {
    const Plan plan = makePlan(arguments, identityOf);
    for (const Clash& clash : plan.clashes)
        complain(resultLine(clash.path, Reason::unwritable, clash.detail));
    if (!plan.clashes.empty()) return kSomeFailed;
    return arguments.outputFolder ? convertToFolder(arguments, plan) : convertToStandardOutput(arguments, plan);
}

} // namespace

int runProgram(std::span<const std::string_view> words) {
    occupyStandardStreams();
    handleInterrupts();
    const auto parsed = parseArguments(words);
    if (const auto* const error = std::get_if<UsageError>(&parsed)) {
        complain(programLine(error->message) + programLine("--help tells how it is used"));
        return kUsage;
    }
    if (const auto* const request = std::get_if<Request>(&parsed))
        return print(*request == Request::help ? kHelpText : kVersionText);
    return convertAll(std::get<Arguments>(parsed));
}

} // namespace quillow::cli
