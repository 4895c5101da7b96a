// Port: the desktop around the program: its file viewer, its default applications, what it takes for a file package.
#pragma once

#include <QString>

namespace quillow {

class Workspace {
public:
    virtual ~Workspace() = default;

    /// True for a folder that the user sees as one document: its extension is "rtfd" in any letter case and it is not
    /// empty. A slash at the path's end makes no difference. False for every other folder, for files and for missing items.
    [[nodiscard]] virtual bool isFilePackageAtPath(const QString& path) const = 0;

    /// Shows the item selected in the file viewer. An empty root path means: in whatever folder it lies.
    virtual void selectFile(const QString& path, const QString& inFileViewerRootedAtPath) = 0;

    /// Opens the item with its default application.
    virtual void openFile(const QString& path) = 0;
};

} // namespace quillow
