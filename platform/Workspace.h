// Port: the desktop environment: its file viewer, its default applications, its definition of a file package.
#pragma once

#include <QString>
#include <QUrl>

namespace quillow {

class Workspace {
public:
    virtual ~Workspace() = default;

    /// True for a folder that the user sees as one document: its extension is "rtfd" in any letter case and it is not
    /// empty. A trailing slash makes no difference. False for every other folder, for files and for missing items.
    [[nodiscard]] virtual bool isFilePackageAtPath(const QString& path) const = 0;

    /// Shows the item selected in the file viewer. An empty root path means the item's own folder.
    virtual void selectFile(const QString& path, const QString& inFileViewerRootedAtPath) = 0;

    /// Opens the item with its default application.
    virtual void openFile(const QString& path) = 0;

    /// Opens the URL with the desktop's application for it, such as a browser or a mail program. An invalid URL opens
    /// nothing. Failures are not reported.
    virtual void openURL(const QUrl& url) = 0;
};

} // namespace quillow
