#include "platform/qt/files/QtWorkspace.h"

#include "base/PathBytes.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDesktopServices>

#include <dirent.h>

#include <cstring>
#include <memory>
#include <utility>

namespace quillow {
namespace {

/// The file manager may have to start first. The call does not block meanwhile.
constexpr int kFileManagerTimeoutMilliseconds = 10000;

QByteArray withoutSlashes(const QString& path) {
    QByteArray bytes = pathToBytes(path);
    while (bytes.size() > 1 && bytes.endsWith('/'))
        bytes.chop(1);
    return bytes;
}

bool hasEntries(const QByteArray& folder) {
    const std::unique_ptr<DIR, int (*)(DIR*)> stream(::opendir(folder.constData()), &::closedir);
    if (!stream) return false;
    while (const dirent* entry = ::readdir(stream.get())) {
        if (std::strcmp(entry->d_name, ".") != 0 && std::strcmp(entry->d_name, "..") != 0) return true;
    }
    return false;
}

} // namespace

QtWorkspace::QtWorkspace(QDBusConnection sessionBus, std::function<void(const QUrl&)> openUrl)
    : sessionBus_(std::move(sessionBus))
    , openUrl_(openUrl ? std::move(openUrl) : [](const QUrl& url) { QDesktopServices::openUrl(url); }) {}

bool QtWorkspace::isFilePackageAtPath(const QString& path) const {
    const QByteArray bytes = withoutSlashes(path);
    const QByteArray name = bytes.mid(bytes.lastIndexOf('/') + 1);
    // The leading dot of a hidden name does not start an extension.
    return name.lastIndexOf('.') > 0 && name.toLower().endsWith(".rtfd") && hasEntries(bytes);
}

void QtWorkspace::selectFile(const QString& path, const QString&) {
    const QString item = pathFromBytes(withoutSlashes(path));
    const QUrl folder = fileUrlFromPath(item.left(std::max<qsizetype>(1, item.lastIndexOf(QLatin1Char('/')))));
    if (!sessionBus_.isConnected()) {
        openUrl_(folder);
        return;
    }
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
    const QString startupId;
    call << QStringList{fileUrlFromPath(item).toString(QUrl::FullyEncoded)} << startupId;
    auto* watcher = new QDBusPendingCallWatcher(sessionBus_.asyncCall(call, kFileManagerTimeoutMilliseconds));
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher,
                     [folder, openUrl = openUrl_](QDBusPendingCallWatcher* finished) {
                         if (finished->isError()) openUrl(folder);
                         finished->deleteLater();
                     });
}

void QtWorkspace::openFile(const QString& path) {
    openUrl_(fileUrlFromPath(path));
}

void QtWorkspace::openURL(const QUrl& url) {
    const QString scheme = url.scheme();
    if (url.isValid() && (scheme == u"http" || scheme == u"https" || scheme == u"mailto")) openUrl_(url);
}

} // namespace quillow
