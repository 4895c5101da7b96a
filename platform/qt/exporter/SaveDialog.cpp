#include "platform/qt/exporter/SaveDialog.h"

#include "base/PathStrings.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>

namespace quillow {

SaveDialog::SaveDialog(const FileQuestion& question, QWidget* parent)
    : FileDialog(question, parent)
    , nameField_(findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))) {
    setAcceptMode(QFileDialog::AcceptSave);
    setFileMode(QFileDialog::AnyFile);
    setLabelText(QFileDialog::Accept, question.prompt); // setting the accept mode has reset it
    setLabelText(QFileDialog::FileName, QStringLiteral("&Name:"));
    for (const char* name : {"fileTypeLabel", "fileTypeCombo"}) {
        if (auto* widget = findChild<QWidget*>(QLatin1String(name))) widget->hide();
    }
    setName(question.name);
}

void SaveDialog::setAccessory(const QString& title, QWidget* control) {
    auto* grid = qobject_cast<QGridLayout*>(layout());
    auto* types = findChild<QWidget*>(QStringLiteral("fileTypeCombo"));
    if (!grid || !types) return;
    int row = 0;
    int column = 0;
    int rowSpan = 1;
    int columnSpan = 1;
    grid->getItemPosition(grid->indexOf(types), &row, &column, &rowSpan, &columnSpan);
    auto* label = new QLabel(title, this);
    label->setBuddy(control);
    grid->addWidget(label, row, 0);
    grid->addWidget(control, row, column, rowSpan, columnSpan);
    setTabOrder(nameField_, control);
}

QString SaveDialog::name() const {
    return nameField_->text();
}

void SaveDialog::setName(const QString& name) {
    nameField_->setText(name);
    nameField_->setSelection(0, static_cast<int>(stringByDeletingPathExtension(name).size()));
}

} // namespace quillow
