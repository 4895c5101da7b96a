// Syncs many files at once, which costs a disk much the same as one.
#pragma once

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/vfs.h>
#include <unistd.h>

namespace quillow {

/// True for file systems of which it is known that syncfs(2) brings all bytes to the disk, those of files without a
/// name included. Others, above all those on other machines, sync one file at a time.
[[nodiscard]] inline bool syncsTogether(int folder) {
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

/// After syncfs(2): whether it wrote this file's bytes. Writes nothing any more, and reports the errors of what was
/// written.
[[nodiscard]] inline bool hasReachedDisk(int file) {
    constexpr unsigned kAll = SYNC_FILE_RANGE_WAIT_BEFORE | SYNC_FILE_RANGE_WRITE | SYNC_FILE_RANGE_WAIT_AFTER;
    return ::sync_file_range(file, 0, 0, kAll) == 0;
}

} // namespace quillow
