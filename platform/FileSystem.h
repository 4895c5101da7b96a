// Port: whole files and what stands at a path. Paths are absolute; at any other path, the empty one included, nothing stands.
// A slash at the end makes no difference.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace quillow {

class FileSystem {
public:
    virtual ~FileSystem() = default;

    /// The whole file, or nothing when it cannot be read (missing, a folder, no permission, an I/O error on the way).
    /// An empty file answers empty bytes, which are not nothing.
    [[nodiscard]] virtual std::optional<QByteArray> contentsOfFile(const QString& path) const = 0;

    /// True when an item exists at the path, symbolic links followed; `isDirectory` (may be null) then tells whether it is
    /// a folder, and is left alone otherwise.
    [[nodiscard]] virtual bool fileExistsAtPath(const QString& path, bool* isDirectory) const = 0;

    /// Replaces the file at the path by these bytes, atomically: a reader sees the old file or the whole new one, and a
    /// failure leaves the old one. False when it could not be written; also when the path lies under a folder that was
    /// opened through a read-only bookmark.
    virtual bool writeToFileAtomically(const QByteArray& bytes, const QString& path) = 0;
};

} // namespace quillow
