// Port: whole files, and the items at paths. Paths are absolute; any other path, the empty one included, names no
// item. A trailing slash makes no difference.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace quillow {

class FileSystem {
public:
    virtual ~FileSystem() = default;

    /// The whole file, or std::nullopt if it cannot be read (missing, a folder, no permission, an I/O error). For an
    /// empty file it returns empty bytes, not std::nullopt.
    [[nodiscard]] virtual std::optional<QByteArray> contentsOfFile(const QString& path) const = 0;

    /// True for a file that contentsOfFile() refuses for its size alone: it takes no larger ones, or there is no memory
    /// for it.
    [[nodiscard]] virtual bool isTooLarge(const QString& path) const = 0;

    /// True if an item exists at the path after symbolic links are followed. `*isDirectory` (may be null) is then set
    /// to whether it is a folder; otherwise it is unchanged.
    [[nodiscard]] virtual bool fileExistsAtPath(const QString& path, bool* isDirectory) const = 0;

    /// Atomically replaces the file at the path with these bytes: a reader sees the old file or the whole new one,
    /// and a failure leaves the old one. Returns false if it could not be written, or if the path is under a folder
    /// that was opened through a read-only bookmark.
    bool writeToFileAtomically(const QByteArray& bytes, const QString& path) {
        return writeToFileAtomically(bytes, path, {});
    }
    /// Called with the cause, such as "No space left on device".
    using WriteFailed = std::function<void(const QString& cause)>;
    /// The same. `failed` (may be empty) is called once if the file could not be written: before this function returns
    /// false, or on the main thread before the main queue's next operation.
    virtual bool writeToFileAtomically(const QByteArray& bytes, const QString& path, const WriteFailed& failed) = 0;

    /// Creates a folder and its missing parents. Returns true if a folder exists there afterwards.
    virtual bool createDirectory(const QString& path) = 0;
    /// The names of a folder's entries, hidden ones included, in no particular order; std::nullopt if it cannot be
    /// listed.
    [[nodiscard]] virtual std::optional<QStringList> contentsOfDirectory(const QString& path) const = 0;
    /// Copies a file to a path where no item exists. Returns false if it could not be copied; no partial copy
    /// remains.
    virtual bool copyItem(const QString& path, const QString& toPath) = 0;
    /// Removes a file, or a folder with its contents. Removes a symbolic link itself, not its target.
    virtual bool removeItem(const QString& path) = 0;
};

} // namespace quillow
