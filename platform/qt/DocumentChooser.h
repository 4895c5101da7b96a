// The dialog in which documents are chosen without a mouse. An RTFD bundle is a folder on the disk and one document here.
#pragma once

#include "platform/Workspace.h"
#include "platform/qt/FileDialog.h"

#include <functional>

namespace quillow {

class DocumentChooser final : public FileDialog {
public:
    DocumentChooser(const Workspace& workspace, QWidget* parent);

    /// Called with the chosen paths, once, after the dialog has closed.
    void setHandler(std::function<void(const QStringList& paths)> handler) { handler_ = std::move(handler); }

protected:
    void accept() override;

private:
    void choose(const QStringList& paths);

    const Workspace& workspace_;
    std::function<void(const QStringList&)> handler_;
};

} // namespace quillow
