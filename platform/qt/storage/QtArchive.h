// Keyed archives in files (KeyedArchive.h), read completely and replaced atomically.
#pragma once

#include "platform/Archive.h"
#include "platform/FileSystem.h"

#include <QSet>

namespace quillow {

class QtArchive final : public Archive {
public:
    /// Larger files are not read: memory holds several copies of a file's texts.
    static constexpr qsizetype kLargestFile = qsizetype{256} << 20;

    explicit QtArchive(FileSystem& fileSystem)
        : fileSystem_(fileSystem) {}

    bool archiveRootObject(const Boxed& root, const QString& toFile) override;
    [[nodiscard]] Boxed unarchiveObjectWithFile(const QString& path) override;
    /// Writes the log line to standard error.
    void putAside(const QString& path) override;

private:
    FileSystem& fileSystem_;
    QSet<QString> unmovable_; ///< paths with an item that could not be put aside
};

} // namespace quillow
