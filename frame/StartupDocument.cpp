// The startup action: a new document, the open dialog, or a chosen document, depending on the preferences.
#include "base/PathStrings.h"
#include "base/SettingKeys.h"
#include "base/StateTexts.h"
#include "frame/MWAppDelegateBase.h"
#include "platform/Alerts.h"
#include "platform/BookmarkStore.h"
#include "platform/Defaults.h"
#include "platform/Documents.h"
#include "platform/FileSystem.h"
#include "platform/MainQueue.h"
#include "platform/Panels.h"
#include "platform/Timers.h"
#include "platform/Workspace.h"

namespace quillow {
namespace {

// Values of the action tag; a missing one reads as 0.
constexpr std::int64_t kNewDocument = 0;
constexpr std::int64_t kOpenDialogIfNone = 1;
constexpr std::int64_t kOpenDialog = 2;
constexpr std::int64_t kChosenDocument = 3;

/// Documents that the system asked to open at launch arrive within this time.
constexpr double kSecondsForOtherDocuments = 1.0;

constexpr char16_t kStale[] = u"Stale bookmark. Please re-select";

Boxed stored(const Defaults& defaults, const char16_t* name) {
    return defaults.objectForKey(QString::fromUtf16(name));
}

void store(Defaults& defaults, const Boxed& value, const char16_t* name) {
    defaults.setObject(value, QString::fromUtf16(name));
}

} // namespace

bool MWAppDelegateBase::applicationShouldOpenUntitledFile(Sender /*application*/) {
    return stored(platform_.defaults, settings::kStartupActionTag.name).longValue() == kNewDocument;
}

void MWAppDelegateBase::newDocIfNoDocOpened(Sender /*timer*/) {
    if (platform_.documents.count() == 0 && !documentIsOpening_) platform_.documents.newDocument();
}

void MWAppDelegateBase::openDialogIfNoDocOpened(Sender /*timer*/) {
    if (platform_.documents.count() == 0 && !documentIsOpening_) platform_.documents.openDocument();
}

void MWAppDelegateBase::executeDocumentStartupAsInPref(Sender /*sender*/) {
    switch (stored(platform_.defaults, settings::kStartupActionTag.name).longValue()) {
    case kNewDocument:
        platform_.timers.scheduleOnce(kSecondsForOtherDocuments, [this] { newDocIfNoDocOpened(); });
        break;
    case kOpenDialogIfNone:
        platform_.timers.scheduleOnce(kSecondsForOtherDocuments, [this] { openDialogIfNoDocOpened(); });
        break;
    case kOpenDialog: platform_.documents.openDocument(); break;
    case kChosenDocument: openChosenStartupDocument(); break;
    default: break;
    }
}

void MWAppDelegateBase::openChosenStartupDocument() {
    if (usingAServices_) return;
    if (stored(platform_.defaults, settings::kStartupSelectedDocPath.name) == Boxed(QStringLiteral(""))) {
        // The alert appears after launch has finished.
        platform_.mainQueue.addOperation([this] { tellStartupDocumentIsUnspecified(); });
        return;
    }
    const auto url = startupDocumentUrl();
    if (url && platform_.bookmarkStore.startAccessingSecurityScopedResource(*url))
        openDocumentUnderAccess(*url);
    else
        tellStartupDocumentIsUnreachable();
}

void MWAppDelegateBase::tellStartupDocumentIsUnspecified() {
    setStartupDocPathMessageString(QString::fromUtf16(kPleaseSelectFile));
    setStartupDocSpecified(false);
    offerPreferences(QStringLiteral("Preference was set to open at startup a document without specifying it"),
                     QStringLiteral("You can fix the problem in the preferences"));
}

void MWAppDelegateBase::tellStartupDocumentIsUnreachable() {
    setStartupDocPathMessageString(QStringLiteral("Not valid bookmark. Please re-select"));
    // deliberate: true, because a document is specified; it only cannot be reached.
    setStartupDocSpecified(true);
    offerPreferences(
        QStringLiteral("The system is negating the access to the document selected to be opened at startup"),
        QStringLiteral("It must be re-selected in the preferences"));
}

void MWAppDelegateBase::offerPreferences(const QString& messageText, const QString& informativeText) {
    const Alert alert{messageText,
                      informativeText,
                      AlertStyle::warning,
                      {QStringLiteral("Open Preferences"), QStringLiteral("Cancel")}};
    if (platform_.alerts.runModal(alert) == kAlertFirstButtonReturn) openPreferences();
}

/// The URL of the stored bookmark. If the bookmark is stale, the status line says so, and its URL is used nevertheless.
std::optional<QUrl> MWAppDelegateBase::startupDocumentUrl() {
    bool isStale = false;
    auto url = bookmark_.urlForBookmark(stored(platform_.defaults, settings::kStartupSelectedDocBookmark.name).data(),
                                        &isStale);
    if (isStale) setStartupDocPathMessageString(QString::fromUtf16(kStale));
    return url;
}

void MWAppDelegateBase::openDocumentUnderAccess(const QUrl& url) {
    platform_.documents.openDocumentWithContentsOfURL(
        url, Display::yes, [this, url] { platform_.bookmarkStore.stopAccessingSecurityScopedResource(url); });
}

std::optional<QUrl> MWAppDelegateBase::synchroniseStartupDocPath() {
    auto url = startupDocumentUrl();
    const auto path = url ? std::optional(pathOfURL(*url)) : std::nullopt;
    if (stored(platform_.defaults, settings::kStartupSelectedDocPath.name) != Boxed(path)) {
        store(platform_.defaults, path, settings::kStartupSelectedDocPath.name); // std::nullopt removes the key
        if (path && path->isEmpty()) setStartupDocPathMessageString(QString::fromUtf16(kPleaseSelectFile));
    }
    return url;
}

void MWAppDelegateBase::showInFinderStartupDoc(Sender /*sender*/) {
    const auto url = synchroniseStartupDocPath();
    if (!url) return;
    const QString path = pathOfURL(*url);
    if (platform_.fileSystem.fileExistsAtPath(path, nullptr)) platform_.workspace.selectFile(path, QStringLiteral(""));
}

void MWAppDelegateBase::testOpenStartupDoc(Sender /*sender*/) {
    const auto url = synchroniseStartupDocPath();
    if (url && platform_.bookmarkStore.startAccessingSecurityScopedResource(*url)) openDocumentUnderAccess(*url);
}

void MWAppDelegateBase::selectStartupDoc(Sender /*sender*/) {
    OpenPanel panel;
    panel.canChooseFiles = true;
    panel.canChooseDirectories = false;
    panel.allowedFileTypes = allowedStartupDocExtensions();
    panel.prompt = QStringLiteral("Select");
    platform_.panels.beginSheetModalForWindow(panel, prefWindow_, [this](const std::optional<QUrl>& url) {
        if (!url) return;
        store(platform_.defaults, bookmark_.bookmarkForURL_RW(url), settings::kStartupSelectedDocBookmark.name);
        store(platform_.defaults, pathOfURL(*url), settings::kStartupSelectedDocPath.name);
        setStartupDocPathMessageString(QStringLiteral(""));
        setStartupDocSpecified(true);
    });
}

void MWAppDelegateBase::clearStartupSelectedDoc(Sender /*sender*/) {
    store(platform_.defaults, QByteArray(""), settings::kStartupSelectedDocBookmark.name);
    store(platform_.defaults, QStringLiteral(""), settings::kStartupSelectedDocPath.name);
    setStartupDocPathMessageString(QString::fromUtf16(kPleaseSelectFile));
    setStartupDocSpecified(false);
}

QStringList MWAppDelegateBase::allowedStartupDocExtensions() const {
    return {QStringLiteral("")};
}

} // namespace quillow
