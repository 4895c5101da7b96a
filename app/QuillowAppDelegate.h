// The product's delegate, one instance for the whole run: it converts dropped documents (Conversion.cpp), decides where
// their texts go (Destination.cpp), keeps the message log (MessageLog.cpp), and saves the log and the window's mode
// between runs (DataFileAndModes.cpp).
#pragma once

#include "app/DocumentText.h"
#include "app/TextView.h"
#include "frame/MWBookmark.h"
#include "frame/MWDragDropBaseApp.h"
#include "platform/LogView.h"
#include "platform/TextReaders.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <array>
#include <optional>

namespace quillow {

class Button;
class UndoManager;

class QuillowAppDelegate final : public MWDragDropBaseApp {
public:
    /// The four addresses of the release-information list, in the order in which they are tried.
    using UpdateMirrors = std::array<QString, 4>;

    /// Registers the defaults and configures the shared update checker, whose ports are set. Called once, before any
    /// instance is made.
    static void initialize(Defaults& defaults, const UpdateMirrors& mirrors); // selector: initialize
    /// Registers the transformers "valueIsNot1", "valueIs1" and "b2p". Clearing the log can be undone through
    /// `undoManager`.
    QuillowAppDelegate(const Platform& platform, const MWAppSupportUtility& supportUtility,
                       ValueTransformerRegistry& valueTransformers, UndoManager& undoManager); // selector: init

    // Life cycle.
    void applicationWillFinishLaunching(const Notification& notification);
    void applicationDidFinishLaunching(const Notification& notification) override;
    /// Saves the application data, then calls the base.
    void applicationWillTerminate(const Notification& notification) override;
    /// False: closing the main window leaves the program running.
    [[nodiscard]] bool applicationShouldTerminateAfterLastWindowClosed(Sender application = {}) override;

    // Conversion.
    /// Whether the path's extension is one of the five that are converted. Nothing on disk is looked at.
    [[nodiscard]] bool isAcceptedFileToConvertAtPath(const QString& path) const override;
    /// True for a file and for a folder that is a file package.
    [[nodiscard]] bool existFileOrBundleAtPath(const QString& path) const;
    void runDoProcess();
    void runDoMultiProcess();
    void doProcess() override;
    void doMultiProcess();
    void openAlertPanelCantDropThisHere() override;

    // Destination.
    void adjustDestinationPath(Sender sender = {});
    void observeValueForKeyPath(const QString& keyPath, const KVObject* ofObject, const Change& change,
                                void* context) override;
    void selectFolderToSaveOutput(Sender sender = {});
    void clearDestPath(Sender sender = {});
    void showDestPath(Sender sender = {});

    // Message log.
    void doMessageLog(const QString& message, bool bringFront);
    void clearLog(Sender sender = {});
    void clearLogUndo(const QString& text);
    void resetLogAlert(Sender sender = {});
    void resetCounter(Sender sender = {});
    void showLastProcessedFile(Sender sender = {});
    void openLastProcessedFile(Sender sender = {});
    void showLastOutputFile(Sender sender = {});
    void openLastOutputFile(Sender sender = {});
    void showOutputDirectory(Sender sender = {});

    // The application data file and the window's modes.
    /// Creates the folder if nothing exists at its path. A failure to do so is not reported.
    [[nodiscard]] QString pathForDataFile() const;
    void saveAppDataToDisk();
    void loadAppDataFromDisk();
    void goBigWindow(Sender sender = {});
    void goSmallWindow(Sender sender = {});
    void switchWindows(Sender sender = {});
    /// Makes `mainWindow` key and brings it to the front, even if it was closed.
    void showMainWindow(Sender sender = {});

    // What the frame requires of a product.
    [[nodiscard]] QString getUserGuideName() const override;
    [[nodiscard]] QString getUserGuideNameWithThisRelNum() const override;

    // Destination in force. The window shows `displayDestinationPath`: a path, "<ASK WHEN SAVING>", or nil when the
    // fixed folder cannot be found.
    [[nodiscard]] std::optional<QString> displayDestinationPath() const { return displayDestinationPath_.get(); }
    void setDisplayDestinationPath(const std::optional<QString>& path) { displayDestinationPath_.set(path); }
    [[nodiscard]] std::optional<QString> effectiveDestinationPath() const { return effectiveDestinationPath_.get(); }
    void setEffectiveDestinationPath(const std::optional<QString>& path) { effectiveDestinationPath_.set(path); }
    [[nodiscard]] std::optional<QByteArray> effectiveDestinationBookmark() const {
        return effectiveDestinationBookmark_.get();
    }
    void setEffectiveDestinationBookmark(const std::optional<QByteArray>& bookmark) {
        effectiveDestinationBookmark_.set(bookmark);
    }

    /// The folder last chosen when saving; the next panel starts there. Not saved between launches.
    [[nodiscard]] std::optional<QString> latestAskDestinationPath() const { return latestAskDestinationPath_.get(); }
    /// The state line of the destination in the preferences, and whether it states a condition or only prompts.
    [[nodiscard]] std::optional<QString> destMessageString() const { return destMessageString_.get(); }
    void setDestMessageString(const std::optional<QString>& text) { destMessageString_.set(text); }
    [[nodiscard]] Boxed destMessageStringSpecified() const { return destMessageStringSpecified_.get(); }
    void setDestMessageStringSpecified(const Boxed& value) { destMessageStringSpecified_.set(value); }

    // Results of the latest successful conversion.
    [[nodiscard]] std::optional<QString> finalName() const { return finalName_.get(); }
    void setFinalName(const std::optional<QString>& name) { finalName_.set(name); }
    [[nodiscard]] std::optional<QString> finalFullPathName() const { return finalFullPathName_.get(); }
    void setFinalFullPathName(const std::optional<QString>& path) { finalFullPathName_.set(path); }
    [[nodiscard]] const std::optional<AttributedString>& rtfString() const { return rtfString_; }
    void setRtfString(const std::optional<AttributedString>& text) { rtfString_ = text; }
    /// Documents converted in this run since the counter was reset.
    [[nodiscard]] Boxed numberProcessed() const { return numberProcessed_.get(); }
    void setNumberProcessed(const Boxed& count) { numberProcessed_.set(count); }

    /// Whether the window is in its big mode, a boolean; nil until the mode was first changed or read.
    [[nodiscard]] Boxed bigWin() const { return bigWin_.get(); }
    void setBigWin(const Boxed& bigWin) { bigWin_.set(bigWin); }
    /// The log as read from the application data file; nil if nothing was read. The log view shows it when it is set.
    [[nodiscard]] std::optional<QString> logContent() const { return logContent_.get(); }
    void setLogContent(const std::optional<QString>& text) { logContent_.set(text); }

    /// deliberate: false from the start and used by nothing; part of the delegate's interface.
    [[nodiscard]] Boxed None() const { return None_.get(); }

    /// The colour of every new line of the log.
    [[nodiscard]] const Color& properTextColor() const { return properTextColor_; }
    void setProperTextColor(const Color& color) { properTextColor_ = color; }
    [[nodiscard]] const TextView& textView() const { return textView_; }

    // Outlets. Any of them may be null; calls on it then have no effect.
    [[nodiscard]] LogView* textLog() const { return textLog_; }
    void setTextLog(LogView* textLog);
    [[nodiscard]] Window* mainWindow() const { return mainWindow_; }
    void setMainWindow(Window* mainWindow) { mainWindow_ = mainWindow; }
    /// The button whose state mirrors the window's mode.
    [[nodiscard]] Button* myDiscloseButton() const { return myDiscloseButton_; }
    void setMyDiscloseButton(Button* myDiscloseButton) { myDiscloseButton_ = myDiscloseButton; }

private:
    // Conversion.
    DocumentText::End convertDocument(const QString& path);
    [[nodiscard]] QByteArray plainTextOf(const AttributedString& styledText);
    void logNoText(const QString& path);

    // Destination.
    [[nodiscard]] std::optional<QString> pathForBookmark(const std::optional<QByteArray>& bookmark) const;
    [[nodiscard]] std::optional<QByteArray> storedDestinationBookmark() const;
    [[nodiscard]] bool destinationIsFixed() const;
    void checkStoredDestination();
    void convertIntoFixedFolder();
    void askForFolderAndConvert();

    // Message log.
    void appendLogLine(const QString& message);
    void replaceLog(const QString& text);
    void nameClearLogAction();
    void showFile(const std::optional<QString>& path);
    void openFile(const std::optional<QString>& path);

    // The window's modes.
    void changeHeight(double height, double rise);
    void limitHeight(double height);

    UndoManager& undoManager_;
    MWBookmark bookmark_;
    DocumentText documentText_;
    KVProperty<std::optional<QString>> displayDestinationPath_{*this, u"displayDestinationPath"};
    KVProperty<std::optional<QString>> effectiveDestinationPath_{*this, u"effectiveDestinationPath"};
    KVProperty<std::optional<QByteArray>> effectiveDestinationBookmark_{*this, u"effectiveDestinationBookmark"};
    KVProperty<std::optional<QString>> latestAskDestinationPath_{*this, u"latestAskDestinationPath"};
    KVProperty<std::optional<QString>> destMessageString_{*this, u"destMessageString"};
    KVProperty<Boxed> destMessageStringSpecified_{*this, u"destMessageStringSpecified"};
    KVProperty<std::optional<QString>> finalName_{*this, u"finalName"};
    KVProperty<std::optional<QString>> finalFullPathName_{*this, u"finalFullPathName"};
    KVProperty<Boxed> numberProcessed_{*this, u"numberProcessed", 0};
    KVProperty<Boxed> bigWin_{*this, u"bigWin"};
    KVProperty<std::optional<QString>> logContent_{*this, u"logContent"};
    KVProperty<Boxed> None_{*this, u"None", false};
    std::optional<AttributedString> rtfString_;
    Color properTextColor_;
    TextView textView_;
    LogView* textLog_ = nullptr;
    Observation logContentBinding_;
    Window* mainWindow_ = nullptr;
    Button* myDiscloseButton_ = nullptr;
};

} // namespace quillow
