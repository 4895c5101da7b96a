#include "cli/PendingFile.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/random.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <mutex>
#include <set>
#include <utility>
#include <vector>

namespace quillow::cli {

namespace {

constexpr std::string_view kPrefix = ".quillow-convert.";
constexpr std::string_view kSuffix = ".tmp";
/// A random name is in use once in an age, but a file that was just made may be taken for a left one.
constexpr int kTries = 16;

std::string randomName() {
    std::uint64_t number = 0;
    if (::getrandom(&number, sizeof number, 0) != sizeof number) number = static_cast<std::uint64_t>(::getpid());
    char digits[17];
    std::snprintf(digits, sizeof digits, "%016llx", static_cast<unsigned long long>(number));
    return std::string(kPrefix) + digits + std::string(kSuffix);
}

bool isTemporaryName(std::string_view name) {
    return name.starts_with(kPrefix) && name.ends_with(kSuffix);
}

/// The temporary names of this program's unfinished files, so that an interrupt can remove them.
class TemporaryNames {
public:
    std::string add(int folder) {
        const std::lock_guard lock(mutex_);
        std::string name = randomName();
        names_.emplace(folder, name);
        return name;
    }

    void drop(int folder, const std::string& name) {
        const std::lock_guard lock(mutex_);
        names_.erase({folder, name});
    }

    /// Removes all recorded files. Never unlocks, so no other write can add a name before the program ends.
    void abandon() {
        mutex_.lock();
        for (const auto& [folder, name] : names_)
            ::unlinkat(folder, name.c_str(), 0);
    }

private:
    std::mutex mutex_;
    std::set<std::pair<int, std::string>> names_;
};

TemporaryNames& temporaryNames() {
    static TemporaryNames* const names = new TemporaryNames; // outlives every thread
    return *names;
}

/// Locks the file, where the file system has locks.
void lock(int file) {
    while (::flock(file, LOCK_EX) != 0 && errno == EINTR) {
    }
}

bool hasName(int file) {
    struct stat status = {};
    return ::fstat(file, &status) == 0 && status.st_nlink > 0;
}

std::vector<std::string> temporaryNamesIn(int folder) {
    std::vector<std::string> names;
    FileDescriptor again(::openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!again.isOpen()) return names;
    DIR* const entries = ::fdopendir(again.number());
    if (entries == nullptr) return names;
    static_cast<void>(again.release()); // closedir() closes it
    while (const dirent* const entry = ::readdir(entries))
        if (isTemporaryName(entry->d_name)) names.emplace_back(entry->d_name);
    ::closedir(entries);
    return names;
}

} // namespace

PendingFile::PendingFile(int folder)
    : folder_(folder)
    , file_(::openat(folder_, ".", O_TMPFILE | O_WRONLY | O_CLOEXEC, 0666)) {
    for (int i = 0; i < kTries && !file_.isOpen(); ++i)
        if (!openNamed() && errno != EEXIST) return;
}

PendingFile::~PendingFile() {
    if (name_.empty()) return;
    ::unlinkat(folder_, name_.c_str(), 0); // fails harmlessly after a rename
    temporaryNames().drop(folder_, name_);
}

bool PendingFile::write(std::string_view content) const {
    return writeAll(file_.number(), content);
}

bool PendingFile::sync() const {
    return ::fsync(file_.number()) == 0;
}

bool PendingFile::hasReachedDisk() const {
    // Writes nothing any more, and reports the errors of what was written.
    constexpr unsigned kAll = SYNC_FILE_RANGE_WAIT_BEFORE | SYNC_FILE_RANGE_WRITE | SYNC_FILE_RANGE_WAIT_AFTER;
    return ::sync_file_range(file_.number(), 0, 0, kAll) == 0;
}

dev_t PendingFile::device() const {
    struct stat status = {};
    return ::fstat(file_.number(), &status) == 0 ? status.st_dev : 0;
}

bool PendingFile::takeOver(const struct stat& replaced) const {
    struct stat own = {};
    if (::fstat(file_.number(), &own) != 0) return false;
    if (own.st_uid != replaced.st_uid || own.st_gid != replaced.st_gid) {
        // Only privileged users may change the owner; many others may at least change the group.
        const bool isGiven = ::fchown(file_.number(), replaced.st_uid, replaced.st_gid) == 0 ||
                             ::fchown(file_.number(), own.st_uid, replaced.st_gid) == 0;
        static_cast<void>(isGiven);
    }
    return ::fchmod(file_.number(), replaced.st_mode & 0777) == 0;
}

bool PendingFile::place(const std::string& name, Present present) {
    if (name_.empty()) {
        if (link(name)) return true;
        if (errno != EEXIST) return false;
        if (!linkTemporarily()) return false; // a link cannot replace, a rename can
    }
    if (present == Present::replaced) return ::renameat(folder_, name_.c_str(), folder_, name.c_str()) == 0;
    if (::renameat2(folder_, name_.c_str(), folder_, name.c_str(), RENAME_NOREPLACE) == 0) return true;
    // Some network file systems do not support RENAME_NOREPLACE, but they support links.
    return errno == EINVAL && ::linkat(folder_, name_.c_str(), folder_, name.c_str(), 0) == 0;
}

/// Another program may find the file before it is locked, take it for a left one and remove it. It has no name then.
bool PendingFile::openNamed() {
    std::string name = temporaryNames().add(folder_);
    FileDescriptor file(::openat(folder_, name.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, 0666));
    const int error = errno;
    if (file.isOpen()) lock(file.number());
    if (!file.isOpen() || !hasName(file.number())) {
        temporaryNames().drop(folder_, name);
        errno = file.isOpen() ? EEXIST : error;
        return false;
    }
    file_ = std::move(file);
    name_ = std::move(name);
    return true;
}

bool PendingFile::linkTemporarily() {
    lock(file_.number());
    for (int i = 0; i < kTries; ++i) {
        name_ = temporaryNames().add(folder_);
        if (link(name_)) return true;
        const int error = errno;
        temporaryNames().drop(folder_, name_);
        name_.clear();
        errno = error;
        if (error != EEXIST) return false;
    }
    return false;
}

bool PendingFile::link(const std::string& name) const {
    const std::string self = "/proc/self/fd/" + std::to_string(file_.number());
    return ::linkat(AT_FDCWD, self.c_str(), folder_, name.c_str(), AT_SYMLINK_FOLLOW) == 0;
}

void PendingFile::abandonAll() {
    temporaryNames().abandon();
}

void PendingFile::removeLeftOver(int folder) {
    for (const std::string& name : temporaryNamesIn(folder)) {
        const FileDescriptor file(
            ::openat(folder, name.c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
        struct stat status = {};
        if (!file.isOpen() || ::fstat(file.number(), &status) != 0 || !S_ISREG(status.st_mode)) continue;
        if (::flock(file.number(), LOCK_EX | LOCK_NB) == 0) ::unlinkat(folder, name.c_str(), 0);
    }
}

} // namespace quillow::cli
