// The dialog for choosing folders or documents. An RTFD bundle is a folder on the disk and one document here. Qt's
// dialog does not list names that are not UTF-8. The name field takes a file URL, so the user can paste one that a
// file manager copied.
#pragma once

#include "platform/Workspace.h"
#include "platform/qt/dialogs/FileDialog.h"

class QLineEdit;
class QPushButton;

namespace quillow {

class OpenDialog final : public FileDialog {
public:
    /// The question is not for a new file.
    OpenDialog(const FileQuestion& question, const Workspace& workspace, QWidget* parent);

    /// The chosen paths. Call it after the dialog was accepted.
    [[nodiscard]] QStringList chosenPaths() const;

protected:
    void accept() override;

private:
    void showFiles(const FileQuestion& question);
    void showFoldersOnly();
    void lookAt(const QString& text);
    void choose(const QStringList& paths);
    [[nodiscard]] bool mayBeChosen(const QString& path) const;
    [[nodiscard]] bool isDocument(const QString& path) const;

    const Workspace& workspace_;
    QLineEdit* nameField_;
    QPushButton* acceptButton_;
    QStringList chosen_; ///< empty if Qt's own dialog handled the choice
};

} // namespace quillow
