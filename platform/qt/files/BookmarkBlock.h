// What a bookmark holds, and its bytes: a self-describing block, a tag and a CBOR map (RFC 8949).
#pragma once

#include "platform/qt/files/AccessRegistry.h"
#include "platform/qt/files/FileIdentity.h"

#include <QByteArray>

#include <optional>

namespace quillow {

struct BookmarkBlock {
    /// The item that the path led to when there were symbolic links in it.
    struct Target {
        QByteArray path; ///< absolute, without links
        FileIdentity identity;
    };

    AccessMode mode = AccessMode::readWrite;
    QByteArray path;                        ///< absolute, as the bytes that the file system uses
    std::optional<QByteArray> relativePath; ///< from the document's folder; only in document-scoped bookmarks
    FileIdentity identity;                  ///< if the path itself is a symbolic link: that of the link
    std::optional<std::uint64_t> parentInode;
    std::optional<Target> target; ///< only if the path has symbolic links in it

    [[nodiscard]] QByteArray toBytes() const;
    /// Nothing for bytes that are no bookmark of this version.
    [[nodiscard]] static std::optional<BookmarkBlock> fromBytes(const QByteArray& bytes);
};

} // namespace quillow
