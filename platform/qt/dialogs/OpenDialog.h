// The dialog in which folders or documents are chosen. An RTFD bundle is a folder on the disk and one document here. Qt lists no
// item whose name is not UTF-8; such an item is reached by its file URL in the name field, as file managers copy it.
#pragma once

#include "platform/Workspace.h"
#include "platform/qt/dialogs/FileDialog.h"

class QLineEdit;
class QPushButton;

namespace quillow {

class OpenDialog : public FileDialog {
public:
    OpenDialog(const QString& message, const QString& prompt, const Workspace& workspace, QWidget* parent);
    /// One file of these extensions; none, or an empty one among them, means any.
    void showFiles(const QStringList& extensions);
    void showFoldersOnly();

    /// What was chosen, once the dialog was accepted.
    [[nodiscard]] QStringList chosenPaths() const;

protected:
    void accept() override;

private:
    void lookAt(const QString& text);
    void choose(const QStringList& paths);
    [[nodiscard]] bool mayBeChosen(const QString& path) const;
    [[nodiscard]] bool isDocument(const QString& path) const;

    const Workspace& workspace_;
    QLineEdit* nameField_;
    QPushButton* acceptButton_;
    QStringList chosen_; ///< empty where it is Qt's own choice
};

} // namespace quillow
