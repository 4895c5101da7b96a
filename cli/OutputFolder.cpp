#include "cli/OutputFolder.h"

#include "cli/Paths.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cstdio>
#include <mutex>
#include <set>
#include <utility>

namespace quillow::cli {

namespace {

/// The temporary names of unfinished files, so that an interrupted program can remove them.
class TemporaryNames {
public:
    /// Returns a name that no other write uses, and records it until drop().
    std::string add(int folder) {
        const std::lock_guard lock(mutex_);
        std::string name = ".quillow-convert." + std::to_string(::getpid()) + "." + std::to_string(++count_) + ".tmp";
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
    unsigned long count_ = 0;
};

TemporaryNames& temporaryNames() {
    static TemporaryNames* const names = new TemporaryNames; // outlives every thread
    return *names;
}

/// A file that is being written. Until place() it has no name if the file system supports that, so that even a killed
/// program leaves nothing. On other file systems it has a temporary name.
class PendingFile {
public:
    explicit PendingFile(int folder)
        : folder_(folder) {
        file_ = FileDescriptor(::openat(folder_, ".", O_TMPFILE | O_WRONLY | O_CLOEXEC, 0666));
        if (!file_.isOpen()) openNamed();
    }
    PendingFile(const PendingFile&) = delete;
    PendingFile& operator=(const PendingFile&) = delete;
    ~PendingFile() {
        if (name_.empty()) return;
        ::unlinkat(folder_, name_.c_str(), 0); // fails harmlessly after a rename
        temporaryNames().drop(folder_, name_);
    }

    [[nodiscard]] bool isOpen() const { return file_.isOpen(); }

    [[nodiscard]] bool fill(std::string_view content) const {
        return writeAll(file_.number(), content) && ::fsync(file_.number()) == 0;
    }

    /// Copies the mode and, if the system allows it, the owner and group of the file to be replaced.
    [[nodiscard]] bool takeOver(const struct stat& replaced) const {
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

    /// Gives the file its name in the folder.
    [[nodiscard]] bool place(const std::string& name, Present present) {
        if (name_.empty()) {
            if (link(name)) return true;
            if (errno != EEXIST) return false;
            name_ = temporaryNames().add(folder_); // a link cannot replace, a rename can
            if (!link(name_)) return false;
        }
        if (present == Present::replaced) return ::renameat(folder_, name_.c_str(), folder_, name.c_str()) == 0;
        if (::renameat2(folder_, name_.c_str(), folder_, name.c_str(), RENAME_NOREPLACE) == 0) return true;
        // Some network file systems do not support RENAME_NOREPLACE, but they support links.
        return errno == EINVAL && ::linkat(folder_, name_.c_str(), folder_, name.c_str(), 0) == 0;
    }

private:
    void openNamed() {
        name_ = temporaryNames().add(folder_);
        file_ = FileDescriptor(::openat(folder_, name_.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, 0666));
    }

    [[nodiscard]] bool link(const std::string& name) const {
        const std::string self = "/proc/self/fd/" + std::to_string(file_.number());
        return ::linkat(AT_FDCWD, self.c_str(), folder_, name.c_str(), AT_SYMLINK_FOLLOW) == 0;
    }

    int folder_;
    FileDescriptor file_;
    std::string name_;
};

OutputFailure failure() {
    return {lastError(), errno == EEXIST};
}

using Status = std::optional<struct stat>;

Status statusOf(int folder, const std::string& name) {
    struct stat status = {};
    if (::fstatat(folder, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) return std::nullopt;
    return status;
}

/// Why the file may not be replaced; std::nullopt if it may. A link itself is replaced, so its target does not matter.
std::optional<OutputFailure> protection(int folder, const std::string& name, const struct stat& status) {
    if (S_ISLNK(status.st_mode)) return std::nullopt;
    if (S_ISDIR(status.st_mode)) return OutputFailure{"Is a directory"};
    if (!S_ISREG(status.st_mode)) return OutputFailure{"is a device or a pipe"};
    if ((status.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0) return OutputFailure{"is read-only"};
    if (::faccessat(folder, name.c_str(), W_OK, AT_EACCESS) != 0) return failure();
    return std::nullopt;
}

/// Opens the subfolder `name`, and creates it if it is missing.
FileDescriptor openBelow(int folder, const std::string& name) {
    constexpr int kFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
    FileDescriptor below(::openat(folder, name.c_str(), kFlags));
    if (below.isOpen() || errno != ENOENT) return below;
    if (::mkdirat(folder, name.c_str(), 0777) != 0 && errno != EEXIST) return below;
    return FileDescriptor(::openat(folder, name.c_str(), kFlags));
}

/// Opens the subfolder at `path`, and creates missing folders on the way. `path` is not empty.
std::variant<FileDescriptor, OutputFailure> openDeepBelow(int folder, std::string_view path) {
    FileDescriptor at;
    for (;;) {
        const std::string_view name = path.substr(0, path.find('/'));
        FileDescriptor below = openBelow(at.isOpen() ? at.number() : folder, std::string(name));
        if (!below.isOpen()) return OutputFailure{std::string(name) + ": " + lastError()};
        at = std::move(below);
        if (name.size() == path.size()) return at;
        path.remove_prefix(name.size() + 1);
    }
}

/// Syncs a folder. Some file systems cannot sync folders and return EINVAL; that counts as success.
bool syncFolder(int folder) {
    return ::fsync(folder) == 0 || errno == EINVAL;
}

std::optional<OutputFailure> writeInto(int folder, const std::string& name, std::string_view content, Present present) {
    const Status replaced = present == Present::replaced ? statusOf(folder, name) : std::nullopt;
    if (replaced)
        if (auto why = protection(folder, name, *replaced)) return why;
    PendingFile file(folder);
    if (!file.isOpen() || !file.fill(content)) return failure();
    if (replaced && S_ISREG(replaced->st_mode) && !file.takeOver(*replaced)) return failure();
    if (!file.place(name, present)) return failure();
    return std::nullopt;
}

} // namespace

std::variant<OutputFolder, OutputFailure> OutputFolder::open(const std::string& path, Missing missing) {
    if (missing == Missing::made && ::mkdir(path.c_str(), 0777) != 0 && errno != EEXIST) return failure();
    FileDescriptor folder(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!folder.isOpen()) return failure();
    if (::faccessat(folder.number(), ".", W_OK | X_OK, AT_EACCESS) != 0) return failure();
    return OutputFolder(std::move(folder));
}

std::optional<timespec> OutputFolder::changeTime(const std::string& name) const {
    const Status status = statusOf(folder_.number(), name);
    return status ? std::optional(status->st_mtim) : std::nullopt;
}

std::optional<OutputFailure> OutputFolder::write(const std::string& name, std::string_view content,
                                                 Present present) const {
    const std::string_view below = folderPart(name);
    if (below.empty()) return writeInto(folder_.number(), name, content, present);
    auto folder = openDeepBelow(folder_.number(), below);
    if (auto* const failed = std::get_if<OutputFailure>(&folder)) return std::move(*failed);
    remember(below);
    return writeInto(std::get<FileDescriptor>(folder).number(), std::string(lastPart(name)), content, present);
}

void OutputFolder::remember(std::string_view below) const {
    const std::lock_guard lock(below_->mutex);
    for (; !below.empty() && !below_->names.contains(below); below = folderPart(below))
        below_->names.emplace(below);
}

std::optional<OutputFailure> OutputFolder::sync() const {
    if (!syncFolder(folder_.number())) return failure();
    const std::lock_guard lock(below_->mutex);
    for (const std::string& name : below_->names) {
        const auto folder = openDeepBelow(folder_.number(), name);
        if (const auto* const failed = std::get_if<OutputFailure>(&folder)) return *failed;
        if (!syncFolder(std::get<FileDescriptor>(folder).number())) return failure();
    }
    return std::nullopt;
}

void OutputFolder::abandonWrites() {
    temporaryNames().abandon();
}

} // namespace quillow::cli
