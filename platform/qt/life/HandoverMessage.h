// The message from a second start of the program to the running one: documents, and the data that lets a window come
// to the front.
//
// The message is a tag and counted byte strings: the tag's eight bytes, then for each string its length (four bytes,
// most significant first) and its bytes: startup id, activation token, working folder, then the names of the
// documents.
#pragma once

#include <QByteArray>
#include <QList>
#include <QStringList>

#include <optional>

namespace quillow {

struct Handover {
    QByteArray startupId;       ///< from the launcher (Startup Notification Protocol); may be empty
    QByteArray activationToken; ///< from the launcher under Wayland (xdg-activation); may be empty
    QByteArray folder;          ///< the working folder, the base of relative names
    QList<QByteArray> names;    ///< document names in order, as arbitrary bytes

    bool operator==(const Handover&) const = default;
};

/// Longer messages are refused. Linux accepts command lines of at most 6 MiB: three quarters of execve's stack limit
/// of 8 MiB.
inline constexpr qsizetype kMaximumHandoverSize = qsizetype{8} * 1024 * 1024;

[[nodiscard]] QByteArray encodedHandover(const Handover& handover);
/// Returns std::nullopt if the bytes are not a complete message.
[[nodiscard]] std::optional<Handover> decodedHandover(const QByteArray& message);

/// The documents as absolute paths. Empty and "." components are removed. ".." is kept, because after a symbolic link
/// it cannot be resolved as text. Empty names, and names that cannot be made absolute, are left out.
[[nodiscard]] QStringList absolutePathsOf(const Handover& handover);

} // namespace quillow
