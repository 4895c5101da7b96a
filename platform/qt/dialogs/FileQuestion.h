// What a dialog for files asks, whichever program shows the dialog.
#pragma once

#include <QString>
#include <QStringList>

namespace quillow {

struct FileQuestion {
    enum class Answer { file, files, folder, newFile };

    Answer answer = Answer::file;
    QString message; ///< one line that says what the choice is for; may be empty
    QString prompt;  ///< text of the default button
    /// The extensions of the documents, without dots. An empty list, or an empty extension in it, permits any file.
    QStringList extensions;
    bool alsoAnyFile = false; ///< the user may show other files than documents
    QString folder;           ///< the folder to start in; empty if there is no wish
    QString name;             ///< of a new file, with its extension

    [[nodiscard]] bool isForAnyFile() const { return extensions.isEmpty() || extensions.contains(QString()); }
    [[nodiscard]] QString title() const {
        switch (answer) {
        case Answer::file: return QStringLiteral("Choose a File");
        case Answer::files: return QStringLiteral("Choose Files");
        case Answer::folder: return QStringLiteral("Choose a Folder");
        case Answer::newFile: return QStringLiteral("Save As");
        }
        return {};
    }
};

} // namespace quillow
