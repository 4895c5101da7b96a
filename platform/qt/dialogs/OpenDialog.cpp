#include "platform/qt/dialogs/OpenDialog.h"

#include "base/PathBytes.h"
#include "base/PathStrings.h"

#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QUrl>

#include <sys/stat.h>

#include <algorithm>
#include <optional>

namespace quillow {
namespace {

/// The type of the item at the path, after symbolic links; 0 if there is no item.
mode_t typeOf(const QString& path) {
    struct stat status = {};
    return ::stat(pathToBytes(path).constData(), &status) == 0 ? status.st_mode & S_IFMT : 0;
}

/// The path in the name field if Qt cannot open it: the path of a file URL, or one that is not UTF-8.
std::optional<QString> pathUnknownToQt(const QString& text) {
    if (text.startsWith(QLatin1String("file:///"))) return pathOfURL(QUrl(text.trimmed()));
    return text.isValidUtf16() ? std::nullopt : std::optional(text);
}

} // namespace

OpenDialog::OpenDialog(const FileQuestion& question, const Workspace& workspace, QWidget* parent)
    : FileDialog(question, parent)
    , workspace_(workspace)
    , nameField_(findChild<QLineEdit*>(QStringLiteral("fileNameEdit")))
    , acceptButton_(findChild<QDialogButtonBox*>(QStringLiteral("buttonBox"))->button(QDialogButtonBox::Open)) {
    if (question.answer == FileQuestion::Answer::folder)
        showFoldersOnly();
    else
        showFiles(question);
    connect(nameField_, &QLineEdit::textChanged, this, &OpenDialog::lookAt);
    // A double click would open the bundle as a folder.
    connect(this, &QFileDialog::directoryEntered, this, [this](const QString& folder) {
        if (fileMode() != QFileDialog::Directory && workspace_.isFilePackageAtPath(folder)) choose({folder});
    });
}

void OpenDialog::showFiles(const FileQuestion& question) {
    setFileMode(question.answer == FileQuestion::Answer::files ? QFileDialog::ExistingFiles
                                                               : QFileDialog::ExistingFile);
    QStringList filters;
    if (!question.isForAnyFile()) {
        QStringList patterns;
        for (const QString& extension : question.extensions)
            patterns.append(QStringLiteral("*.") + extension);
        filters.append(QStringLiteral("Documents (%1)").arg(patterns.join(QLatin1Char(' '))));
    }
    if (question.isForAnyFile() || question.alsoAnyFile) filters.append(QStringLiteral("All files (*)"));
    setNameFilters(filters);
}

void OpenDialog::showFoldersOnly() {
    setFileMode(QFileDialog::Directory);
    setOption(QFileDialog::ShowDirsOnly);
    // There is only one type.
    for (const char* name : {"fileTypeLabel", "fileTypeCombo"}) {
        if (auto* widget = findChild<QWidget*>(QLatin1String(name))) widget->hide();
    }
}

QStringList OpenDialog::chosenPaths() const {
    return chosen_.isEmpty() ? selectedFiles() : chosen_;
}

void OpenDialog::accept() {
    if (const auto path = pathUnknownToQt(nameField_->text())) {
        if (mayBeChosen(*path)) choose({*path});
        return;
    }
    const QStringList paths = selectedFiles();
    const bool areDocuments =
        fileMode() != QFileDialog::Directory && !paths.isEmpty() &&
        std::all_of(paths.begin(), paths.end(), [this](const QString& path) { return isDocument(path); });
    if (areDocuments)
        choose(paths);
    else
        FileDialog::accept();
}

/// Qt treats these paths as missing items and disables the button.
void OpenDialog::lookAt(const QString& text) {
    if (const auto path = pathUnknownToQt(text)) acceptButton_->setEnabled(mayBeChosen(*path));
}

void OpenDialog::choose(const QStringList& paths) {
    chosen_ = paths;
    done(QDialog::Accepted);
}

bool OpenDialog::mayBeChosen(const QString& path) const {
    return fileMode() == QFileDialog::Directory ? typeOf(path) == S_IFDIR : isDocument(path);
}

bool OpenDialog::isDocument(const QString& path) const {
    return typeOf(path) == S_IFREG || workspace_.isFilePackageAtPath(path);
}

} // namespace quillow
