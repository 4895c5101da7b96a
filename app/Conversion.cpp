// Turns one dropped document, or a batch of them, into plain-text files.
#include "app/QuillowAppDelegate.h"
#include "base/Format.h"
#include "base/PathBytes.h"
#include "base/PathStrings.h"
#include "platform/Alerts.h"
#include "platform/BookmarkStore.h"
#include "platform/ConversionWatcher.h"
#include "platform/FileSystem.h"
#include "platform/ProgressIndicator.h"
#include "platform/Termination.h"
#include "platform/Workspace.h"

#include <cstdio>

namespace quillow {
namespace {

/// To be called if the batch changed while it ran, which is a programming error.
void tellBatchChanged(const QString& path) {
    std::fprintf(stderr, "quillow: the batch changed while %s was converted; the rest of it is not converted\n",
                 pathToBytes(path).constData());
}

} // namespace

bool QuillowAppDelegate::isAcceptedFileToConvertAtPath(const QString& path) const {
    return DocumentText::kindOf(path).has_value();
}

bool QuillowAppDelegate::existFileOrBundleAtPath(const QString& path) const {
    bool isDirectory = false;
    if (!platform().fileSystem.fileExistsAtPath(path, &isDirectory)) return false;
    return !isDirectory || platform().workspace.isFilePackageAtPath(path);
}

void QuillowAppDelegate::runDoProcess() {
    const QString path = fileToProcessPath().value_or(QString());
    if (!existFileOrBundleAtPath(path)) return;
    if (!isAcceptedFileToConvertAtPath(path)) {
        openAlertPanelCantDropThisHere();
        return;
    }
    if (progressIndicator()) progressIndicator()->startAnimation();
    doProcess();
    if (progressIndicator()) progressIndicator()->stopAnimation();
}

// deliberate: a batch is not checked for existence or type. The conversion itself reports a file of another type as one
// without a text.
void QuillowAppDelegate::runDoMultiProcess() {
    if (progressIndicator()) progressIndicator()->startAnimation();
    doMultiProcess();
    if (progressIndicator()) progressIndicator()->stopAnimation();
}

void QuillowAppDelegate::doProcess() {
    bool isStale = false;
    const std::optional<QUrl> folder = bookmark_.urlForBookmark(effectiveDestinationBookmark(), &isStale);
    if (!folder || !platform().bookmarkStore.startAccessingSecurityScopedResource(*folder)) return;
    convertDocument(fileToProcessPath().value_or(QString()));
    platform().bookmarkStore.stopAccessingSecurityScopedResource(*folder);
}

void QuillowAppDelegate::doMultiProcess() {
    bool isStale = false;
    const std::optional<QUrl> folder = bookmark_.urlForBookmark(effectiveDestinationBookmark(), &isStale);
    if (!folder || !platform().bookmarkStore.startAccessingSecurityScopedResource(*folder)) return;
    const QStringList batch = fileToProcessPathArray();
    for (const QString& path : batch) {
        // The current document is finished; the next ones are not started.
        if (platform().termination.isRequested()) break;
        const DocumentText::End end = convertDocument(path);
        if (fileToProcessPathArray() != batch) {
            tellBatchChanged(path);
            break;
        }
        // deliberate: unreadable bytes end the whole batch; a document without text is only reported.
        if (end == DocumentText::End::bytesUnreadable) break;
    }
    platform().bookmarkStore.stopAccessingSecurityScopedResource(*folder);
}

DocumentText::End QuillowAppDelegate::convertDocument(const QString& path) {
    // The delegate's state changes only if there is a text.
    platform().conversionWatcher.documentBegins(path);
    DocumentText::Outcome outcome = documentText_.read(path);
    if (outcome.end != DocumentText::End::text) {
        platform().conversionWatcher.documentEnds(path, ConversionWatcher::Result::notConverted, QString());
        logNoText(path);
        return outcome.end;
    }
    const QByteArray text = outcome.styledText ? plainTextOf(*outcome.styledText) : *outcome.pdfText;

    const QString baseName = stringByDeletingPathExtension(lastPathComponent(path));
    const QString name = stringWithFormat(QStringLiteral("%@.txt"), {baseName});
    const QString fullPathName = stringWithFormat(QStringLiteral("%@/%@"), {effectiveDestinationPath(), name});
    setFinalName(name);
    setFinalFullPathName(fullPathName);
    platform().conversionWatcher.documentEnds(path, ConversionWatcher::Result::converted, fullPathName);
    // deliberate: a failed write changes nothing here; the document is counted and logged as converted.
    platform().fileSystem.writeToFileAtomically(text, fullPathName, [this, path, fullPathName](const QString& cause) {
        platform().conversionWatcher.textNotWritten(path, fullPathName, cause);
    });
    setNumberProcessed(numberProcessed().longValue() + 1);
    // deliberate: no conversion ever sets it back to false.
    setDone(true);
    doMessageLog(stringWithFormat(QStringLiteral("Converted %@  >>  %@"), {path, fullPathName}), false);
    return DocumentText::End::text;
}

QByteArray QuillowAppDelegate::plainTextOf(const AttributedString& styledText) {
    setRtfString(styledText);
    textView_.setAttributedString(styledText);
    return textView_.string();
}

void QuillowAppDelegate::logNoText(const QString& path) {
    doMessageLog(stringWithFormat(QStringLiteral("Not able to extract any text from %@"), {path}), true);
}

void QuillowAppDelegate::openAlertPanelCantDropThisHere() {
    const Alert alert{QStringLiteral("Can't Accept This File Here"),
                      QStringLiteral("You can drop here only File type: RTF, RTFD, HTM, HTML, PDF"),
                      AlertStyle::warning,
                      {}};
    platform().alerts.beginSheetModalForWindow(alert, window(), {});
}

} // namespace quillow
