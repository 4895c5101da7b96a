// The user guide: copies it from the program's resources once per release and removes the guides of earlier releases.
#include "base/Format.h"
#include "frame/MWAppDelegateBase.h"
#include "platform/Bundle.h"
#include "platform/FileSystem.h"
#include "platform/SystemInfo.h"
#include "platform/Workspace.h"

namespace quillow {

QString MWAppDelegateBase::getUserGuideName() const {
    return QStringLiteral("");
}

QString MWAppDelegateBase::getUserGuideNameWithThisRelNum() const {
    return QStringLiteral("");
}

QString MWAppDelegateBase::getUserGuideDirPath() const {
    return stringWithFormat(
        QStringLiteral("%@/%@/%@"),
        {platform_.systemInfo.homeDirectory(), QStringLiteral("Library/Application Support"), getUserGuideName()});
}

QString MWAppDelegateBase::getUserGuideFinalPath() const {
    return stringWithFormat(QStringLiteral("%@/%@.pdf"), {getUserGuideDirPath(), getUserGuideNameWithThisRelNum()});
}

void MWAppDelegateBase::openUserGuide(Sender /*sender*/) {
    FileSystem& files = platform_.fileSystem;
    const QString finalPath = getUserGuideFinalPath();
    if (!files.fileExistsAtPath(finalPath, nullptr)) {
        // Failures are ignored: the guide is opened in any case.
        const QString folder = getUserGuideDirPath();
        if (!files.fileExistsAtPath(folder, nullptr)) files.createDirectory(folder);
        // List the folder before copying, so that the new copy is not removed.
        const QStringList before = files.contentsOfDirectory(folder).value_or(QStringList());
        if (const auto source = platform_.bundle.pathForResource(getUserGuideName(), QStringLiteral("pdf")))
            files.copyItem(*source, finalPath);
        for (const QString& name : before)
            if (name != u".DS_Store") files.removeItem(stringWithFormat(QStringLiteral("%@/%@"), {folder, name}));
    }
    platform_.workspace.openFile(finalPath);
}

} // namespace quillow
