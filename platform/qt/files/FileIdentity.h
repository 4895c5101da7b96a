// Identifies a file or folder, even after a move within its file system.
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
    std::uint64_t device = 0;     ///< may change when the machine restarts
    std::uint64_t fileSystem = 0; ///< the file system's own id; 0 if it has none
    std::uint64_t inode = 0;
    std::optional<BirthTime> birthTime; ///< std::nullopt if the file system records none
    bool isDirectory = false;

    /// The identity of the item at a path. A symbolic link as the last component is not followed. Returns
    /// std::nullopt if there is no item.
    [[nodiscard]] static std::optional<FileIdentity> ofItem(const QByteArray& path);

    [[nodiscard]] bool isOnFileSystemOf(const FileIdentity& other) const;
    /// Returns true for the same item. Inode numbers are reused, so birth times are compared too if both sides have
    /// one.
    [[nodiscard]] bool isSameItemAs(const FileIdentity& other) const;
};

/// The path after all symbolic links are resolved; std::nullopt if no item exists there.
[[nodiscard]] std::optional<QByteArray> realPath(const QByteArray& path);

} // namespace quillow
