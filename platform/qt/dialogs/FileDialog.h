// Qt's file dialog with a line of text above it, for desktops without a portal.
#pragma once

#include "platform/qt/dialogs/FileQuestion.h"

#include <QFileDialog>

namespace quillow {

class FileDialog : public QFileDialog {
public:
    /// Starts in the question's folder if it exists, else in the home folder.
    FileDialog(const FileQuestion& question, QWidget* parent);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace quillow
