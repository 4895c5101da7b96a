// The message log: one time-stamped line for each event, clearing with undo, the counter, and the commands that show or
// open the latest converted document.
#include "app/QuillowAppDelegate.h"
#include "base/Format.h"
#include "base/PathStrings.h"
#include "base/UndoManager.h"
#include "platform/Alerts.h"
#include "platform/BookmarkStore.h"
#include "platform/Bundle.h"
#include "platform/Clock.h"
#include "platform/DateFormatting.h"
#include "platform/FileSystem.h"
#include "platform/MainQueue.h"
#include "platform/Workspace.h"

#include <memory>

namespace quillow {

// deliberate: bringFront is ignored; error and success lines look alike and no window is raised.
void QuillowAppDelegate::doMessageLog(const QString& message, bool) {
    platform().mainQueue.addOperation([this, message] { appendLogLine(message); });
}

void QuillowAppDelegate::appendLogLine(const QString& message) {
    if (!textLog_) return;
    const qsizetype insertionPoint = textLog_->length();
    // deliberate: a formatter of this pattern is built for every line and not used; the visible stamp follows the
    // user's locale.
    const std::unique_ptr<DateFormatter> unusedFormatter =
        platform().dateFormatting.formatterWithPattern(QStringLiteral("YYYY-MM-dd hh:mm:ss"));
    const QString stamp =
        platform().dateFormatting.localizedStringFromDate(platform().clock.now(), DateStyle::medium, DateStyle::medium);
    const QString line = stringWithFormat(QStringLiteral("\n%@} %@"), {stamp, message});
    textLog_->replaceCharactersInRange({insertionPoint, 0}, line);
    textLog_->addForegroundColor(properTextColor_, {insertionPoint, line.size()});
    textLog_->setNeedsDisplay();
    textLog_->scrollRangeToVisible({textLog_->length(), 0});
}

void QuillowAppDelegate::clearLog(Sender) {
    platform().mainQueue.addOperation([this] {
        if (!textLog_) return;
        const QString text = textLog_->string();
        undoManager_.registerUndo([this, text] { clearLogUndo(text); });
        nameClearLogAction();
        replaceLog(QString());
    });
}

void QuillowAppDelegate::clearLogUndo(const QString& text) {
    undoManager_.registerUndo([this] { clearLog(); });
    nameClearLogAction();
    replaceLog(text);
}

void QuillowAppDelegate::nameClearLogAction() {
    undoManager_.setActionName(platform().bundle.localizedStringForKey(QStringLiteral("Clear Log"), QString()));
}

void QuillowAppDelegate::replaceLog(const QString& text) {
    if (textLog_) textLog_->replaceCharactersInRange({0, textLog_->length()}, text);
}

void QuillowAppDelegate::resetLogAlert(Sender) {
    // deliberate: the text says that there is no way back although clearing can be undone; both are meant.
    const Alert alert{QStringLiteral("Are you sure you want to reset the Log?"),
                      QStringLiteral("Operation can't be reverted"),
                      AlertStyle::warning,
                      {}};
    platform().alerts.beginSheetModalForWindow(alert, window(), [this](int returnCode) {
        if (returnCode == kAlertFirstButtonReturn) clearLog();
    });
}

void QuillowAppDelegate::resetCounter(Sender) {
    setNumberProcessed(0);
}

void QuillowAppDelegate::showLastProcessedFile(Sender) {
    showFile(fileToProcessPath());
}

void QuillowAppDelegate::openLastProcessedFile(Sender) {
    openFile(fileToProcessPath());
}

void QuillowAppDelegate::showLastOutputFile(Sender) {
    showFile(finalFullPathName());
}

void QuillowAppDelegate::openLastOutputFile(Sender) {
    openFile(finalFullPathName());
}

// deliberate: the fixed folder of the preferences, whatever folder the latest conversion went to.
void QuillowAppDelegate::showOutputDirectory(Sender) {
    bool isStale = false;
    const std::optional<QUrl> folder = bookmark_.urlForBookmark(storedDestinationBookmark(), &isStale);
    if (!folder || !platform().bookmarkStore.startAccessingSecurityScopedResource(*folder)) return;
    showFile(pathOfURL(*folder));
    platform().bookmarkStore.stopAccessingSecurityScopedResource(*folder);
}

void QuillowAppDelegate::showFile(const std::optional<QString>& path) {
    const QString item = stringWithFormat(QStringLiteral("%@"), {path});
    if (platform().fileSystem.fileExistsAtPath(item, nullptr)) platform().workspace.selectFile(item, QString());
}

void QuillowAppDelegate::openFile(const std::optional<QString>& path) {
    const QString item = stringWithFormat(QStringLiteral("%@"), {path});
    if (platform().fileSystem.fileExistsAtPath(item, nullptr)) platform().workspace.openFile(item);
}

} // namespace quillow
