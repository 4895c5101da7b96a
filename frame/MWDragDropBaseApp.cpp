#include "frame/MWDragDropBaseApp.h"

#include "frame/MWDragDropView.h"
#include "platform/Alerts.h"
#include "platform/FileSystem.h"
#include "platform/ProgressIndicator.h"

namespace quillow {

MWDragDropBaseApp::MWDragDropBaseApp(const Platform& platform, const MWAppSupportUtility& supportUtility,
                                     ValueTransformerRegistry& valueTransformers)
    : MWAppDelegateBase(platform, supportUtility, valueTransformers) {
    setDone(false);
    setFileToProcessPathArray({});
}

void MWDragDropBaseApp::applicationDidFinishLaunching(const Notification&) {
    if (!dragDropArea_) return;
    dropObservation_ =
        dragDropArea_->addObserver(QStringLiteral("myFilePathDropped"),
                                   [this](const QString& keyPath, const KVObject& object, const Change& change) {
                                       observeValueForKeyPath(keyPath, &object, change, nullptr);
                                   });
}

void MWDragDropBaseApp::applicationWillTerminate(const Notification&) {
    dropObservation_.end();
}

bool MWDragDropBaseApp::applicationShouldTerminateAfterLastWindowClosed(Sender) {
    return true;
}

bool MWDragDropBaseApp::existFolderAtPath(const QString& path) const {
    bool isDirectory = false;
    return platform().fileSystem.fileExistsAtPath(path, &isDirectory) && isDirectory;
}

void MWDragDropBaseApp::taskStarted(Sender) {
    if (progressIndicator_) progressIndicator_->startAnimation();
    setPerformingTask(true);
    setDone(false);
}

void MWDragDropBaseApp::openAlertPanelDestinationFolderNonExistant() {
    const Alert alert{QStringLiteral("Destination Folder Non Existant"),
                      QStringLiteral("Please set a different folder in preferences"),
                      AlertStyle::warning,
                      {QStringLiteral("OK")}};
    platform().alerts.beginSheetModalForWindow(alert, window_, {});
}

bool MWDragDropBaseApp::isAcceptedFileToConvertAtPath(const QString&) const {
    return false;
}

void MWDragDropBaseApp::observeValueForKeyPath(const QString&, const KVObject*, const Change&, void*) {}

} // namespace quillow
