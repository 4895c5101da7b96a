// The dialog for naming a file to save. It shows the program's own control in place of Qt's list of file types.
#pragma once

#include "platform/qt/dialogs/FileDialog.h"

class QLineEdit;

namespace quillow {

class SaveDialog final : public FileDialog {
public:
    SaveDialog(const FileQuestion& question, QWidget* parent);

    void setAccessory(const QString& title, QWidget* control);
    [[nodiscard]] QString name() const;
    /// Shows the name and selects it without its extension.
    void setName(const QString& name);

private:
    QLineEdit* nameField_;
};

} // namespace quillow
