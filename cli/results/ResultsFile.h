// The file with a line for each document of a run, and what a later run can take from it.
#pragma once

#include "cli/options/Arguments.h"
#include "cli/results/ResultLines.h"
#include "cli/results/ResultRecord.h"
#include "posix/FileDescriptor.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <variant>
#include <vector>

namespace quillow::cli {

/// The documents that earlier runs have finished.
class EarlierResults {
public:
    struct Finished {
        Reason status = Reason::damaged;
        std::optional<std::string> output; ///< the path of the text
    };

    void add(ResultRecord record) {
        byPath_[std::move(record.path)].push_back({record.status, std::move(record.output)});
        ++size_;
    }
    [[nodiscard]] std::size_t size() const { return size_; }

    /// What became of the document; std::nullopt if it is to be converted. A path that one run names several times has
    /// several results: each call takes the next one.
    [[nodiscard]] std::optional<Finished> take(const std::string& path);

private:
    std::unordered_map<std::string, std::vector<Finished>> byPath_;
    std::size_t size_ = 0;
};

/// Whether the text that the record names is where it was written, as far as a look at the file's size shows.
[[nodiscard]] bool hasItsText(const ResultRecord& record);

/// Results are appended as documents end. A process that is killed leaves at most one incomplete line, the last one. A
/// file is locked (flock) as long as it is open, so that two runs never write to the same one.
class ResultsFile {
public:
    /// Makes the file, or empties it. kStandardStream is standard output. Fails if the file has something else than
    /// results in it: a mistake on the command line should not cost a document.
    [[nodiscard]] static std::variant<ResultsFile, ResultsFailure> create(const std::string& path);

    struct Resumed;
    /// Opens the file for more results, and reads those that it has. Removes an incomplete last line, results whose
    /// text is missing or has another size, and, with Retry::failed, those of documents that failed: `isFailure`
    /// decides. A file that does not exist is made. Fails, and changes nothing, if the file has other lines than
    /// results.
    [[nodiscard]] static std::variant<Resumed, ResultsFailure> resume(const std::string& path, Retry retry,
                                                                      const std::function<bool(Reason)>& isFailure);

    /// Returns the error if the line cannot be written.
    [[nodiscard]] std::optional<ResultsFailure> append(const ResultRecord& record);

    /// Returns the error if the lines do not reach the disk.
    [[nodiscard]] std::optional<ResultsFailure> close();

private:
    explicit ResultsFile(FileDescriptor file)
        : file_(std::move(file)) {}

    FileDescriptor file_; ///< closed: standard output
};

struct ResultsFile::Resumed {
    ResultsFile file;
    EarlierResults earlier;
};

} // namespace quillow::cli
