// The contents of a bookmark and their serialisation: a self-describing block of a tag and a CBOR map (RFC 8949).
#pragma once

#include "platform/qt/files/AccessRegistry.h"
#include "platform/qt/files/FileIdentity.h"

#include <QByteArray>

#include <optional>

namespace quillow {

struct BookmarkBlock {
    /// The item that the path led to, if the path contained symbolic links.
    struct Target {
        QByteArray path; ///< absolute, without links
        FileIdentity identity;
    };

    AccessMode mode = AccessMode::readWrite;
    QByteArray path;                        ///< absolute, in the file system's bytes
    std::optional<QByteArray> relativePath; ///< relative to the document's folder; only in document-scoped bookmarks
    FileIdentity identity;                  ///< of the item; if the path itself is a symbolic link, of the link
    std::optional<std::uint64_t> parentInode;
    std::optional<Target> target; ///< only if the path contains symbolic links

    [[nodiscard]] QByteArray toBytes() const;
    /// Returns std::nullopt if the bytes are not a bookmark of this version.
    [[nodiscard]] static std::optional<BookmarkBlock> fromBytes(const QByteArray& bytes);
};

} // namespace quillow
