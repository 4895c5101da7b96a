// The desktop environment: its file viewer over D-Bus, its default applications, its portal for both.
#pragma once

#include "platform/Workspace.h"

#include <QDBusConnection>
#include <QUrl>

#include <functional>

namespace quillow {

/// Whether the program is installed as a Flatpak. Then it reaches other programs through portals only.
enum class Sandbox { none, flatpak };
[[nodiscard]] Sandbox sandboxOfProgram();

class QtWorkspace final : public Workspace {
public:
    using Bus = std::function<QDBusConnection()>;
    /// Hands a URL to the desktop. Returns false if there is no way to do so.
    using OpenUrl = std::function<bool(const QUrl&)>;

    /// `sessionBus` is called when an item is shown or opened. An empty `openUrl` means Qt's own.
    explicit QtWorkspace(Bus sessionBus = &QDBusConnection::sessionBus, OpenUrl openUrl = {},
                         Sandbox sandbox = sandboxOfProgram());

    [[nodiscard]] bool isFilePackageAtPath(const QString& path) const override;
    /// Calls org.freedesktop.FileManager1. If no file manager implements it, opens the item's folder. In a sandbox, and
    /// if nothing else works, asks the portal org.freedesktop.portal.OpenURI.
    void selectFile(const QString& path, const QString& inFileViewerRootedAtPath) override;
    /// Asks the same portal in a sandbox, and if nothing else works.
    void openFile(const QString& path) override;
    /// Opens only web and mail URLs, because the URL may come from the network.
    void openURL(const QUrl& url) override;

private:
    Bus sessionBus_;
    OpenUrl openUrl_;
    Sandbox sandbox_;
};

} // namespace quillow
