#include "cli/OutputFolder.h"

#include "cli/Paths.h"
#include "cli/PendingFile.h"

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <utility>

namespace quillow::cli {

namespace {

constexpr std::size_t kCompared = std::size_t{16} << 10;

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

/// True for file systems of which it is known that syncfs(2) brings all bytes to the disk, those of files without a name
/// included. Others, above all those on other machines, sync one file at a time.
bool syncsTogether(int folder) {
    struct statfs status = {};
    if (::fstatfs(folder, &status) != 0) return false;
    switch (static_cast<unsigned long>(status.f_type)) {
    case EXT4_SUPER_MAGIC:
    case XFS_SUPER_MAGIC:
    case BTRFS_SUPER_MAGIC:
    case F2FS_SUPER_MAGIC:
    case TMPFS_MAGIC:
    case OVERLAYFS_SUPER_MAGIC: return true;
    default: return false;
    }
}

/// The subfolder and the name in it.
struct Place {
    FileDescriptor below; ///< closed: the folder itself
    std::string name;
};

class WrittenText final : public UnnamedText {
public:
    enum class Sync { done, alone, together };

    WrittenText(int folder, Place place, Present present)
        : place_(std::move(place))
        , present_(present)
        , folder_(place_.below.isOpen() ? place_.below.number() : folder)
        , file_(folder_) {}

    /// `device` is that of the folders that are synced together; std::nullopt: each file is synced alone, at once.
    [[nodiscard]] std::optional<OutputFailure> write(std::string_view content, std::optional<dev_t> device) {
        const Status replaced = present_ == Present::replaced ? statusOf(folder_, place_.name) : std::nullopt;
        if (replaced)
            if (auto why = protection(folder_, place_.name, *replaced)) return why;
        if (!file_.isOpen() || !file_.write(content)) return failure();
        if (replaced && S_ISREG(replaced->st_mode) && !file_.takeOver(*replaced)) return failure();
        if (device && file_.device() == device)
            sync_ = Sync::together;
        else if (device)
            sync_ = Sync::alone; // another file system is mounted below the folder
        else if (!file_.sync())
            return failure();
        return std::nullopt;
    }

    std::optional<OutputFailure> sync(Together together) override {
        if (sync_ == Sync::done) return std::nullopt;
        const bool isOnDisk = sync_ == Sync::together && together == Together::yes && file_.hasReachedDisk();
        return isOnDisk || file_.sync() ? std::nullopt : std::optional(failure());
    }

    std::optional<OutputFailure> place() override {
        return file_.place(place_.name, present_) ? std::nullopt : std::optional(failure());
    }

private:
    Place place_;
    Present present_;
    int folder_;
    PendingFile file_;
    Sync sync_ = Sync::done;
};

} // namespace

OutputFolder::OutputFolder(FileDescriptor folder)
    : folder_(std::move(folder))
    , syncsTogether_(quillow::cli::syncsTogether(folder_.number()))
    , below_(std::make_unique<Below>()) {
    struct stat status = {};
    if (::fstat(folder_.number(), &status) == 0) device_ = status.st_dev;
}

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

std::variant<std::shared_ptr<UnnamedText>, OutputFailure>
OutputFolder::write(const std::string& name, std::string_view content, Present present) const {
    Place place{{}, std::string(lastPart(name))};
    if (const std::string_view below = folderPart(name); !below.empty()) {
        auto folder = openDeepBelow(folder_.number(), below);
        if (auto* const failed = std::get_if<OutputFailure>(&folder)) return std::move(*failed);
        remember(below);
        place.below = std::move(std::get<FileDescriptor>(folder));
    }
    auto text = std::make_shared<WrittenText>(folder_.number(), std::move(place), present);
    if (auto failed = text->write(content, syncsTogether_ ? std::optional(device_) : std::nullopt))
        return std::move(*failed);
    return text;
}

bool OutputFolder::syncTogether() const {
    return syncsTogether_ && ::syncfs(folder_.number()) == 0;
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

bool OutputFolder::holds(const std::string& name, std::string_view content) const {
    const FileDescriptor file(
        ::openat(folder_.number(), name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    struct stat status = {};
    if (!file.isOpen() || ::fstat(file.number(), &status) != 0 || !S_ISREG(status.st_mode)) return false;
    if (static_cast<std::uint64_t>(status.st_size) != content.size()) return false;
    std::array<char, kCompared> piece{};
    while (!content.empty()) {
        const ssize_t got = ::read(file.number(), piece.data(), std::min(piece.size(), content.size()));
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0 || !content.starts_with({piece.data(), static_cast<std::size_t>(got)})) return false;
        content.remove_prefix(static_cast<std::size_t>(got));
    }
    return true;
}

void OutputFolder::removeLeftOver(const std::set<std::string, std::less<>>& below) const {
    PendingFile::removeLeftOver(folder_.number());
    for (const std::string& name : below) {
        const FileDescriptor folder(
            ::openat(folder_.number(), name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
        if (folder.isOpen()) PendingFile::removeLeftOver(folder.number());
    }
}

} // namespace quillow::cli
