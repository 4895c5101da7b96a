// The desktop around the program: its file viewer over D-Bus, its default applications.
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
    /// By org.freedesktop.FileManager1; where no file manager answers to that, the folder around the item is opened.
    void selectFile(const QString& path, const QString& inFileViewerRootedAtPath) override;
    void openFile(const QString& path) override;
    /// Only addresses of the web and of mail: what is opened may come from the network.
    void openURL(const QUrl& url) override;

private:
    QDBusConnection sessionBus_;
    std::function<void(const QUrl&)> openUrl_;
};

} // namespace quillow
