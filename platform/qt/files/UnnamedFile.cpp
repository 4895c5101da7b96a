#include "platform/qt/files/UnnamedFile.h"

#include "posix/GroupSync.h"

#include <QRandomGenerator>

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <utility>

namespace quillow {
namespace {

constexpr mode_t kModeOfNewFiles = 0666; // the umask applies
constexpr int kNamesToTry = 100;

QByteArray folderOf(const QByteArray& path) {
    const qsizetype slash = path.lastIndexOf('/');
    return slash > 0 ? path.left(slash) : QByteArray("/");
}

/// A random hidden name in the folder.
QByteArray hiddenNameIn(const QByteArray& folder) {
    return folder + "/.quillow-" + QByteArray::number(QRandomGenerator::global()->generate64(), 16) + ".tmp";
}

/// Gives an unnamed file an unused name. Returns false with EEXIST if the name is taken.
bool giveName(const FileDescriptor& descriptor, const QByteArray& name) {
    const QByteArray handle = "/proc/self/fd/" + QByteArray::number(descriptor.number());
    return ::linkat(AT_FDCWD, handle.constData(), AT_FDCWD, name.constData(), AT_SYMLINK_FOLLOW) == 0;
}

} // namespace

UnnamedFile::UnnamedFile(const QByteArray& target, const QByteArray& bytes, const struct stat* former)
    : target_(target) {
    open(folderOf(target));
    if (!file_.isOpen()) {
        error_ = errno;
        return;
    }
    const bool isWritten = writeAll(file_.number(), {bytes.constData(), static_cast<std::size_t>(bytes.size())});
    if (!isWritten) error_ = errno;
    if (former) {
        // The owner first: a change of the owner may clear set-id bits. A failure of either call is ignored.
        [[maybe_unused]] const int owner = ::fchown(file_.number(), former->st_uid, former->st_gid);
        [[maybe_unused]] const int mode = ::fchmod(file_.number(), former->st_mode & 07777);
    }
    if (isWritten) return;
    removeHiddenName();
    file_.close();
}

UnnamedFile& UnnamedFile::operator=(UnnamedFile&& other) noexcept {
    removeHiddenName();
    target_ = std::move(other.target_);
    file_ = std::move(other.file_);
    hiddenName_ = std::exchange(other.hiddenName_, {});
    error_ = other.error_;
    return *this;
}

void UnnamedFile::open(const QByteArray& folder) {
    file_ = FileDescriptor(::open(folder.constData(), O_WRONLY | O_TMPFILE | O_CLOEXEC, kModeOfNewFiles));
    for (int i = 0; !file_.isOpen() && i < kNamesToTry; ++i) {
        const QByteArray name = hiddenNameIn(folder);
        file_ = FileDescriptor(::open(name.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kModeOfNewFiles));
        if (file_.isOpen()) hiddenName_ = name;
        if (!file_.isOpen() && errno != EEXIST) break;
    }
}

void UnnamedFile::removeHiddenName() {
    if (!hiddenName_.isEmpty()) ::unlink(hiddenName_.constData());
    hiddenName_.clear();
}

bool UnnamedFile::sync() {
    const bool isOnDisk = ::fsync(file_.number()) == 0;
    if (!isOnDisk) error_ = errno;
    return isOnDisk;
}

bool UnnamedFile::syncAll() const {
    return syncsTogether(file_.number()) && ::syncfs(file_.number()) == 0;
}

bool UnnamedFile::isSyncedWith(const UnnamedFile& other) const {
    struct stat own = {};
    struct stat others = {};
    const bool isSameSystem = ::fstat(file_.number(), &own) == 0 && ::fstat(other.file_.number(), &others) == 0 &&
                              own.st_dev == others.st_dev;
    return isSameSystem && hasReachedDisk(file_.number());
}

bool UnnamedFile::giveHiddenName(const QByteArray& folder) {
    for (int i = 0; i < kNamesToTry; ++i) {
        const QByteArray name = hiddenNameIn(folder);
        if (giveName(file_, name)) {
            hiddenName_ = name;
            return true;
        }
        if (errno != EEXIST) return false;
    }
    return false;
}

bool UnnamedFile::place() {
    if (hiddenName_.isEmpty()) {
        if (giveName(file_, target_)) return true;
        // Only a rename replaces an existing file atomically.
        if (errno != EEXIST || !giveHiddenName(folderOf(target_))) {
            error_ = errno;
            return false;
        }
    }
    if (std::rename(hiddenName_.constData(), target_.constData()) != 0) {
        error_ = errno;
        return false;
    }
    hiddenName_.clear();
    return true;
}

void UnnamedFile::syncFolder() const {
    const FileDescriptor folder(::open(folderOf(target_).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.isOpen()) ::fsync(folder.number());
}

} // namespace quillow
