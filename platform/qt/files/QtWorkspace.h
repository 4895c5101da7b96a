// The desktop environment: its file viewer over D-Bus, its default applications.
#pragma once

#include "platform/Workspace.h"

#include <QDBusConnection>
#include <QUrl>

#include <functional>

namespace quillow {

class QtWorkspace final : public Workspace {
public:
    /// `openUrl` hands a URL to the desktop.
    explicit QtWorkspace(QDBusConnection sessionBus = QDBusConnection::sessionBus(),
                         std::function<void(const QUrl&)> openUrl = {});

    [[nodiscard]] bool isFilePackageAtPath(const QString& path) const override;
    /// Calls org.freedesktop.FileManager1. If no file manager implements it, opens the item's folder.
    void selectFile(const QString& path, const QString& inFileViewerRootedAtPath) override;
    void openFile(const QString& path) override;
    /// Opens only web and mail URLs, because the URL may come from the network.
    void openURL(const QUrl& url) override;

private:
    QDBusConnection sessionBus_;
    std::function<void(const QUrl&)> openUrl_;
};

} // namespace quillow
