#include "platform/qt/dialogs/DocumentChooser.h"

namespace quillow {

DocumentChooser::DocumentChooser(const Workspace& workspace, QWidget* parent)
    : OpenDialog(QStringLiteral("Choose the documents to convert"), QStringLiteral("Convert"), workspace, parent) {
    setFileMode(QFileDialog::ExistingFiles);
    setNameFilters({QStringLiteral("Documents (*.rtf *.rtfd *.htm *.html *.pdf)"), QStringLiteral("All files (*)")});
    setWindowModality(Qt::WindowModal);
    setAttribute(Qt::WA_DeleteOnClose);
    connect(this, &QDialog::accepted, this, [this] {
        if (handler_) handler_(chosenPaths());
    });
}

} // namespace quillow
