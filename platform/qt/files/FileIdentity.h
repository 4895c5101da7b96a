// What tells one file or folder from every other, wherever it is moved on its file system.
#pragma once

#include <QByteArray>

#include <cstdint>
#include <optional>

namespace quillow {

struct BirthTime {
    std::int64_t seconds = 0;
    std::int64_t nanoseconds = 0;
    friend bool operator==(const BirthTime&, const BirthTime&) = default;
};

struct FileIdentity {
    std::uint64_t device = 0;     ///< may change from one start of the machine to the next
    std::uint64_t fileSystem = 0; ///< the file system's own id; 0 where it has none
    std::uint64_t inode = 0;
    std::optional<BirthTime> birthTime; ///< nothing where the file system keeps none
    bool isDirectory = false;

    /// The identity of the item at a path, the path's last link not followed; nothing when there is no item.
    [[nodiscard]] static std::optional<FileIdentity> ofItem(const QByteArray& path);

    [[nodiscard]] bool isOnFileSystemOf(const FileIdentity& other) const;
    /// True for the same item. Inode numbers are used again, birth times are not; where either side knows no birth time, it
    /// is not compared.
    [[nodiscard]] bool isSameItemAs(const FileIdentity& other) const;
};

/// The path after all symbolic links are resolved; nothing if no item exists there.
[[nodiscard]] std::optional<QByteArray> realPath(const QByteArray& path);

} // namespace quillow
