#include "platform/qt/files/QtFileSystem.h"

#include "base/PathBytes.h"
#include "platform/qt/files/FileIdentity.h"
#include "posix/FileDescriptor.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <memory>
#include <new>
#include <system_error>

namespace quillow {
namespace {

constexpr mode_t kModeOfNewFiles = 0666; // the umask applies
constexpr mode_t kModeOfNewFolders = 0777;

/// The bytes of an absolute path, without trailing slashes; std::nullopt for any other path.
std::optional<QByteArray> systemPath(const QString& path) {
    QByteArray bytes = pathToBytes(path);
    while (bytes.size() > 1 && bytes.endsWith('/'))
        bytes.chop(1);
    return bytes.startsWith('/') && !bytes.contains('\0') ? std::optional(bytes) : std::nullopt;
}

/// The file that a write to `path` replaces: the target, if the path is a symbolic link to an existing item.
QByteArray replacedFile(const QByteArray& path) {
    return realPath(path).value_or(path);
}

struct OpenFile {
    FileDescriptor descriptor;
    off_t size;
};

/// The file for reading; std::nullopt for other items than files.
std::optional<OpenFile> openFile(const QString& path) {
    const auto name = systemPath(path);
    if (!name) return std::nullopt;
    // O_NONBLOCK, so that a named pipe with a document's name cannot block the program.
    OpenFile file{FileDescriptor(::open(name->constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY)), 0};
    struct stat status = {};
    if (!file.descriptor.isOpen() || ::fstat(file.descriptor.number(), &status) != 0) return std::nullopt;
    if (!S_ISREG(status.st_mode)) return std::nullopt;
    file.size = status.st_size;
    return file;
}

bool hasMemoryFor(off_t size) {
    const std::unique_ptr<std::byte[]> memory(new (std::nothrow) std::byte[static_cast<std::size_t>(size) + 1]);
    return memory != nullptr;
}

/// All bytes of an open file. `size` is its size when it was opened. Returns std::nullopt after an error, or if the
/// file grew past the limit.
std::optional<QByteArray> wholeFile(int descriptor, qsizetype size) {
    // One byte more than the size, so that reading to the end of an unchanged file needs no reallocation.
    QByteArray bytes(size + 1, Qt::Uninitialized);
    qsizetype length = 0;
    while (true) {
        if (length == bytes.size()) {
            if (length > QtFileSystem::kMaximumFileSize) return std::nullopt;
            bytes.resize(length * 2);
        }
        const ssize_t count =
            ::read(descriptor, bytes.data() + length, static_cast<std::size_t>(bytes.size() - length));
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return std::nullopt;
        if (count == 0) break;
        length += count;
    }
    bytes.truncate(length);
    return bytes;
}

} // namespace

std::optional<QByteArray> QtFileSystem::contentsOfFile(const QString& path) const {
    const auto file = openFile(path);
    if (!file || file->size > kMaximumFileSize) return std::nullopt;
    try {
        return wholeFile(file->descriptor.number(), static_cast<qsizetype>(file->size));
    } catch (const std::bad_alloc&) {
        return std::nullopt; // too large for the free memory
    }
}

bool QtFileSystem::isTooLarge(const QString& path) const {
    const auto file = openFile(path);
    return file && (file->size > kMaximumFileSize || !hasMemoryFor(file->size));
}

bool QtFileSystem::fileExistsAtPath(const QString& path, bool* isDirectory) const {
    const auto name = systemPath(path);
    struct stat status = {};
    if (!name || ::stat(name->constData(), &status) != 0) return false;
    if (isDirectory) *isDirectory = S_ISDIR(status.st_mode);
    return true;
}

bool QtFileSystem::writeToFileAtomically(const QByteArray& bytes, const QString& path, const WriteFailed& failed) {
    UnnamedFile file = writeUnnamed(bytes, path);
    if (!file.isWritten() || !file.sync() || !file.place()) {
        if (failed) failed(causeOf(file.error()));
        return false;
    }
    // The write succeeds even if the new name does not reach the disk.
    file.syncFolder();
    return true;
}

QString QtFileSystem::causeOf(int error) {
    return QString::fromLocal8Bit(std::generic_category().message(error).c_str());
}

UnnamedFile QtFileSystem::writeUnnamed(const QByteArray& bytes, const QString& path) {
    const auto name = systemPath(path);
    if (!name) return UnnamedFile::unwritten(EINVAL);
    const QByteArray target = replacedFile(*name);
    if (!access_.mayWrite(pathFromBytes(*name)) || !access_.mayWrite(pathFromBytes(target)))
        return UnnamedFile::unwritten(EROFS);

    struct stat former = {};
    const bool replaces = ::stat(target.constData(), &former) == 0;
    if (replaces && S_ISDIR(former.st_mode)) return UnnamedFile::unwritten(EISDIR);
    return {target, bytes, replaces && S_ISREG(former.st_mode) ? &former : nullptr};
}

bool QtFileSystem::createDirectory(const QString& path) {
    const auto name = systemPath(path);
    if (!name || !access_.mayWrite(pathFromBytes(*name))) return false;
    for (qsizetype slash = 1; slash > 0;) {
        slash = name->indexOf('/', slash);
        const QByteArray folder = slash < 0 ? *name : name->left(slash);
        if (::mkdir(folder.constData(), kModeOfNewFolders) != 0 && errno != EEXIST) break;
        if (slash > 0) ++slash;
    }
    bool isDirectory = false;
    return fileExistsAtPath(path, &isDirectory) && isDirectory;
}

std::optional<QStringList> QtFileSystem::contentsOfDirectory(const QString& path) const {
    const auto name = systemPath(path);
    if (!name) return std::nullopt;
    const std::unique_ptr<DIR, int (*)(DIR*)> stream(::opendir(name->constData()), &::closedir);
    if (!stream) return std::nullopt;
    QStringList names;
    while (const dirent* entry = ::readdir(stream.get())) {
        const QByteArray entryName(entry->d_name);
        if (entryName != "." && entryName != "..") names.append(pathFromBytes(entryName));
    }
    return names;
}

bool QtFileSystem::copyItem(const QString& path, const QString& toPath) {
    const auto target = systemPath(toPath);
    const auto bytes = contentsOfFile(path);
    if (!target || !bytes || !access_.mayWrite(pathFromBytes(*target))) return false;
    // O_EXCL does not follow symbolic links, so a dangling link also makes this fail.
    FileDescriptor file(
        ::open(target->constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, kModeOfNewFiles));
    if (!file.isOpen()) return false;
    const bool isWritten = writeAll(file.number(), {bytes->constData(), static_cast<std::size_t>(bytes->size())});
    if (file.close() && isWritten) return true;
    ::unlink(target->constData());
    return false;
}

bool QtFileSystem::removeItem(const QString& path) {
    const auto name = systemPath(path);
    if (!name || !access_.mayWrite(pathFromBytes(*name))) return false;
    std::error_code error;
    const auto count = std::filesystem::remove_all(name->toStdString(), error);
    return !error && count > 0;
}

} // namespace quillow
