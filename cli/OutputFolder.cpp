#include "cli/OutputFolder.h"

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

/// The names that writes under way have in their folders, so that an interrupted program can take them back.
class TemporaryNames {
public:
    /// A name that no other write uses; it stays known until it is dropped.
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

    /// Never unlocks: a write that would still make or rename a file waits for the end of the program.
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

/// One file on its way into the folder. Until it is in place it has no name where the file system can do that, so that even a
/// killed program leaves nothing; elsewhere it has a temporary one.
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
        ::unlinkat(folder_, name_.c_str(), 0); // after a rename there is nothing of that name
        temporaryNames().drop(folder_, name_);
    }

    [[nodiscard]] bool isOpen() const { return file_.isOpen(); }

    [[nodiscard]] bool fill(std::string_view content) const {
        return writeAll(file_.number(), content) && ::fsync(file_.number()) == 0;
    }

    /// Gives the file its name in the folder.
    [[nodiscard]] bool place(const std::string& name) {
        if (name_.empty()) {
            if (link(name)) return true;
            if (errno != EEXIST) return false;
            name_ = temporaryNames().add(folder_); // a link cannot replace, a rename can
            if (!link(name_)) return false;
        }
        return ::renameat(folder_, name_.c_str(), folder_, name.c_str()) == 0;
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
    return {lastError()};
}

} // namespace

std::variant<OutputFolder, OutputFailure> OutputFolder::open(const std::string& path) {
    if (::mkdir(path.c_str(), 0777) != 0 && errno != EEXIST) return failure();
    FileDescriptor folder(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!folder.isOpen()) return failure();
    if (::faccessat(folder.number(), ".", W_OK | X_OK, AT_EACCESS) != 0) return failure();
    return OutputFolder(std::move(folder));
}

std::optional<OutputFailure> OutputFolder::write(const std::string& name, std::string_view content) const {
    PendingFile file(folder_.number());
    if (!file.isOpen() || !file.fill(content) || !file.place(name)) return failure();
    return std::nullopt;
}

std::optional<OutputFailure> OutputFolder::sync() const {
    // Some file systems cannot sync a folder and say EINVAL: they have nothing to do.
    if (::fsync(folder_.number()) != 0 && errno != EINVAL) return failure();
    return std::nullopt;
}

void OutputFolder::abandonWrites() {
    temporaryNames().abandon();
}

} // namespace quillow::cli
