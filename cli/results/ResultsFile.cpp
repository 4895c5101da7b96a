#include "cli/results/ResultsFile.h"

#include "cli/Paths.h"
#include "cli/PendingFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <climits>
#include <cstdlib>
#include <memory>
#include <thread>
#include <utility>

namespace quillow::cli {

namespace {

constexpr mode_t kNewFileMode = 0666;
/// Longer lines are no results: a path has 4,096 bytes at most, and a detail is short.
constexpr std::size_t kLongestLine = 64 * 1024;

/// How every file of results begins.
constexpr std::string_view kBegin = "{\"schema\":";

/// The path without links, so that the file itself is replaced and not a link to it.
std::string withoutLinks(const std::string& path) {
    const std::unique_ptr<char, decltype(&std::free)> real(::realpath(path.c_str(), nullptr), &std::free);
    return real ? std::string(real.get()) : path;
}

FileDescriptor openFolderOf(const std::string& path) {
    const std::string folder(folderPart(path));
    const std::string shown = !folder.empty() ? folder : path.starts_with('/') ? "/" : ".";
    return FileDescriptor(::open(shown.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
}

/// Locks the file. A run that was killed a moment ago may still have it: its processes end one after the other.
bool lock(const FileDescriptor& file) {
    constexpr int kTries = 20;
    constexpr std::chrono::milliseconds kPause{100};
    for (int i = 0; i < kTries; ++i) {
        if (i > 0) std::this_thread::sleep_for(kPause);
        // Some file systems have no locks; there the user takes care.
        if (::flock(file.number(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK) return true;
    }
    return false;
}

/// Opens the file and locks it.
std::variant<FileDescriptor, ResultsFailure> openLocked(const std::string& path, int flags) {
    FileDescriptor file(::open(path.c_str(), flags | O_APPEND | O_CLOEXEC | O_NOCTTY, kNewFileMode));
    if (!file.isOpen()) return ResultsFailure{lastError()};
    if (!lock(file)) return ResultsFailure{"is in use by another run"};
    struct stat status = {};
    if (::fstat(file.number(), &status) == 0 && status.st_nlink == 0) // the other run has just replaced the file
        return ResultsFailure{"is in use by another run"};
    return file;
}

bool isFile(const FileDescriptor& file) {
    struct stat status = {};
    return ::fstat(file.number(), &status) == 0 && S_ISREG(status.st_mode);
}

bool isEmptyOrHasResults(const FileDescriptor& file) {
    std::array<char, kBegin.size()> begin{};
    const ssize_t got = ::pread(file.number(), begin.data(), begin.size(), 0);
    return got >= 0 && kBegin.starts_with({begin.data(), static_cast<std::size_t>(got)});
}

/// The results of an earlier run that remain.
class Remaining {
public:
    enum class Line { kept, dropped };

    void add(ResultRecord record, const ResultLine& line, Line what) {
        lines_.push_back(what);
        hasLineEnd_ = line.isWhole;
        if (what == Line::dropped) {
            isShortened_ = true;
            return;
        }
        bytes_ += line.text.size() + 1;
        earlier_.add(std::move(record));
    }

    /// Makes the file hold nothing else. `path` is the file's. False on an error, with `errno` set. The file is at any
    /// time either the old one or the new one.
    [[nodiscard]] bool apply(const std::string& path, FileDescriptor& file) const {
        if (isShortened_) return replace(path, file);
        if (!hasLineEnd_) return writeAll(file.number(), "\n");
        return ::ftruncate(file.number(), static_cast<off_t>(bytes_)) == 0;
    }
    [[nodiscard]] EarlierResults& earlier() { return earlier_; }

private:
    /// Reads the lines once more: most runs are resumed without a line to drop, and need no copy of them.
    [[nodiscard]] bool replace(const std::string& givenPath, FileDescriptor& file) const {
        const std::string path = withoutLinks(givenPath);
        const FileDescriptor folder = openFolderOf(path);
        struct stat status = {};
        if (!folder.isOpen() || ::fstat(file.number(), &status) != 0) return false;
        PendingFile replacement(folder.number());
        if (!replacement.isOpen()) return false;
        std::string waiting;
        bool isWritten = true;
        const auto flush = [&] {
            isWritten = isWritten && replacement.write(waiting);
            waiting.clear();
        };
        std::size_t at = 0;
        const auto read = readResults(path, kLongestLine, [&](const ResultRecord&, const ResultLine& line) {
            if (lines_[at++] == Line::dropped) return;
            waiting += line.text + "\n";
            if (waiting.size() >= kBuffer) flush();
        });
        flush();
        if (std::holds_alternative<ResultsFailure>(read) || !isWritten || !replacement.sync() ||
            !replacement.takeOver(status))
            return false;
        if (!replacement.place(std::string(lastPart(path)), Present::replaced)) return false;
        file = replacement.takeFile(); // which has a lock, as every temporary file does
        return ::fcntl(file.number(), F_SETFL, O_APPEND) == 0;
    }

    static constexpr std::size_t kBuffer = std::size_t{1} << 20;

    std::vector<Line> lines_;
    EarlierResults earlier_;
    std::size_t bytes_ = 0;
    bool hasLineEnd_ = true;
    bool isShortened_ = false;
};

} // namespace

bool hasItsText(const ResultRecord& record) {
    if (!record.output) return true;
    struct stat status = {};
    return ::stat(record.output->c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
           static_cast<std::uint64_t>(status.st_size) == record.textBytes;
}

std::optional<EarlierResults::Finished> EarlierResults::take(const std::string& path) {
    const auto found = byPath_.find(path);
    if (found == byPath_.end()) return std::nullopt;
    Finished finished = std::move(found->second.front());
    found->second.erase(found->second.begin());
    if (found->second.empty()) byPath_.erase(found);
    return finished;
}

std::variant<ResultsFile, ResultsFailure> ResultsFile::create(const std::string& path) {
    if (path == kStandardStream) return ResultsFile(FileDescriptor());
    // A pipe cannot be read from, a file is.
    struct stat status = {};
    const bool isSpecial = ::stat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode);
    auto opened = openLocked(path, (isSpecial ? O_WRONLY : O_RDWR) | O_CREAT);
    if (auto* const failure = std::get_if<ResultsFailure>(&opened)) return std::move(*failure);
    auto& file = std::get<FileDescriptor>(opened);
    if (!isFile(file)) return ResultsFile(std::move(file));
    if (!isEmptyOrHasResults(file)) return ResultsFailure{"exists and does not hold results"};
    if (::ftruncate(file.number(), 0) != 0) return ResultsFailure{lastError()};
    return ResultsFile(std::move(file));
}

std::variant<ResultsFile::Resumed, ResultsFailure> ResultsFile::resume(const std::string& path, Retry retry,
                                                                       const std::function<bool(Reason)>& isFailure) {
    auto opened = openLocked(path, O_RDWR | O_CREAT);
    if (auto* const failure = std::get_if<ResultsFailure>(&opened)) return std::move(*failure);
    auto& file = std::get<FileDescriptor>(opened);
    if (!isFile(file)) return ResultsFailure{"is not a file"};
    if (const FileDescriptor folder = openFolderOf(withoutLinks(path)); folder.isOpen())
        PendingFile::removeLeftOver(folder.number());
    Remaining remaining;
    const auto read = readResults(path, kLongestLine, [&](ResultRecord record, const ResultLine& line) {
        const bool isAgain = (retry == Retry::failed && isFailure(record.status)) || !hasItsText(record);
        remaining.add(std::move(record), line, isAgain ? Remaining::Line::dropped : Remaining::Line::kept);
    });
    if (const auto* const failure = std::get_if<ResultsFailure>(&read)) return *failure;
    if (!remaining.apply(path, file)) return ResultsFailure{lastError()};
    return Resumed{ResultsFile(std::move(file)), std::move(remaining.earlier())};
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
