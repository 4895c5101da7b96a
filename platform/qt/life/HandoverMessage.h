// What a second start of the program hands to the one that runs: documents, and what lets a window come to the front.
//
// The message is a tag and counted byte strings: the tag's eight bytes, then for each string its length (four bytes, most
// significant first) and its bytes: startup id, activation token, working folder, then the names of the documents.
#pragma once

#include <QByteArray>
#include <QList>
#include <QStringList>

#include <optional>

namespace quillow {

struct Handover {
    QByteArray startupId;       ///< of the launcher (Startup Notification Protocol); may be empty
    QByteArray activationToken; ///< of the launcher under Wayland (xdg-activation); may be empty
    QByteArray folder;          ///< the working folder that relative names start from
    QList<QByteArray> names;    ///< of the documents, in any bytes, in order

    bool operator==(const Handover&) const = default;
};

/// Longer messages are refused. Linux takes command lines of at most 6 MiB (three quarters of the 8 MiB that its execve
/// counts with).
inline constexpr qsizetype kMaximumHandoverSize = qsizetype{8} * 1024 * 1024;

[[nodiscard]] QByteArray encodedHandover(const Handover& handover);
/// Nothing for bytes that are no whole message.
[[nodiscard]] std::optional<Handover> decodedHandover(const QByteArray& message);

/// The documents as absolute paths. Empty and "." components go; ".." stays, since it is not textual behind a symbolic link.
/// A name that cannot be made absolute is left out, as is an empty one.
[[nodiscard]] QStringList absolutePathsOf(const Handover& handover);

} // namespace quillow
