#include "platform/qt/files/FileIdentity.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statfs.h>
#include <sys/sysmacros.h>

#include <cstdlib>
#include <cstring>
#include <memory>

namespace quillow {
namespace {

std::uint64_t fileSystemIdOf(const QByteArray& path) {
    struct statfs about = {};
    if (::statfs(path.constData(), &about) != 0) return 0;
    std::uint64_t id = 0;
    static_assert(sizeof about.f_fsid == sizeof id);
    std::memcpy(&id, &about.f_fsid, sizeof id);
    return id;
}

} // namespace

std::optional<FileIdentity> FileIdentity::ofItem(const QByteArray& path) {
    struct statx about = {};
    if (::statx(AT_FDCWD, path.constData(), AT_SYMLINK_NOFOLLOW, STATX_TYPE | STATX_INO | STATX_BTIME, &about) != 0)
        return std::nullopt;
    FileIdentity identity;
    identity.device = makedev(about.stx_dev_major, about.stx_dev_minor);
    identity.fileSystem = fileSystemIdOf(path);
    identity.inode = about.stx_ino;
    if (about.stx_mask & STATX_BTIME) identity.birthTime = BirthTime{about.stx_btime.tv_sec, about.stx_btime.tv_nsec};
    identity.isDirectory = S_ISDIR(about.stx_mode);
    return identity;
}

bool FileIdentity::isOnFileSystemOf(const FileIdentity& other) const {
    return device == other.device || (fileSystem != 0 && fileSystem == other.fileSystem);
}

bool FileIdentity::isSameItemAs(const FileIdentity& other) const {
    if (!isOnFileSystemOf(other) || inode != other.inode || isDirectory != other.isDirectory) return false;
    return !birthTime || !other.birthTime || *birthTime == *other.birthTime;
}

std::optional<QByteArray> realPath(const QByteArray& path) {
    const std::unique_ptr<char, decltype(&std::free)> resolved(::realpath(path.constData(), nullptr), &std::free);
    return resolved ? std::optional(QByteArray(resolved.get())) : std::nullopt;
}

} // namespace quillow
