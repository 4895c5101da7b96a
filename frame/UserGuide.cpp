// The user guide: copied out of the program's resources once a release, the guides of earlier releases removed.
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
        // Failures are ignored: opening is tried in any case.
        const QString folder = getUserGuideDirPath();
        if (!files.fileExistsAtPath(folder, nullptr)) files.createDirectory(folder);
        // Listed before the copy is made, so that the copy is not among what is removed.
        const QStringList before = files.contentsOfDirectory(folder).value_or(QStringList());
        if (const auto source = platform_.bundle.pathForResource(getUserGuideName(), QStringLiteral("pdf")))
            files.copyItem(*source, finalPath);
        for (const QString& name : before)
            if (name != u".DS_Store") files.removeItem(stringWithFormat(QStringLiteral("%@/%@"), {folder, name}));
    }
    platform_.workspace.openFile(finalPath);
}

} // namespace quillow
