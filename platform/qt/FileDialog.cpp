#include "platform/qt/FileDialog.h"

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
    // The place of a menu bar is the only one above the dialog's own grid.
    layout()->setMenuBar(label);
}

void FileDialog::showFiles(const QStringList& extensions) {
    setWindowTitle(QStringLiteral("Choose a File"));
    setFileMode(QFileDialog::ExistingFile);
    if (extensions.isEmpty() || extensions.contains(QString())) {
        setNameFilter(QStringLiteral("All files (*)"));
        return;
    }
    QStringList patterns;
    for (const QString& extension : extensions)
        patterns.append(QStringLiteral("*.") + extension);
    setNameFilter(QStringLiteral("Documents (%1)").arg(patterns.join(QLatin1Char(' '))));
}

void FileDialog::showFoldersOnly() {
    setWindowTitle(QStringLiteral("Choose a Folder"));
    setFileMode(QFileDialog::Directory);
    setOption(QFileDialog::ShowDirsOnly);
    // There is one type only.
    for (const char* name : {"fileTypeLabel", "fileTypeCombo"}) {
        if (auto* widget = findChild<QWidget*>(QLatin1String(name))) widget->hide();
    }
}

void FileDialog::startIn(const QString& path) {
    setDirectory(!path.isEmpty() && QDir(path).exists() ? path : QDir::homePath());
}

} // namespace quillow
