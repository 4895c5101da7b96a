// Keyed archives in files (KeyedArchive.h), read whole and replaced at once.
#pragma once

#include "platform/Archive.h"
#include "platform/FileSystem.h"

#include <QSet>

namespace quillow {

class QtArchive final : public Archive {
public:
    /// Larger files are not read: the texts in one are held in memory several times over.
    static constexpr qsizetype kLargestFile = qsizetype{256} << 20;

    explicit QtArchive(FileSystem& fileSystem)
        : fileSystem_(fileSystem) {}

    bool archiveRootObject(const Boxed& root, const QString& toFile) override;
    [[nodiscard]] Boxed unarchiveObjectWithFile(const QString& path) override;
    /// The line goes to standard error.
    void putAside(const QString& path) override;

private:
    FileSystem& fileSystem_;
    QSet<QString> unmovable_; ///< paths at which something stands that could not be put aside
};

} // namespace quillow
