// Qt's own file dialog with a line of text above it: the desktops' dialogs have no place for one.
#pragma once

#include <QFileDialog>

namespace quillow {

class FileDialog : public QFileDialog {
public:
    FileDialog(const QString& message, const QString& prompt, QWidget* parent);
    /// Starts in the folder when there is one at the path, else in the home folder.
    void startIn(const QString& path);
};

} // namespace quillow
