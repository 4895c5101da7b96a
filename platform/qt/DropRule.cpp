#include "platform/qt/DropRule.h"

#include "base/PathBytes.h"

#include <QSysInfo>
#include <QUrl>

namespace quillow {
namespace {

/// RFC 8089: an empty host and "localhost" are this machine; file managers also write its own name.
bool isThisMachine(const QString& host) {
    return host.isEmpty() || host == QLatin1String("localhost") ||
           host.compare(QSysInfo::machineHostName(), Qt::CaseInsensitive) == 0;
}

/// RFC 2483: lines of a URI list that begin with a number sign are comments.
bool isComment(const QUrl& url) {
    return url.scheme().isEmpty() && url.path().isEmpty() && url.hasFragment();
}

} // namespace

DragOperationMask operationMaskOf(Qt::DropActions offered, LinkAction linkAction) {
    DragOperationMask mask = 0;
    const auto add = [&](Qt::DropAction action, DragOperation operation) {
        if (offered.testFlag(action)) mask |= static_cast<DragOperationMask>(operation);
    };
    add(Qt::CopyAction, DragOperation::copy);
    add(Qt::MoveAction, DragOperation::move);
    add(linkAction == LinkAction::expressible ? Qt::LinkAction : Qt::CopyAction, DragOperation::link);
    return mask;
}

Qt::DropAction dropActionFor(DragOperation answer, Qt::DropActions offered, LinkAction linkAction) {
    const Qt::DropAction action = linkAction == LinkAction::expressible ? Qt::LinkAction : Qt::CopyAction;
    return answer == DragOperation::link && offered.testFlag(action) ? action : Qt::IgnoreAction;
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
