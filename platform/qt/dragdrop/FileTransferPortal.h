// Files that a sandboxed program drags, or that are dragged into our own sandbox: the drag holds only a key, and the desktop's
// portal (org.freedesktop.portal.FileTransfer, version 1) hands out the files for it, under paths that this program can reach.
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

    /// `bus` is called when there is something to ask for.
    explicit FileTransferPortal(std::function<QDBusConnection()> bus = &QDBusConnection::sessionBus)
        : bus_(std::move(bus)) {}

    /// Whether the drag's files may be asked for.
    [[nodiscard]] static bool hasKey(const QMimeData& data) { return data.hasFormat(QLatin1String(kMimeType)); }

    /// The paths behind the drag's key, without slashes at their ends. Waits for the portal, a few seconds at most, and
    /// delivers no event meanwhile. Nothing when there is no portal, no such key, or an answer that is no list of whole paths.
    [[nodiscard]] std::optional<QStringList> retrieveFiles(const QMimeData& data) const;

private:
    std::function<QDBusConnection()> bus_;
};

} // namespace quillow
