#include "cli/Run.h"

#include "cli/Batch.h"
#include "cli/Conversion.h"
#include "cli/Interrupt.h"
#include "cli/Messages.h"
#include "cli/OutputFolder.h"
#include "cli/Paths.h"
#include "cli/Program.h"
#include "cli/Progress.h"
#include "cli/Report.h"
#include "cli/TextGroup.h"
#include "cli/Threads.h"
#include "cli/options/HelpText.h"
#include "posix/FileDescriptor.h"

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <set>
#include <string>

namespace quillow::cli {

namespace {

ResultRecord recordOf(const PlannedDocument& document, const Result& result, const Destination& destination) {
    ResultRecord record;
    record.path = document.path;
    if (result.textName) record.output = joined(destination.folder, *result.textName);
    record.status = result.reason;
    record.detail = result.detail;
    record.loss = result.loss;
    record.pages = result.pages;
    record.characters = result.characters;
    record.textBytes = result.textBytes;
    record.documentHash = result.documentHash;
    record.textHash = result.textHash;
    record.milliseconds = result.milliseconds;
    record.engine = kVersion;
    return record;
}

/// The subfolders that the texts of the plan go to.
std::set<std::string, std::less<>> foldersOf(const Plan& plan) {
    std::set<std::string, std::less<>> folders;
    for (const PlannedDocument& document : plan.documents) {
        const std::string_view folder = document.textName ? folderPart(*document.textName) : std::string_view();
        if (!folder.empty() && !folders.contains(folder)) folders.emplace(folder);
    }
    return folders;
}

bool isOtherFile(const std::string& path) {
    struct stat status = {};
    return ::stat(path.c_str(), &status) == 0 && !S_ISDIR(status.st_mode);
}

int failOnFolder(const std::string& path, const OutputFailure& failure) {
    complain(resultLine(path, Reason::unwritable,
                        isOtherFile(path) ? "is neither a folder nor a file that ends in .txt" : failure.detail));
    return kDestinationUnwritable;
}

Progress::Shown progressOf(const Run& run) {
    const bool isQuiet = run.arguments.verbosity == Verbosity::quiet;
    const bool mayAsk = run.arguments.askForPassword == AskForPassword::whenNeeded; // in the same line
    // A bar between the lines of a text would be in the way.
    const bool usesOutput =
        run.destination.kind == DestinationKind::standardOutput || run.arguments.results == kStandardStream;
    return isQuiet || mayAsk || (usesOutput && ::isatty(STDOUT_FILENO) == 1) ? Progress::Shown::never
                                                                             : Progress::Shown::onTerminal;
}

/// What the run says of its documents, as they end.
class Account {
public:
    explicit Account(const Run& run)
        : run_(run)
        , report_(run.arguments)
        , progress_(run.plan.documents.size(), progressOf(run)) {
        for (const FinishedDocument& document : run.plan.finished)
            report_.add(document);
    }

    Next add(const PlannedDocument& document, const Result& result) {
        const std::string line = report_.add(document, result);
        if (!line.empty()) {
            progress_.clear();
            complain(line);
        }
        if (run_.results != nullptr) {
            unwritten_ = run_.results->append(recordOf(document, result, run_.destination));
            if (unwritten_ && errno == EPIPE && run_.arguments.results == kStandardStream) endWithoutReader();
        }
        progress_.advance(isFailure(result.reason, run_.arguments.partial));
        // Without results nobody knows what is done, and a later run could not go on from there.
        return unwritten_ ? Next::stop : Next::goOn;
    }

    [[nodiscard]] int finish() {
        progress_.clear();
        if (run_.results != nullptr && !unwritten_) unwritten_ = run_.results->close();
        if (!unwritten_) return report_.exitCode();
        complain(resultLine(*run_.arguments.results, Reason::unwritable, unwritten_->detail));
        return kDestinationUnwritable;
    }

private:
    const Run& run_;
    Report report_;
    Progress progress_;
    std::optional<ResultsFailure> unwritten_;
};

/// Each text that waits for its name is an open file.
void raiseLimitOfFiles() {
    rlimit limits{};
    if (::getrlimit(RLIMIT_NOFILE, &limits) != 0) return;
    limits.rlim_cur = limits.rlim_max;
    static_cast<void>(::setrlimit(RLIMIT_NOFILE, &limits));
}

int convertToFolder(const Run& run, std::optional<Sha256> sha256) {
    const Destination& destination = run.destination;
    const auto missing =
        destination.kind == DestinationKind::folder ? OutputFolder::Missing::made : OutputFolder::Missing::failure;
    const auto opened = OutputFolder::open(destination.folder, missing);
    if (const auto* const failure = std::get_if<OutputFailure>(&opened))
        return failOnFolder(destination.folder, *failure);
    const OutputFolder& folder = std::get<OutputFolder>(opened);
    if (run.arguments.isResumed()) folder.removeLeftOver(foldersOf(run.plan));
    Converter converter(run.arguments, run.reader, &folder, sha256);
    Account account(run);
    const auto& documents = run.plan.documents;
    TextGroup group([&folder] { return folder.syncTogether(); },
                    [&](std::size_t i, Result result, const std::optional<OutputFailure>& failure) {
                        return account.add(documents[i], converter.named(documents[i], std::move(result), failure));
                    });
    raiseLimitOfFiles();
    runBatch(
        documents.size(), jobsOf(run.arguments),
        [&] { return std::make_unique<ConversionJob>(converter, run.plan, run.reader); },
        [&](std::size_t i, Result result, Following following) { return group.add(i, std::move(result), following); });
    const int exitCode = account.finish();
    if (const auto failure = folder.sync()) return failOnFolder(destination.folder, *failure);
    return exitCode;
}

int convertToStandardOutput(const Run& run, std::optional<Sha256> sha256) {
    Converter converter(run.arguments, run.reader, nullptr, sha256);
    Account account(run);
    std::optional<std::string> broken;
    const auto& documents = run.plan.documents;
    runBatch(
        documents.size(), jobsOf(run.arguments),
        [&] { return std::make_unique<ConversionJob>(converter, run.plan, run.reader); },
        [&](std::size_t i, const Result& result, Following) {
            if (result.text && !writeAll(STDOUT_FILENO, *result.text)) {
                if (errno == EPIPE) endWithoutReader();
                broken = lastError();
                return Next::stop;
            }
            return account.add(documents[i], result);
        });
    // Some file systems report write errors only on close.
    if (!broken && ::close(STDOUT_FILENO) != 0 && errno != EINTR) broken = lastError();
    const int exitCode = account.finish();
    return broken ? failOnStandardOutput(*broken) : exitCode;
}

} // namespace

int failOnStandardOutput(const std::string& why) {
    complain(resultLine("standard output", Reason::unwritable, why));
    return kDestinationUnwritable;
}

int convertAll(const Run& run) {
    std::optional<Sha256> sha256;
    if (run.results != nullptr && !(sha256 = Sha256::load())) {
        complain(programLine("the library libnettle, which computes the hashes of the results, is not installed"));
        return kSomeFailed;
    }
    return run.destination.kind == DestinationKind::standardOutput ? convertToStandardOutput(run, sha256)
                                                                   : convertToFolder(run, sha256);
}

} // namespace quillow::cli
