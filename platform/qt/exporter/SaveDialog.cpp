#include "platform/qt/exporter/SaveDialog.h"

#include "base/PathStrings.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>

namespace quillow {

SaveDialog::SaveDialog(QWidget* parent)
    : FileDialog(QString(), QStringLiteral("&Save"), parent)
    , nameField_(findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))) {
    setWindowTitle(QStringLiteral("Save As"));
    setAcceptMode(QFileDialog::AcceptSave);
    setFileMode(QFileDialog::AnyFile);
    setLabelText(QFileDialog::Accept, QStringLiteral("&Save"));
    setLabelText(QFileDialog::FileName, QStringLiteral("&Name:"));
    for (const char* name : {"fileTypeLabel", "fileTypeCombo"}) {
        if (auto* widget = findChild<QWidget*>(QLatin1String(name))) widget->hide();
    }
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
