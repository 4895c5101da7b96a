// The dialogs for choosing folders and documents: the desktop's own if its portal offers them, else ours.
#pragma once

#include "platform/Workspace.h"
#include "platform/qt/dialogs/FilePortal.h"

#include <QDialog>
#include <QStringList>

namespace quillow {

[[nodiscard]] QDialog* makeOpenDialog(const FilePortal& portal, const FileQuestion& question,
                                      const Workspace& workspace, QWidget* window);

/// The paths chosen in a dialog made here. Call it after the dialog was accepted. The portal's dialog shows an RTFD
/// bundle as a folder, so its file TXT.rtf means the bundle.
[[nodiscard]] QStringList chosenPathsOf(const QDialog& dialog, const Workspace& workspace);

} // namespace quillow
