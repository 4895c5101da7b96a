#include "cli/results/Merge.h"

#include "cli/InputList.h"
#include "cli/Messages.h"
#include "cli/Program.h"
#include "cli/Report.h"
#include "cli/results/ResultsFile.h"

#include <array>
#include <cstdint>
#include <functional>
#include <limits>
#include <unordered_map>
#include <utility>

namespace quillow::cli {

namespace {

/// Lines may have more members than results, such as the text.
constexpr std::size_t kLongestLine = std::numeric_limits<std::size_t>::max();
/// A list with documents of another run would fill the screen.
constexpr std::size_t kMostLines = 20;

/// What is said about documents of one kind, and how many there are.
class Complaints {
public:
    Complaints(Verbosity verbosity, std::string_view rest)
        : isTold_(verbosity != Verbosity::quiet)
        , rest_(rest) {}

    void add(const std::string& path, std::string_view what) {
        if (isTold_ && count_ < kMostLines) complain(programLine(printable(path) + ": " + std::string(what)));
        ++count_;
    }
    /// Says how many there were that have no line.
    void finish() const {
        if (isTold_ && count_ > kMostLines)
            complain(programLine(std::to_string(count_ - kMostLines) + " more " + std::string(rest_)));
    }
    [[nodiscard]] std::size_t count() const { return count_; }

private:
    const bool isTold_;
    const std::string_view rest_;
    std::size_t count_ = 0;
};

/// The result of a document that goes into the merged file, and where it is.
struct Kept {
    std::uint64_t line = 0; ///< counted through all files; 0: there is none yet
    std::size_t text = 0;   ///< a hash of the text's hash
    Reason status = Reason::damaged;
};

class Merger {
public:
    explicit Merger(const Arguments& arguments)
        : arguments_(arguments) {}

    /// Returns the exit code if the list cannot be read.
    std::optional<int> readList() {
        if (!arguments_.inputList) return std::nullopt;
        Arguments list;
        list.inputList = arguments_.inputList;
        list.nameEnd = arguments_.nameEnd;
        auto found = findInputs(list);
        if (const auto* const failure = std::get_if<InputFailure>(&found)) {
            complain(resultLine(*arguments_.inputList, failure->reason, failure->detail));
            return kIncomplete;
        }
        for (NamedInput& input : std::get<std::vector<NamedInput>>(found))
            documents_.try_emplace(std::move(input.path));
        return std::nullopt;
    }

    /// Decides which result of each document is kept. Returns the exit code if a file cannot be read.
    std::optional<int> choose() {
        std::uint64_t line = 0;
        for (const std::string& file : arguments_.inputs) {
            const auto read =
                readResults(file, kLongestLine, [&](ResultRecord record, const ResultLine&) { take(record, ++line); });
            if (const auto* const failure = std::get_if<ResultsFailure>(&read)) {
                complain(resultLine(file, Reason::unreadable, failure->detail));
                return kIncomplete;
            }
            if (std::get<LastLine>(read) == LastLine::cut && arguments_.verbosity != Verbosity::quiet)
                complain(programLine(printable(file) + ": the last line is incomplete; the run was stopped"));
        }
        for (const auto& [path, kept] : documents_)
            if (kept.line == 0) missing_.add(path, "has no result");
        return std::nullopt;
    }

    /// Writes the kept results. Returns the exit code if that fails.
    std::optional<int> write() {
        auto created = ResultsFile::create(*arguments_.mergedResults);
        if (auto* const failure = std::get_if<ResultsFailure>(&created)) return failOnMerged(*failure);
        auto& merged = std::get<ResultsFile>(created);
        std::optional<ResultsFailure> unwritten;
        std::uint64_t line = 0;
        for (const std::string& file : arguments_.inputs) {
            const auto read = readResults(file, kLongestLine, [&](const ResultRecord& record, const ResultLine&) {
                ++line;
                const auto found = documents_.find(record.path);
                if (found == documents_.end() || found->second.line != line || unwritten) return;
                count(record);
                unwritten = merged.append(record);
            });
            if (const auto* const failure = std::get_if<ResultsFailure>(&read)) return failOnMerged(*failure);
        }
        if (!unwritten) unwritten = merged.close();
        if (unwritten) return failOnMerged(*unwritten);
        return std::nullopt;
    }

    [[nodiscard]] int finish() const {
        std::size_t mistakes = 0;
        for (const Complaints* const complaints : {&missing_, &foreign_, &contradicting_, &withoutText_}) {
            complaints->finish();
            mistakes += complaints->count();
        }
        if (arguments_.verbosity != Verbosity::quiet) complain(programLine(summary()));
        if (mistakes > 0) return kIncomplete;
        return failures_ > 0 ? kSomeFailed : kAllConverted;
    }

private:
    void take(const ResultRecord& record, std::uint64_t line) {
        auto found = documents_.find(record.path);
        if (found == documents_.end() && arguments_.inputList) return foreign_.add(record.path, "is not in the list");
        if (found == documents_.end()) found = documents_.try_emplace(record.path).first;
        Kept& kept = found->second;
        const Kept taken{line, std::hash<std::string>()(record.textHash.value_or(std::string())), record.status};
        if (kept.line == 0) {
            kept = taken;
            return;
        }
        ++repeated_;
        if (hasText(kept.status) && hasText(record.status) && kept.text != taken.text)
            contradicting_.add(record.path, "has two results with different texts");
        // A document that failed in one run and was converted in another is converted.
        if (!hasText(kept.status) && hasText(record.status)) kept = taken;
    }

    void count(const ResultRecord& record) {
        ++statuses_[static_cast<std::size_t>(record.status)];
        if (isFailure(record.status, arguments_.partial)) ++failures_;
        if (!hasItsText(record)) withoutText_.add(*record.output, "the text is missing or has another size");
    }

    [[nodiscard]] int failOnMerged(const ResultsFailure& failure) const {
        complain(resultLine(*arguments_.mergedResults, Reason::unwritable, failure.detail));
        return kDestinationUnwritable;
    }

    /// "5 results: 3 ok, 2 damaged; 1 repeated".
    [[nodiscard]] std::string summary() const {
        std::size_t all = 0;
        std::string counts;
        for (std::size_t i = 0; i < statuses_.size(); ++i) {
            if (statuses_[i] == 0) continue;
            all += statuses_[i];
            counts += (counts.empty() ? ": " : ", ") + std::to_string(statuses_[i]) + " " +
                      std::string(reasonName(static_cast<Reason>(i)));
        }
        return std::to_string(all) + " results" + counts +
               (repeated_ > 0 ? "; " + std::to_string(repeated_) + " repeated" : "");
    }

    const Arguments& arguments_;
    std::unordered_map<std::string, Kept> documents_;
    Complaints missing_{arguments_.verbosity, "documents have no result"};
    Complaints foreign_{arguments_.verbosity, "results are not of documents in the list"};
    Complaints contradicting_{arguments_.verbosity, "documents have different results"};
    Complaints withoutText_{arguments_.verbosity, "texts are missing or have another size"};
    std::array<std::size_t, static_cast<std::size_t>(Reason::skipped) + 1> statuses_{};
    std::size_t failures_ = 0;
    std::size_t repeated_ = 0;
};

} // namespace

int mergeResults(const Arguments& arguments) {
    Merger merger(arguments);
    if (const auto exitCode = merger.readList()) return *exitCode;
    if (const auto exitCode = merger.choose()) return *exitCode;
    if (const auto exitCode = merger.write()) return *exitCode;
    return merger.finish();
}

} // namespace quillow::cli
