// A file that is written beside its target and takes its place when its bytes are on the disk.
#pragma once

#include "posix/FileDescriptor.h"

#include <QByteArray>

#include <sys/stat.h>

namespace quillow {

/// If the file system permits, the file has no name until it is placed, so nothing remains if the program is killed.
/// Otherwise it has a hidden name.
class UnnamedFile {
public:
    UnnamedFile() = default;
    /// Writes the bytes into the folder of the target. `former` (may be null) is the file that will be replaced; the
    /// new one gets its owner and its mode.
    UnnamedFile(const QByteArray& target, const QByteArray& bytes, const struct stat* former);
    UnnamedFile(UnnamedFile&& other) noexcept = default;
    UnnamedFile& operator=(UnnamedFile&& other) noexcept;
    ~UnnamedFile() { removeHiddenName(); }

    /// A file that could not be written, with the error number.
    [[nodiscard]] static UnnamedFile unwritten(int error) {
        UnnamedFile file;
        file.error_ = error;
        return file;
    }

    [[nodiscard]] bool isWritten() const { return file_.isOpen(); }
    /// The error number of the step that failed: writing, syncing or placing.
    [[nodiscard]] int error() const { return error_; }
    [[nodiscard]] const QByteArray& target() const { return target_; }

    /// Brings the bytes to the disk.
    [[nodiscard]] bool sync();
    /// Brings the bytes of all files of this file system to the disk. False if it fails, or if the file system is not
    /// one that is known to do that.
    [[nodiscard]] bool syncAll() const;
    /// After syncAll() of another file: whether it served for this one too.
    [[nodiscard]] bool isSyncedWith(const UnnamedFile& other) const;
    /// Moves the file to its target and replaces a file there.
    [[nodiscard]] bool place();
    /// Brings the names in the folder to the disk.
    void syncFolder() const;

private:
    void open(const QByteArray& folder);
    [[nodiscard]] bool giveHiddenName(const QByteArray& folder);
    void removeHiddenName();

    QByteArray target_;
    FileDescriptor file_;
    QByteArray hiddenName_; ///< empty while it has no name
    int error_ = 0;
};

} // namespace quillow
