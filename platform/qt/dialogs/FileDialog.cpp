#include "platform/qt/dialogs/FileDialog.h"

#include <QDir>
#include <QLabel>
#include <QLayout>

namespace quillow {

FileDialog::FileDialog(const FileQuestion& question, QWidget* parent)
    : QFileDialog(parent) {
    setOption(QFileDialog::DontUseNativeDialog);
    setAcceptMode(QFileDialog::AcceptOpen);
    setWindowTitle(question.title());
    setLabelText(QFileDialog::Accept, question.prompt);
    const bool hasFolder = !question.folder.isEmpty() && QDir(question.folder).exists();
    setDirectory(hasFolder ? question.folder : QDir::homePath());
    if (question.message.isEmpty()) return;
    auto* label = new QLabel(question.message, this);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    QFont bold = label->font();
    bold.setBold(true);
    label->setFont(bold);
    label->setContentsMargins(12, 12, 12, 0);
    // Only the menu bar's place is above the dialog's own grid.
    layout()->setMenuBar(label);
}

} // namespace quillow
