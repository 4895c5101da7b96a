// Where converted text goes: into a fixed folder from the preferences, or into a folder that is requested when saving.
// Also what happens to a dropped path in each case.
#include "app/QuillowAppDelegate.h"
#include "base/PathStrings.h"
#include "base/SettingKeys.h"
#include "base/StateTexts.h"
#include "frame/MWDragDropView.h"
#include "platform/Alerts.h"
#include "platform/BookmarkStore.h"
#include "platform/Defaults.h"
#include "platform/FileSystem.h"
#include "platform/MainQueue.h"
#include "platform/Panels.h"
#include "platform/Termination.h"
#include "platform/Workspace.h"

namespace quillow {
namespace {

bool isHexDigit(QChar c) {
    return (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'f') || (c >= u'A' && c <= u'F');
}

/// Makes a URL of the string of a URL without a host, character by character (RFC 3986, appendix A). Empty if the
/// string contains a character that is not allowed, a second number sign, or a per cent sign without two hexadecimal
/// digits.
std::optional<QUrl> urlWithString(const QString& text) {
    static constexpr QStringView kMarks = u"-._~:/?#@!$&'()*+,;=%";
    if (text.count(u'#') > 1) return std::nullopt;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        const bool isAlphanumeric = (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
        if (!isAlphanumeric && !kMarks.contains(c)) return std::nullopt;
        if (c == u'%' && (i + 2 >= text.size() || !isHexDigit(text[i + 1]) || !isHexDigit(text[i + 2])))
            return std::nullopt;
    }
    const QUrl url(text, QUrl::StrictMode);
    return url.isValid() ? std::optional(url) : std::nullopt;
}

/// Where a panel starts if a folder was chosen before. deliberate: the path is read as a URL string, not as a path, so
/// a folder with a blank or an accent in its name gives no URL, and the platform decides where the panel starts.
std::optional<QUrl> panelDirectory(const std::optional<QString>& latestPath) {
    std::optional<QUrl> url = latestPath ? urlWithString(*latestPath) : std::nullopt;
    if (!url || !url->scheme().isEmpty()) return url;
    return QUrl::fromLocalFile(url->path(QUrl::FullyDecoded));
}

} // namespace

bool QuillowAppDelegate::destinationIsFixed() const {
    return platform().defaults.objectForKey(settings::kDestinationType.string()).intValue() ==
           settings::kDestinationFixed;
}

void QuillowAppDelegate::adjustDestinationPath(Sender) {
    if (!destinationIsFixed()) {
        setDisplayDestinationPath(QStringLiteral("<ASK WHEN SAVING>"));
        return;
    }
    const std::optional<QString> path = pathForBookmark(storedDestinationBookmark());
    setDisplayDestinationPath(path);
    setEffectiveDestinationPath(path);
}

/// The state line of the destination at launch.
void QuillowAppDelegate::checkStoredDestination() {
    const std::optional<QByteArray> bookmark = storedDestinationBookmark();
    setDestMessageStringSpecified(true);
    if (!bookmark) {
        setDestMessageString(QString::fromUtf16(kPleaseSelectFile));
        return;
    }
    bool isStale = false;
    const std::optional<QUrl> url = bookmark_.urlForBookmark(bookmark, &isStale);
    if (!url || !platform().bookmarkStore.startAccessingSecurityScopedResource(*url)) {
        setDestMessageString(QStringLiteral("Unvalid Bookmark. Please re-select"));
        return;
    }
    platform().bookmarkStore.stopAccessingSecurityScopedResource(*url);
    setDestMessageString(isStale ? QStringLiteral("Stale Bookmark. Please re-select")
                                 : QStringLiteral("Valid Bookmark"));
}

void QuillowAppDelegate::observeValueForKeyPath(const QString& keyPath, const KVObject* ofObject, const Change&,
                                                void*) {
    if (ofObject != dragDropArea() || keyPath != QStringLiteral("myFilePathDropped")) return;
    // The rest of a long drop does not delay the end of the program.
    if (platform().termination.isRequested()) return;
    setFileToProcessPath(dragDropArea()->myFilePathDropped());
    if (destinationIsFixed())
        convertIntoFixedFolder();
    else
        askForFolderAndConvert();
}

void QuillowAppDelegate::convertIntoFixedFolder() {
    const std::optional<QByteArray> bookmark = storedDestinationBookmark();
    const std::optional<QString> path = pathForBookmark(bookmark);
    setEffectiveDestinationBookmark(bookmark);
    setEffectiveDestinationPath(path);
    if (path && existFolderAtPath(*path)) {
        runDoProcess();
        return;
    }
    const Alert alert{QStringLiteral("Destination folder not yet set"),
                      QStringLiteral("It is necessary to indicate in the preferences the destination folder where to "
                                     "save converted text files"),
                      AlertStyle::warning,
                      {QStringLiteral("Open Preferences"), QStringLiteral("Cancel")}};
    platform().alerts.beginSheetModalForWindow(alert, window(), [this](int returnCode) {
        if (returnCode == kAlertFirstButtonReturn) platform().mainQueue.addOperation([this] { openPreferences(); });
    });
}

void QuillowAppDelegate::askForFolderAndConvert() {
    // All paths of a drop are collected before the first panel is answered, so one answer converts them all. The panels
    // of the later paths find an empty list.
    QStringList gathered = fileToProcessPathArray();
    gathered.append(fileToProcessPath().value_or(QString()));
    setFileToProcessPathArray(gathered);

    OpenPanel panel;
    panel.directoryURL = panelDirectory(latestAskDestinationPath());
    panel.canChooseDirectories = true;
    panel.canChooseFiles = false;
    panel.prompt = QStringLiteral("Select");
    panel.message = QStringLiteral("Please select the destination folder");
    platform().panels.beginSheetModalForWindow(panel, window(), [this](const std::optional<QUrl>& url) {
        if (url && existFolderAtPath(pathOfURL(*url))) {
            setEffectiveDestinationBookmark(bookmark_.bookmarkForURL_RW(url));
            setEffectiveDestinationPath(pathOfURL(*url));
            latestAskDestinationPath_.set(pathOfURL(*url));
            runDoMultiProcess();
        }
        setFileToProcessPathArray({});
    });
}

void QuillowAppDelegate::selectFolderToSaveOutput(Sender) {
    OpenPanel panel;
    panel.canChooseDirectories = true;
    panel.canChooseFiles = false;
    panel.prompt = QStringLiteral("Select");
    panel.message = QStringLiteral("Select the default destination to save converted text");
    platform().panels.beginSheetModalForWindow(panel, prefWindow(), [this](const std::optional<QUrl>& url) {
        if (!url || !existFolderAtPath(pathOfURL(*url))) return;
        const auto bookmark = bookmark_.bookmarkForURL_RW(url);
        platform().defaults.setObject(pathOfURL(*url), settings::kDestPath.string());
        platform().defaults.setObject(bookmark, settings::kDestBookmark.string());
        setDestMessageStringSpecified(true);
    });
}

void QuillowAppDelegate::clearDestPath(Sender) {
    // Empty values, not absent ones: at the next launch there is a bookmark that does not resolve.
    platform().defaults.setObject(QByteArray(""), settings::kDestBookmark.string());
    platform().defaults.setObject(QStringLiteral(""), settings::kDestPath.string());
    setDestMessageString(QString::fromUtf16(kPleaseSelectFolder));
    setDestMessageStringSpecified(false);
}

void QuillowAppDelegate::showDestPath(Sender) {
    const std::optional<QString> path = pathForBookmark(storedDestinationBookmark());
    if (platform().defaults.objectForKey(settings::kDestPath.string()) != Boxed(path)) {
        platform().defaults.setObject(path, settings::kDestPath.string()); // no path removes the key
        if (path && path->isEmpty()) setDestMessageString(QString::fromUtf16(kPleaseSelectFile));
    }
    if (path && platform().fileSystem.fileExistsAtPath(*path, nullptr))
        platform().workspace.selectFile(*path, QString());
}

std::optional<QByteArray> QuillowAppDelegate::storedDestinationBookmark() const {
    return platform().defaults.objectForKey(settings::kDestBookmark.string()).data();
}

std::optional<QString> QuillowAppDelegate::pathForBookmark(const std::optional<QByteArray>& bookmark) const {
    bool isStale = false;
    const std::optional<QUrl> url = bookmark_.urlForBookmark(bookmark, &isStale);
    return url ? std::optional<QString>(pathOfURL(*url)) : std::nullopt;
}

} // namespace quillow
