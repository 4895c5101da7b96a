// The dialog in which a file to be written is named. Beside the name stands a control of the program's own in the place of the file
// types.
#pragma once

#include "platform/qt/dialogs/FileDialog.h"

class QLineEdit;

namespace quillow {

class SaveDialog final : public FileDialog {
public:
    explicit SaveDialog(QWidget* parent);

    void setAccessory(const QString& title, QWidget* control);
    [[nodiscard]] QString name() const;
    /// Shows the name with all but its extension selected.
    void setName(const QString& name);

private:
    QLineEdit* nameField_;
};

} // namespace quillow
