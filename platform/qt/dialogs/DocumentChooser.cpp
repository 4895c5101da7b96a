#include "platform/qt/dialogs/DocumentChooser.h"

#include "platform/qt/dialogs/OpenDialogs.h"

#include <algorithm>
#include <utility>

namespace quillow {

void DocumentChooser::open(QWidget* window, Handler handler) {
    FileQuestion question;
    question.answer = FileQuestion::Answer::files;
    question.message = QStringLiteral("Choose the documents to convert");
    question.prompt = QStringLiteral("Convert");
    question.extensions = QStringLiteral("rtf rtfd htm html pdf").split(u' ');
    question.alsoAnyFile = true;
    question.folder = folder_;
    QDialog* dialog = makeOpenDialog(portal_, question, workspace_, window);
    dialog->setWindowModality(Qt::WindowModal);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(dialog, &QDialog::accepted, dialog, [this, dialog, handler = std::move(handler)] {
        const QStringList paths = chosenPathsOf(*dialog, workspace_);
        if (paths.isEmpty()) return;
        const QString& first = paths.constFirst();
        folder_ = first.left(std::max<qsizetype>(1, first.lastIndexOf(u'/')));
        handler(paths);
    });
    dialog->show();
}

} // namespace quillow
