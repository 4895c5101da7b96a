#include "platform/qt/dialogs/OpenDialogs.h"

#include "platform/qt/dialogs/OpenDialog.h"
#include "platform/qt/dialogs/PortalDialog.h"

#include <algorithm>

namespace quillow {
namespace {

/// The name of the text in each RTFD bundle.
constexpr QLatin1String kTextOfBundle("/TXT.rtf");

QString documentOf(const QString& path, const Workspace& workspace) {
    if (!path.endsWith(kTextOfBundle)) return path;
    const QString folder = path.chopped(kTextOfBundle.size());
    return workspace.isFilePackageAtPath(folder) ? folder : path;
}

} // namespace

QDialog* makeOpenDialog(const FilePortal& portal, const FileQuestion& question, const Workspace& workspace,
                        QWidget* window) {
    const auto makeOwn = [question, &workspace](QWidget* parent) {
        return new OpenDialog(question, workspace, parent);
    };
    if (portal.isOffered()) return new PortalDialog(portal, question, makeOwn, window);
    return makeOwn(window);
}

QStringList chosenPathsOf(const QDialog& dialog, const Workspace& workspace) {
    const auto* portals = dynamic_cast<const PortalDialog*>(&dialog);
    const QDialog& shown = portals && portals->own() ? *portals->own() : dialog;
    if (const auto* own = dynamic_cast<const OpenDialog*>(&shown)) return own->chosenPaths();
    QStringList paths = portals ? portals->paths() : QStringList();
    std::transform(paths.begin(), paths.end(), paths.begin(),
                   [&workspace](const QString& path) { return documentOf(path, workspace); });
    return paths;
}

} // namespace quillow
