#include "cli/ResultsFile.h"

#include "cli/Arguments.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <utility>

namespace quillow::cli {

namespace {

constexpr mode_t kNewFileMode = 0666;
/// Longer lines are no results: a path has 4,096 bytes at most, and a detail is short.
constexpr std::size_t kLongestLine = 64 * 1024;

/// Whether the text that the record names is where it was written, as far as a look at the file's size shows.
bool hasItsText(const ResultRecord& record) {
    if (!record.output) return true;
    struct stat status = {};
    return ::stat(record.output->c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
           static_cast<std::uint64_t>(status.st_size) == record.textBytes;
}

/// Writes beside the file and replaces it at the end, so that it is always either the old one or the new one.
class Replacement {
public:
    explicit Replacement(const std::string& path)
        : path_(path)
        , temporary_(path + ".XXXXXX")
        , file_(::mkstemp(temporary_.data())) {}
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;
    ~Replacement() {
        if (file_.isOpen()) ::unlink(temporary_.c_str());
    }

    /// False on an error, with `errno` set.
    [[nodiscard]] bool write(std::string_view line) {
        waiting_ += line;
        return waiting_.size() < kBuffer || flush();
    }
    [[nodiscard]] bool take(mode_t mode) {
        const bool isDone = file_.isOpen() && flush() && ::fchmod(file_.number(), mode) == 0 &&
                            ::fsync(file_.number()) == 0 && ::rename(temporary_.c_str(), path_.c_str()) == 0;
        if (isDone) file_.close();
        return isDone;
    }

private:
    static constexpr std::size_t kBuffer = std::size_t{1} << 20;

    [[nodiscard]] bool flush() {
        const bool isDone = file_.isOpen() && writeAll(file_.number(), waiting_);
        waiting_.clear();
        return isDone;
    }

    std::string path_;
    std::string temporary_;
    FileDescriptor file_;
    std::string waiting_;
};

struct Line {
    std::string text;
    bool isWhole = true; ///< it has its line end
};

std::optional<Line> nextLine(std::istream& in) {
    Line line;
    if (!std::getline(in, line.text)) return std::nullopt;
    line.isWhole = !in.eof();
    return line;
}

/// Reads the results, and calls `each` with every line that remains.
std::optional<ResultsFailure> readLines(const std::string& path,
                                        const std::function<void(ResultRecord, const Line&)>& each) {
    std::ifstream in(path, std::ios::binary);
    if (!in) return ResultsFailure{lastError()};
    std::size_t number = 0;
    while (const std::optional<Line> line = nextLine(in)) {
        ++number;
        auto record = line->text.size() <= kLongestLine ? recordOf(line->text) : std::nullopt;
        // A kill in the middle of a write leaves a part of a line, after which nothing was written.
        if (!line->isWhole && !record) break;
        if (!record) return ResultsFailure{"line " + std::to_string(number) + " is not a result of this program"};
        each(std::move(*record), *line);
    }
    if (in.bad()) return ResultsFailure{lastError()};
    return std::nullopt;
}

} // namespace

std::optional<EarlierResults::Finished> EarlierResults::take(const std::string& path) {
    const auto found = byPath_.find(path);
    if (found == byPath_.end() || found->second.empty()) return std::nullopt;
    const Finished finished = found->second.front();
    found->second.pop_front();
    return finished;
}

std::variant<ResultsFile, ResultsFailure> ResultsFile::create(const std::string& path) {
    if (path == kStandardStream) return ResultsFile(FileDescriptor());
    FileDescriptor file(::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_APPEND | O_CLOEXEC, kNewFileMode));
    if (!file.isOpen()) return ResultsFailure{lastError()};
    return ResultsFile(std::move(file));
}

std::variant<ResultsFile::Resumed, ResultsFailure> ResultsFile::resume(const std::string& path, Retry retry,
                                                                       const std::function<bool(Reason)>& isFailure) {
    FileDescriptor file(::open(path.c_str(), O_RDWR | O_CREAT | O_APPEND | O_CLOEXEC, kNewFileMode));
    struct stat status = {};
    if (!file.isOpen() || ::fstat(file.number(), &status) != 0) return ResultsFailure{lastError()};
    if (!S_ISREG(status.st_mode)) return ResultsFailure{"is not a file"};
    EarlierResults earlier;
    bool isComplete = true;
    Replacement replacement(path);
    const auto failure = readLines(path, [&](const ResultRecord& record, const Line& line) {
        const bool again = retry == Retry::failed && isFailure(record.status);
        if (again || !hasItsText(record)) return;
        earlier.add(record);
        isComplete = replacement.write(line.text + "\n") && isComplete;
    });
    if (failure) return *failure;
    if (!isComplete || !replacement.take(status.st_mode & 07777U)) return ResultsFailure{lastError()};
    file = FileDescriptor(::open(path.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC));
    if (!file.isOpen()) return ResultsFailure{lastError()};
    return Resumed{ResultsFile(std::move(file)), std::move(earlier)};
}

std::optional<ResultsFailure> ResultsFile::append(const ResultRecord& record) {
    if (writeAll(file_.isOpen() ? file_.number() : STDOUT_FILENO, lineOf(record))) return std::nullopt;
    return ResultsFailure{lastError()};
}

std::optional<ResultsFailure> ResultsFile::close() {
    if (!file_.isOpen()) return std::nullopt;
    // Files that cannot be synced, such as pipes and devices, refuse with EINVAL.
    const bool isSynced = ::fsync(file_.number()) == 0 || errno == EINVAL || errno == EROFS;
    if (isSynced && file_.close()) return std::nullopt;
    return ResultsFailure{lastError()};
}

} // namespace quillow::cli
