// The delegate of a drag-and-drop application: it observes the drop area and stores the paths being processed. A
// derived delegate processes dropped paths; the hooks here do nothing.
#pragma once

#include "base/ActionSender.h"
#include "frame/MWAppDelegateBase.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

namespace quillow {

class MWDragDropView;
class ProgressIndicator;

class MWDragDropBaseApp : public MWAppDelegateBase {
public:
    MWDragDropBaseApp(const Platform& platform, const MWAppSupportUtility& supportUtility,
                      ValueTransformerRegistry& valueTransformers); // selector: init

    /// These two start and stop the observation of the drop area. A derived delegate that overrides one of them must
    /// call the base version too.
    virtual void applicationDidFinishLaunching(const Notification& notification);
    virtual void applicationWillTerminate(const Notification& notification);
    [[nodiscard]] virtual bool applicationShouldTerminateAfterLastWindowClosed(Sender application = {});

    /// True only for a folder, or a symbolic link to one.
    [[nodiscard]] bool existFolderAtPath(const QString& path) const;
    void taskStarted(Sender sender = {});
    void openAlertPanelDestinationFolderNonExistant();

    // Hooks.
    virtual void openAlertPanelCantDropThisHere() {}
    virtual void doProcess() {}
    [[nodiscard]] virtual bool isAcceptedFileToConvertAtPath(const QString& path) const;
    virtual void observeValueForKeyPath(const QString& keyPath, const KVObject* ofObject, const Change& change,
                                        void* context);

    // The state of the processing.
    [[nodiscard]] std::optional<QString> fileToProcessPath() const { return fileToProcessPath_.get(); }
    void setFileToProcessPath(const std::optional<QString>& path) { fileToProcessPath_.set(path); }
    [[nodiscard]] QStringList fileToProcessPathArray() const { return fileToProcessPathArray_.get(); }
    void setFileToProcessPathArray(const QStringList& paths) { fileToProcessPathArray_.set(paths); }
    /// deliberate: kept for derived applications that process a bookmarked file; this product leaves it nil.
    [[nodiscard]] std::optional<QByteArray> fileToProcessBookmark() const { return fileToProcessBookmark_.get(); }
    void setFileToProcessBookmark(const std::optional<QByteArray>& bookmark) { fileToProcessBookmark_.set(bookmark); }
    /// A boolean: whether the current task has finished. The name begins with a capital letter on purpose.
    [[nodiscard]] Boxed Done() const { return Done_.get(); }
    void setDone(const Boxed& done) { Done_.set(done); }
    [[nodiscard]] Boxed performingTask() const { return performingTask_.get(); }
    void setPerformingTask(const Boxed& performingTask) { performingTask_.set(performingTask); }

    // Outlets. Each may be null; calls to it then have no effect.
    [[nodiscard]] MWDragDropView* dragDropArea() const { return dragDropArea_; }
    void setDragDropArea(MWDragDropView* dragDropArea) { dragDropArea_ = dragDropArea; }
    [[nodiscard]] ProgressIndicator* progressIndicator() const { return progressIndicator_; }
    void setProgressIndicator(ProgressIndicator* progressIndicator) { progressIndicator_ = progressIndicator; }
    /// The main window: sheets are attached to it.
    [[nodiscard]] Window* window() const { return window_; }
    void setWindow(Window* window) { window_ = window; }

private:
    KVProperty<std::optional<QString>> fileToProcessPath_{*this, u"fileToProcessPath"};
    KVProperty<QStringList> fileToProcessPathArray_{*this, u"fileToProcessPathArray"};
    KVProperty<std::optional<QByteArray>> fileToProcessBookmark_{*this, u"fileToProcessBookmark"};
    KVProperty<Boxed> Done_{*this, u"Done"};
    KVProperty<Boxed> performingTask_{*this, u"performingTask"};
    MWDragDropView* dragDropArea_ = nullptr;
    ProgressIndicator* progressIndicator_ = nullptr;
    Window* window_ = nullptr;
    Observation dropObservation_;
};

} // namespace quillow
