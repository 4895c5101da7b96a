#include "platform/qt/storage/QtArchive.h"

#include "base/PathBytes.h"
#include "platform/qt/plist/KeyedArchive.h"
#include "platform/qt/storage/DamagedFile.h"

#include <cstdio>

namespace quillow {

bool QtArchive::archiveRootObject(const Boxed& root, const QString& toFile) {
    if (unmovable_.contains(toFile)) return false;
    const auto bytes = archivedData(root);
    return bytes && fileSystem_.writeToFileAtomically(*bytes, toFile);
}

Boxed QtArchive::unarchiveObjectWithFile(const QString& path) {
    const auto bytes = fileSystem_.contentsOfFile(path);
    if (!bytes || bytes->size() > kLargestFile) return {};
    const auto archive = KeyedArchive::fromData(*bytes);
    return archive ? archive->valueOf(archive->root()).value_or(Boxed()) : Boxed();
}

void QtArchive::putAside(const QString& path) {
    const auto keptAs = moveDamagedFileAside(path);
    if (!keptAs) unmovable_.insert(path);
    const QString outcome = keptAs ? QStringLiteral("it is kept as %1").arg(*keptAs)
                                   : QStringLiteral("it cannot be moved aside, so nothing is kept of this run");
    const QString line = QStringLiteral("the data file %1 cannot be read; %2").arg(path, outcome);
    std::fprintf(stderr, "quillow: %s\n", pathToBytes(line).constData());
}

} // namespace quillow
