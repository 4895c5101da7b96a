// A dialog of the portal in the place of one of ours. This dialog itself is not on the screen: while it is open, it
// keeps its window from being used, as a sheet does. If the portal cannot show its dialog, ours takes its place.
#pragma once

#include "platform/qt/dialogs/FilePortal.h"

#include <QDialog>
#include <QPointer>

#include <functional>
#include <memory>

namespace quillow {

class PortalDialog final : public QDialog {
public:
    using MakeDialog = std::function<QDialog*(QWidget* window)>;
    PortalDialog(FilePortal portal, FileQuestion question, MakeDialog makeOwn, QWidget* window);
    PortalDialog(const PortalDialog&) = delete;
    PortalDialog& operator=(const PortalDialog&) = delete;
    ~PortalDialog() override;

    /// The paths that the user chose in the portal's dialog.
    [[nodiscard]] const QStringList& paths() const { return paths_; }
    /// Our dialog, if it took the place of the portal's; else null. It ends with this dialog and has the same result.
    [[nodiscard]] QDialog* own() const { return own_; }

    void setVisible(bool isVisible) override;
    void done(int result) override;

private:
    void take(const FileAnswer& answer);
    void showOwn();

    FilePortal portal_;
    FileQuestion question_;
    MakeDialog makeOwn_;
    std::unique_ptr<PortalRequest> request_;
    QPointer<QDialog> own_;
    QStringList paths_;
};

} // namespace quillow
