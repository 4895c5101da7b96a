// Files dragged from a sandboxed program, or into our own sandbox. The drag holds only a key; for the key, the
// desktop's portal (org.freedesktop.portal.FileTransfer, version 1) returns file paths that this program can reach.
#pragma once

#include <QDBusConnection>
#include <QMimeData>
#include <QStringList>

#include <functional>
#include <optional>

namespace quillow {

class FileTransferPortal {
public:
    static constexpr char kMimeType[] = "application/vnd.portal.filetransfer";

    /// `bus` is called only if a key needs to be resolved.
    explicit FileTransferPortal(std::function<QDBusConnection()> bus = &QDBusConnection::sessionBus)
        : bus_(std::move(bus)) {}

    /// Whether the drag has a key to files.
    [[nodiscard]] static bool hasKey(const QMimeData& data) { return data.hasFormat(QLatin1String(kMimeType)); }

    /// The paths for the drag's key, without trailing slashes. Waits a few seconds at most for the portal and
    /// delivers no events meanwhile. Returns std::nullopt if there is no portal, if the key is missing or unknown, or
    /// if the reply is not a list of absolute paths.
    [[nodiscard]] std::optional<QStringList> retrieveFiles(const QMimeData& data) const;

private:
    std::function<QDBusConnection()> bus_;
};

} // namespace quillow
