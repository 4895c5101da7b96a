// Where converted text goes: one folder, chosen once and remembered by its bookmark. What is dropped before a folder is chosen
// waits for the panel's answer.
#include "app/QuillowAppDelegate.h"
#include "base/PathStrings.h"
#include "frame/MWDragDropView.h"
#include "platform/Defaults.h"
#include "platform/Panels.h"

#include <utility>

namespace quillow {
namespace {

// Keys of the defaults store.
constexpr char16_t kDestBookmark[] = u"destBookmark";
constexpr char16_t kDestPath[] = u"destPath";

} // namespace

void QuillowAppDelegate::adjustDestinationPath(Sender) {
    const std::optional<QString> path = pathForBookmark(storedDestinationBookmark());
    setDisplayDestinationPath(path);
    setEffectiveDestinationPath(path);
}

void QuillowAppDelegate::observeValueForKeyPath(const QString& keyPath, const KVObject* ofObject, const Change&,
                                                void*) {
    if (ofObject != dragDropArea() || keyPath != QStringLiteral("myFilePathDropped")) return;
    const std::optional<QString> path = dragDropArea()->myFilePathDropped();
    setFileToProcessPath(path);
    // While the panel is open everything waits for its answer, so that the order of the drop is kept.
    if (destinationPanel_ == DestinationPanel::closed && takeStoredDestination()) {
        runDoProcess();
        return;
    }
    if (path) waitingPaths_.append(*path);
    if (destinationPanel_ == DestinationPanel::closed) selectFolderToSaveOutput();
}

void QuillowAppDelegate::selectFolderToSaveOutput(Sender) {
    OpenPanel panel;
    panel.canChooseDirectories = true;
    panel.canChooseFiles = false;
    panel.prompt = QStringLiteral("Select");
    panel.message = QStringLiteral("Select the default destination to save converted text");
    destinationPanel_ = DestinationPanel::open;
    // On the preferences window, or where there is none on the main window.
    platform().panels.beginSheetModalForWindow(panel, prefWindow() ? prefWindow() : window(),
                                               [this](const std::optional<QUrl>& url) { destinationPanelDidEnd(url); });
}

void QuillowAppDelegate::destinationPanelDidEnd(const std::optional<QUrl>& url) {
    destinationPanel_ = DestinationPanel::closed;
    const QStringList paths = std::exchange(waitingPaths_, {});
    if (!url || !existFolderAtPath(pathOfURL(*url))) return;
    Defaults& defaults = platform().defaults;
    defaults.setObject(pathOfURL(*url), QString::fromUtf16(kDestPath));
    defaults.setObject(bookmark_.bookmarkForURL_RW(*url), QString::fromUtf16(kDestBookmark));
    adjustDestinationPath();
    for (const QString& path : paths) {
        setFileToProcessPath(path);
        if (takeStoredDestination()) runDoProcess();
    }
}

std::optional<QByteArray> QuillowAppDelegate::storedDestinationBookmark() const {
    return platform().defaults.objectForKey(QString::fromUtf16(kDestBookmark)).data();
}

std::optional<QString> QuillowAppDelegate::pathForBookmark(const std::optional<QByteArray>& bookmark) const {
    bool isStale = false;
    const std::optional<QUrl> url = bookmark_.urlForBookmark(bookmark, &isStale);
    return url ? std::optional<QString>(pathOfURL(*url)) : std::nullopt;
}

/// Makes the stored folder the one in force; true when it is there to be written into.
bool QuillowAppDelegate::takeStoredDestination() {
    const std::optional<QByteArray> bookmark = storedDestinationBookmark();
    const std::optional<QString> path = pathForBookmark(bookmark);
    setEffectiveDestinationBookmark(bookmark);
    setEffectiveDestinationPath(path);
    return path && existFolderAtPath(*path);
}

} // namespace quillow
