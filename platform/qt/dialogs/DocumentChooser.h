// The dialog for choosing documents without a mouse.
#pragma once

#include "platform/qt/dialogs/OpenDialog.h"

#include <functional>

namespace quillow {

class DocumentChooser final : public OpenDialog {
public:
    DocumentChooser(const Workspace& workspace, QWidget* parent);

    /// Called with the chosen paths, once, after the dialog has closed.
    void setHandler(std::function<void(const QStringList& paths)> handler) { handler_ = std::move(handler); }

private:
    std::function<void(const QStringList&)> handler_;
};

} // namespace quillow
