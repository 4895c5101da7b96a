#include "platform/qt/dragdrop/DropRule.h"

#include "base/PathBytes.h"

#include <QSysInfo>
#include <QUrl>

namespace quillow {
namespace {

/// RFC 8089: an empty host and "localhost" mean this machine. File managers also write its host name.
bool isThisMachine(const QString& host) {
    return host.isEmpty() || host == QLatin1String("localhost") ||
           host.compare(QSysInfo::machineHostName(), Qt::CaseInsensitive) == 0;
}

/// RFC 2483: lines of a URI list that begin with a number sign are comments.
bool isComment(const QUrl& url) {
    return url.scheme().isEmpty() && url.path().isEmpty() && url.hasFragment();
}

/// The drop action to accept the files with; Qt::IgnoreAction if they cannot be accepted.
Qt::DropAction actionThatLinks(Qt::DropActions offered, DragWay way) {
    if (offered.testFlag(Qt::LinkAction)) return Qt::LinkAction;
    if (way == DragWay::direct) return Qt::IgnoreAction;
    const bool namesNoAction = way == DragWay::wayland && offered == Qt::IgnoreAction;
    return offered.testFlag(Qt::CopyAction) || namesNoAction ? Qt::CopyAction : Qt::IgnoreAction;
}

} // namespace

DragOperationMask operationMaskOf(Qt::DropActions offered, DragWay way) {
    DragOperationMask mask = 0;
    const auto add = [&mask](bool isOffered, DragOperation operation) {
        if (isOffered) mask |= static_cast<DragOperationMask>(operation);
    };
    add(offered.testFlag(Qt::CopyAction), DragOperation::copy);
    add(offered.testFlag(Qt::MoveAction), DragOperation::move);
    add(actionThatLinks(offered, way) != Qt::IgnoreAction, DragOperation::link);
    return mask;
}

Qt::DropAction dropActionFor(DragOperation answer, Qt::DropActions offered, DragWay way) {
    return answer == DragOperation::link ? actionThatLinks(offered, way) : Qt::IgnoreAction;
}

std::optional<QStringList> localFilesOf(const QMimeData& data) {
    if (!data.hasUrls()) return std::nullopt;
    QStringList paths;
    for (const QUrl& url : data.urls()) {
        if (isComment(url)) continue;
        if (url.scheme() != QLatin1String("file") || !isThisMachine(url.host())) return std::nullopt;
        const QString path = pathFromFileUrl(url);
        if (!path.startsWith(QLatin1Char('/')) || path.contains(QChar::Null)) return std::nullopt;
        paths.append(path);
    }
    return paths.isEmpty() ? std::nullopt : std::optional(paths);
}

} // namespace quillow
