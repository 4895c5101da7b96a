#include "platform/qt/dialogs/FileDialog.h"

#include <QDir>
#include <QLabel>
#include <QLayout>

namespace quillow {

FileDialog::FileDialog(const QString& message, const QString& prompt, QWidget* parent)
    : QFileDialog(parent) {
    setOption(QFileDialog::DontUseNativeDialog);
    setAcceptMode(QFileDialog::AcceptOpen);
    setWindowTitle(QStringLiteral("Choose Files"));
    setLabelText(QFileDialog::Accept, prompt);
    startIn(QString());
    if (message.isEmpty()) return;
    auto* label = new QLabel(message, this);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    QFont bold = label->font();
    bold.setBold(true);
    label->setFont(bold);
    label->setContentsMargins(12, 12, 12, 0);
    // Only the menu bar's place is above the dialog's own grid.
    layout()->setMenuBar(label);
}

void FileDialog::startIn(const QString& path) {
    setDirectory(!path.isEmpty() && QDir(path).exists() ? path : QDir::homePath());
}

} // namespace quillow
