#include "base/PathStrings.h"

#include "base/PathBytes.h"

namespace quillow {
namespace {

/// The path without trailing slashes; "/" stays.
QString withoutTrailingSlashes(const QString& path) {
    qsizetype end = path.size();
    while (end > 1 && path[end - 1] == u'/')
        --end;
    return path.left(end);
}

/// The index of the dot before the extension in a path without trailing slashes; -1 if there is no extension.
qsizetype extensionDot(const QString& trimmed) {
    const qsizetype nameStart = trimmed.lastIndexOf(u'/') + 1;
    const qsizetype dot = trimmed.lastIndexOf(u'.');
    const bool isInsideName = dot > nameStart && dot < trimmed.size() - 1;
    return isInsideName ? dot : -1;
}

} // namespace

QString lastPathComponent(const QString& path) {
    const QString trimmed = withoutTrailingSlashes(path);
    if (trimmed.size() <= 1) return trimmed;
    return trimmed.mid(trimmed.lastIndexOf(u'/') + 1);
}

QString pathExtension(const QString& path) {
    const QString trimmed = withoutTrailingSlashes(path);
    const qsizetype dot = extensionDot(trimmed);
    return dot < 0 ? QString() : trimmed.mid(dot + 1);
}

QString stringByDeletingPathExtension(const QString& path) {
    const QString trimmed = withoutTrailingSlashes(path);
    const qsizetype dot = extensionDot(trimmed);
    return dot < 0 ? trimmed : trimmed.left(dot);
}

QString pathOfURL(const QUrl& url) {
    return url.isLocalFile() ? pathFromFileUrl(url) : QString();
}

QString lowercaseString(const QString& text) {
    // QString::toLower() follows Unicode and ignores the locale.
    return text.toLower();
}

} // namespace quillow
