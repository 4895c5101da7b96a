#include "platform/qt/DocumentChooser.h"

#include <QFileInfo>

#include <algorithm>

namespace quillow {

DocumentChooser::DocumentChooser(const Workspace& workspace, QWidget* parent)
    : FileDialog(QStringLiteral("Choose the documents to convert"), QStringLiteral("Convert"), parent)
    , workspace_(workspace) {
    setFileMode(QFileDialog::ExistingFiles);
    setNameFilters({QStringLiteral("Documents (*.rtf *.rtfd *.htm *.html *.pdf)"), QStringLiteral("All files (*)")});
    setWindowModality(Qt::WindowModal);
    setAttribute(Qt::WA_DeleteOnClose);
    // A double click would step into the bundle.
    connect(this, &QFileDialog::directoryEntered, this, [this](const QString& folder) {
        if (workspace_.isFilePackageAtPath(folder)) choose({folder});
    });
}

void DocumentChooser::accept() {
    const QStringList chosen = selectedFiles();
    const bool areDocuments =
        !chosen.isEmpty() && std::all_of(chosen.begin(), chosen.end(), [this](const QString& path) {
            return workspace_.isFilePackageAtPath(path) || QFileInfo(path).isFile();
        });
    if (areDocuments)
        choose(chosen);
    else
        FileDialog::accept();
}

void DocumentChooser::choose(const QStringList& paths) {
    const auto handler = handler_;
    handler_ = nullptr;
    done(QDialog::Accepted);
    if (handler) handler(paths);
}

} // namespace quillow
