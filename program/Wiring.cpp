#include "program/Wiring.h"

#include "base/SettingKeys.h"
#include "platform/qt/windows/UpdatePane.h"
#include "prefs/MWPhoneHome.h"

#include <optional>
#include <utility>

namespace quillow {

Bindings::Bindings(QuillowAppDelegate& delegate, const Defaults& defaults, UndoManager& undoManager,
                   MainWindow& window) {
    // This property changes at launch and whenever the user chooses or clears the folder in the preferences. Before
    // that, an alert at launch may show the window, and nothing is known yet.
    observe(delegate, u"displayDestinationPath", [&delegate, &defaults, &window] {
        window.setDestination(delegate.displayDestinationPath());
        const auto bookmark = defaults.objectForKey(settings::kDestBookmark.string()).data();
        window.setHasFolder(bookmark && !bookmark->isEmpty());
    });
    bind(delegate, u"numberProcessed",
         [&delegate, &window] { window.setConvertedCount(delegate.numberProcessed().longValue()); });
    bind(delegate, u"fileToProcessPath",
         [&delegate, &window] { window.setHasInput(delegate.fileToProcessPath().has_value()); });
    bind(delegate, u"finalFullPathName",
         [&delegate, &window] { window.setHasOutput(delegate.finalFullPathName().has_value()); });
    bind(delegate, u"bigWin", [&delegate, &window] { window.setBig(delegate.bigWin().boolValue()); });
    undoManager.setChangeHandler([&undoManager, &window] {
        window.setUndoAction(undoManager.canUndo() ? std::optional(undoManager.undoActionName()) : std::nullopt);
        window.setRedoAction(undoManager.canRedo() ? std::optional(undoManager.redoActionName()) : std::nullopt);
    });
}

void Bindings::bind(KVObject& object, const char16_t* key, const std::function<void()>& show) {
    observe(object, key, show);
    show();
}

void Bindings::observe(KVObject& object, const char16_t* key, const std::function<void()>& show) {
    observations_.push_back(object.addObserver(QString::fromUtf16(key),
                                               [show](const QString&, const KVObject&, const Change&) { show(); }));
}

MainWindowCommands commandsOf(QuillowAppDelegate& delegate, MWDragDropView& dropView, UndoManager& undoManager,
                              std::function<void()> quit) {
    MainWindowCommands commands;
    commands.convert = [&dropView](const QStringList& paths) { dropView.addLinkToFiles(paths); };
    commands.changeDestination = [&delegate] { delegate.openPreferencesAtTab(0); };
    commands.openPreferences = [&delegate] { delegate.openPreferences(); };
    commands.resetCounter = [&delegate] { delegate.resetCounter(); };
    commands.showInput = [&delegate] { delegate.showLastProcessedFile(); };
    commands.openInput = [&delegate] { delegate.openLastProcessedFile(); };
    commands.showOutput = [&delegate] { delegate.showLastOutputFile(); };
    commands.openOutput = [&delegate] { delegate.openLastOutputFile(); };
    commands.showFolder = [&delegate] { delegate.showOutputDirectory(); };
    commands.clearLog = [&delegate] { delegate.resetLogAlert(); };
    commands.switchWindows = [&delegate] { delegate.switchWindows(); };
    commands.showMainWindow = [&delegate] { delegate.showMainWindow(); };
    commands.undo = [&undoManager] { undoManager.undo(); };
    commands.redo = [&undoManager] { undoManager.redo(); };
    commands.openUserGuide = [&delegate] { delegate.openUserGuide(); };
    commands.emailUs = [&delegate] { delegate.emailUs(); };
    commands.visitAppUrl = [&delegate] { delegate.visitAppUrl(); };
    commands.visitUs = [&delegate] { delegate.visitUs(); };
    commands.quit = std::move(quit);
    return commands;
}

PreferencesBindings::Actions preferencesActionsOf(QuillowAppDelegate& delegate) {
    PreferencesBindings::Actions actions;
    actions.adjustDestinationPath = [&delegate] { delegate.adjustDestinationPath(); };
    actions.selectFolder = [&delegate] { delegate.selectFolderToSaveOutput(); };
    actions.showFolder = [&delegate] { delegate.showDestPath(); };
    actions.clearFolder = [&delegate] { delegate.clearDestPath(); };
    actions.selectDocument = [&delegate] { delegate.selectStartupDoc(); };
    actions.showDocument = [&delegate] { delegate.showInFinderStartupDoc(); };
    actions.testDocument = [&delegate] { delegate.testOpenStartupDoc(); };
    actions.clearDocument = [&delegate] { delegate.clearStartupSelectedDoc(); };
    actions.checkNow = [&delegate] { delegate.checkForLastReleaseAvailable(); };
    return actions;
}

void showChecks(MWPhoneHome& checker, UpdatePane& pane) {
    checker.setCheckHandler([&pane](bool isChecking) { pane.setChecking(isChecking); });
    pane.setChecking(checker.isChekingUpdateSystem());
}

PreferencesBindings::Transforms transformsOf(const ValueTransformerRegistry& registry) {
    const auto transform = [&registry](const char16_t* name) {
        return [transformer = registry.valueTransformerForName(QString::fromUtf16(name))](const Boxed& value) {
            return transformer ? transformer->transformedValue(value) : Boxed();
        };
    };
    const auto reverse = [&registry](const char16_t* name) {
        return [transformer = registry.valueTransformerForName(QString::fromUtf16(name))](const Boxed& value) {
            return transformer ? transformer->reverseTransformedValue(value) : Boxed();
        };
    };
    PreferencesBindings::Transforms transforms;
    transforms.valueIs1 = transform(u"valueIs1");
    transforms.valueIs1Reversed = reverse(u"valueIs1");
    transforms.valueIsNot1 = transform(u"valueIsNot1");
    transforms.valueNot0 = transform(u"valueNot0");
    transforms.b2p = transform(u"b2p");
    transforms.MWNumberBoolToNumberNum = transform(u"MWNumberBoolToNumberNum");
    transforms.MWNumberBoolToNumberNumReversed = reverse(u"MWNumberBoolToNumberNum");
    transforms.MWFilledTrimmedString = transform(u"MWFilledTrimmedString");
    return transforms;
}

} // namespace quillow
