// Choosing documents without a mouse.
#pragma once

#include "platform/Workspace.h"
#include "platform/qt/dialogs/FilePortal.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <utility>

class QWidget;

namespace quillow {

class DocumentChooser {
public:
    using Handler = std::function<void(const QStringList& paths)>;
    explicit DocumentChooser(const Workspace& workspace, FilePortal portal = FilePortal())
        : workspace_(workspace)
        , portal_(std::move(portal)) {}

    /// Shows a dialog on the window, in the folder of the documents that were chosen before. The handler is called with
    /// the chosen paths, unless the user cancels.
    void open(QWidget* window, Handler handler);

private:
    const Workspace& workspace_;
    FilePortal portal_;
    QString folder_;
};

} // namespace quillow
