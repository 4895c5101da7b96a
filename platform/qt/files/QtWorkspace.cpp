#include "platform/qt/files/QtWorkspace.h"

#include "base/PathBytes.h"
#include "posix/FileDescriptor.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusUnixFileDescriptor>
#include <QDesktopServices>
#include <QVariantMap>

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <cstring>
#include <memory>
#include <utility>

namespace quillow {
namespace {

/// The other program may have to start first. The call does not block meanwhile.
constexpr int kLimitMilliseconds = 10000;

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

/// Calls `otherwise` if the call fails.
void send(const QDBusConnection& bus, const QDBusMessage& call, const std::function<void()>& otherwise) {
    if (!bus.isConnected()) {
        otherwise();
        return;
    }
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(call, kLimitMilliseconds));
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher,
                     [otherwise](QDBusPendingCallWatcher* finished) {
                         if (finished->isError()) otherwise();
                         finished->deleteLater();
                     });
}

void showInFileManager(const QDBusConnection& bus, const QString& item, const std::function<void()>& otherwise) {
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
    const QString startupId;
    call << QStringList{fileUrlFromPath(item).toString(QUrl::FullyEncoded)} << startupId;
    send(bus, call, otherwise);
}

/// Calls OpenFile or OpenDirectory of org.freedesktop.portal.OpenURI. The latter shows the item in its folder.
void askPortal(const QString& method, const QDBusConnection& bus, const QString& item,
               const std::function<void()>& otherwise) {
    const FileDescriptor file(::open(pathToBytes(item).constData(), O_PATH | O_CLOEXEC));
    if (!file.isOpen()) {
        otherwise();
        return;
    }
    QDBusMessage call = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.portal.Desktop"),
                                                       QStringLiteral("/org/freedesktop/portal/desktop"),
                                                       QStringLiteral("org.freedesktop.portal.OpenURI"), method);
    const QString parentWindow;
    call << parentWindow << QVariant::fromValue(QDBusUnixFileDescriptor(file.number())) << QVariantMap();
    send(bus, call, otherwise);
}

} // namespace

Sandbox sandboxOfProgram() {
    return ::access("/.flatpak-info", F_OK) == 0 ? Sandbox::flatpak : Sandbox::none;
}

QtWorkspace::QtWorkspace(Bus sessionBus, OpenUrl openUrl, Sandbox sandbox)
    : sessionBus_(std::move(sessionBus))
    , openUrl_(openUrl ? std::move(openUrl) : &QDesktopServices::openUrl)
    , sandbox_(sandbox) {}

bool QtWorkspace::isFilePackageAtPath(const QString& path) const {
    const QByteArray bytes = withoutSlashes(path);
    const QByteArray name = bytes.mid(bytes.lastIndexOf('/') + 1);
    // The leading dot of a hidden name does not start an extension.
    return name.lastIndexOf('.') > 0 && name.toLower().endsWith(".rtfd") && hasEntries(bytes);
}

void QtWorkspace::selectFile(const QString& path, const QString&) {
    const QString item = pathFromBytes(withoutSlashes(path));
    const QUrl folder = fileUrlFromPath(item.left(std::max<qsizetype>(1, item.lastIndexOf(QLatin1Char('/')))));
    const QDBusConnection bus = sessionBus_();
    const auto showByPortal = [bus, item](const std::function<void()>& otherwise) {
        askPortal(QStringLiteral("OpenDirectory"), bus, item, otherwise);
    };
    const auto showOutsideOfPortal = [bus, item, folder, showByPortal, openUrl = openUrl_] {
        showInFileManager(bus, item, [folder, showByPortal, openUrl] {
            if (!openUrl(folder)) showByPortal([] {});
        });
    };
    if (sandbox_ == Sandbox::flatpak)
        showByPortal(showOutsideOfPortal);
    else
        showOutsideOfPortal();
}

void QtWorkspace::openFile(const QString& path) {
    const QUrl url = fileUrlFromPath(path);
    const auto openByPortal = [this, path](const std::function<void()>& otherwise) {
        askPortal(QStringLiteral("OpenFile"), sessionBus_(), path, otherwise);
    };
    if (sandbox_ == Sandbox::flatpak)
        openByPortal([url, openUrl = openUrl_] { openUrl(url); });
    else if (!openUrl_(url))
        openByPortal([] {});
}

void QtWorkspace::openURL(const QUrl& url) {
    const QString scheme = url.scheme();
    if (url.isValid() && (scheme == u"http" || scheme == u"https" || scheme == u"mailto")) openUrl_(url);
}

} // namespace quillow
