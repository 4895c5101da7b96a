#include "platform/qt/storage/DamagedFile.h"

#include "base/PathBytes.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdio>

namespace quillow {
namespace {

/// The maximum number of damaged files that are kept.
constexpr int kMostKeptAside = 100;

/// Renames to a path where no item exists.
bool renameOntoNothing(const QByteArray& from, const QByteArray& to) {
    if (::renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE) == 0) return true;
    // Some file systems cannot do this atomically.
    if (errno != EINVAL && errno != ENOSYS) return false;
    struct stat status = {};
    return ::lstat(to.constData(), &status) != 0 && std::rename(from.constData(), to.constData()) == 0;
}

} // namespace

std::optional<QString> moveDamagedFileAside(const QString& path) {
    for (int number = 1; number <= kMostKeptAside; ++number) {
        const QString ending = number == 1 ? QStringLiteral(".damaged") : QStringLiteral(".damaged-%1").arg(number);
        if (renameOntoNothing(pathToBytes(path), pathToBytes(path + ending))) return path + ending;
    }
    return std::nullopt;
}

} // namespace quillow
