#include "platform/qt/dragdrop/FileTransferPortal.h"

#include <QDBusMessage>
#include <QDBusReply>
#include <QVariantMap>

namespace quillow {
namespace {

/// The portal replies from memory. A portal that hangs must not block the program for D-Bus's usual 25 seconds.
constexpr int kLimitMilliseconds = 5000;

/// The key, without the zero byte with which some tool kits end it.
QString keyOf(const QMimeData& data) {
    return QString::fromUtf8(data.data(QLatin1String(FileTransferPortal::kMimeType)).constData());
}

} // namespace

std::optional<QStringList> FileTransferPortal::retrieveFiles(const QMimeData& data) const {
    const QString key = keyOf(data);
    if (key.isEmpty()) return std::nullopt;
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.portal.Documents"), QStringLiteral("/org/freedesktop/portal/documents"),
        QStringLiteral("org.freedesktop.portal.FileTransfer"), QStringLiteral("RetrieveFiles"));
    call.setArguments({key, QVariantMap()});
    const QDBusReply<QStringList> reply = bus_().call(call, QDBus::Block, kLimitMilliseconds);
    if (!reply.isValid()) return std::nullopt;

    QStringList paths;
    for (QString path : reply.value()) {
        while (path.size() > 1 && path.endsWith(u'/'))
            path.chop(1);
        if (!path.startsWith(u'/')) return std::nullopt;
        paths.append(path);
    }
    return paths.isEmpty() ? std::nullopt : std::optional(paths);
}

} // namespace quillow
