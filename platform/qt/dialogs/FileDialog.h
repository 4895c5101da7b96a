// Qt's own file dialog with a line of text above it. The desktops' native dialogs have no place for such a line.
#pragma once

#include <QFileDialog>

namespace quillow {

class FileDialog : public QFileDialog {
public:
    FileDialog(const QString& message, const QString& prompt, QWidget* parent);
    /// Starts in the folder at the path if it exists, else in the home folder.
    void startIn(const QString& path);
};

} // namespace quillow
