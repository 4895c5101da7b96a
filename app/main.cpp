// The desktop program: makes the adapters, the delegate and the window, and ties them together.
#include "app/Configuration.h"
#include "app/QuillowAppDelegate.h"
#include "base/Release.h"
#include "base/UndoManager.h"
#include "frame/MWAppSupportUtility.h"
#include "frame/MWDragDropView.h"
#include "platform/engine/EngineTextReaders.h"
#include "platform/qt/AccessRegistry.h"
#include "platform/qt/BackgroundTextReaders.h"
#include "platform/qt/DocumentGlyph.h"
#include "platform/qt/IcuDateFormatting.h"
#include "platform/qt/MainWindow.h"
#include "platform/qt/PreferencesBindings.h"
#include "platform/qt/PreferencesWindow.h"
#include "platform/qt/QtAlerts.h"
#include "platform/qt/QtBackgroundQueue.h"
#include "platform/qt/QtBookmarkStore.h"
#include "platform/qt/QtBundle.h"
#include "platform/qt/QtClock.h"
#include "platform/qt/QtDefaults.h"
#include "platform/qt/QtDocuments.h"
#include "platform/qt/QtFileSystem.h"
#include "platform/qt/QtImageCodec.h"
#include "platform/qt/QtLogView.h"
#include "platform/qt/QtMainQueue.h"
#include "platform/qt/QtMenus.h"
#include "platform/qt/QtPanels.h"
#include "platform/qt/QtPropertyListLoader.h"
#include "platform/qt/QtSystemInfo.h"
#include "platform/qt/QtTextUnarchiver.h"
#include "platform/qt/QtTimers.h"
#include "platform/qt/QtToolbar.h"
#include "platform/qt/QtWorkspace.h"
#include "platform/qt/Spinner.h"
#include "platform/qt/TerminationSignals.h"
#include "prefs/MWPhoneHome.h"
#include "prefs/MyPrefToolbarDelegate.h"
#include "util/MWValueTransformer.h"
#include "util/StandardTransformers.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>

#include <cstdio>

namespace quillow {
namespace {

void describeApplication() {
    QCoreApplication::setApplicationName(QString::fromUtf16(kApplicationName));
    QCoreApplication::setApplicationVersion(QString::fromUtf16(kCurrentReleaseString));
    // No display name of its own: Qt would append it to every window's title.
    QGuiApplication::setDesktopFileName(QStringLiteral("org.quillow.Quillow"));
    QGuiApplication::setWindowIcon(applicationIcon());
}

/// The documents named on the command line, as absolute paths.
QStringList documentsOf(const QCoreApplication& application) {
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Converts RTF, RTFD, HTM, HTML and PDF documents to plain text."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(QStringLiteral("FILE"), QStringLiteral("Documents to convert."),
                                 QStringLiteral("[FILE...]"));
    parser.process(application);
    QStringList paths;
    for (const QString& argument : parser.positionalArguments())
        paths.append(QDir::cleanPath(QDir::current().absoluteFilePath(argument)));
    return paths;
}

void logReason(std::string_view line) {
    std::fprintf(stderr, "quillow: %.*s\n", static_cast<int>(line.size()), line.data());
}

/// Tells the window what the delegate's properties say, now and after every change.
class Bindings {
public:
    Bindings(QuillowAppDelegate& delegate, const Defaults& defaults, UndoManager& undoManager, MainWindow& window) {
        // Adjusted at launch and whenever the folder of the preferences is chosen or cleared.
        bind(delegate, u"displayDestinationPath", [&delegate, &defaults, &window] {
            window.setDestination(delegate.displayDestinationPath());
            const auto bookmark = defaults.objectForKey(QStringLiteral("destBookmark")).data();
            window.setHasFolder(bookmark && !bookmark->isEmpty());
        });
        bind(delegate, u"numberProcessed",
             [&delegate, &window] { window.setConvertedCount(delegate.numberProcessed().longValue()); });
        bind(delegate, u"fileToProcessPath",
             [&delegate, &window] { window.setHasInput(delegate.fileToProcessPath().has_value()); });
        bind(delegate, u"finalFullPathName",
             [&delegate, &window] { window.setHasOutput(delegate.finalFullPathName().has_value()); });
        undoManager.setChangeHandler([&undoManager, &window] {
            window.setUndoAction(undoManager.canUndo() ? std::optional(undoManager.undoActionName()) : std::nullopt);
            window.setRedoAction(undoManager.canRedo() ? std::optional(undoManager.redoActionName()) : std::nullopt);
        });
    }

private:
    void bind(KVObject& object, const char16_t* key, const std::function<void()>& show) {
        observations_.push_back(object.addObserver(QString::fromUtf16(key),
                                                   [show](const QString&, const KVObject&, const Change&) { show(); }));
        show();
    }

    std::vector<Observation> observations_;
};

MainWindowCommands commandsOf(QuillowAppDelegate& delegate, MWDragDropView& dropView, UndoManager& undoManager) {
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
    commands.undo = [&undoManager] { undoManager.undo(); };
    commands.redo = [&undoManager] { undoManager.redo(); };
    commands.openUserGuide = [&delegate] { delegate.openUserGuide(); };
    commands.emailUs = [&delegate] { delegate.emailUs(); };
    commands.visitAppUrl = [&delegate] { delegate.visitAppUrl(); };
    commands.visitUs = [&delegate] { delegate.visitUs(); };
    commands.quit = [] { QCoreApplication::exit(0); };
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

/// The transformers that the delegate has registered.
PreferencesBindings::Transforms transformsOf(const ValueTransformerRegistry& registry) {
    const auto named = [&registry](const char16_t* name) {
        return registry.valueTransformerForName(QString::fromUtf16(name));
    };
    const auto transform = [](const std::shared_ptr<const MWValueTransformer>& transformer) {
        return [transformer](const Boxed& value) { return transformer->transformedValue(value); };
    };
    const auto valueIs1 = named(u"valueIs1");
    return {transform(valueIs1), [valueIs1](const Boxed& value) { return valueIs1->reverseTransformedValue(value); },
            transform(named(u"valueIsNot1")), transform(named(u"b2p"))};
}

SupportAddresses supportAddresses() {
    return {QString::fromUtf16(configuration::kSupportMail), QString::fromUtf16(configuration::kAppUrl),
            QString::fromUtf16(configuration::kSiteUrl), QString::fromUtf16(configuration::kStoreUrl)};
}

QuillowAppDelegate::UpdateMirrors updateMirrors() {
    return {QString::fromUtf16(configuration::kMirrorUrl1), QString::fromUtf16(configuration::kMirrorUrl2),
            QString::fromUtf16(configuration::kMirrorUrl3), QString::fromUtf16(configuration::kMirrorUrl4)};
}

int runProgram(QApplication& application) {
    const QStringList documents = documentsOf(application);

    // The adapters.
    AccessRegistry access;
    Sheets sheets;
    QtMainQueue mainQueue;
    QtAlerts alerts(sheets, mainQueue);
    QtPanels panels(sheets);
    QtBookmarkStore bookmarkStore(access);
    QtBundle bundle(QtBundle::standardResourceFolder());
    QtClock clock;
    IcuDateFormatting dateFormatting;
    QtDefaults storedDefaults(QtDefaults::standardFilePath());
    ObservedDefaults defaults(storedDefaults);
    QtFileSystem fileSystem(access);
    QtSystemInfo systemInfo;
    QtTimers timers;
    QtToolbarFactory toolbarFactory(PreferencesWindow::kToolbarHeight);
    QtWorkspace workspace;
    UndoManager undoManager;
    const QtImageCodec imageCodec;
    const QtTextUnarchiver textUnarchiver;
    ValueTransformerRegistry valueTransformers;
    registerStandardTransformers(valueTransformers, bookmarkStore, clock, imageCodec, textUnarchiver);
    constexpr UpdateCheck updateCheck = configuration::kUpdateCheckIsWired ? UpdateCheck::wired : UpdateCheck::leftOut;
    MainWindow window(alerts, workspace);
    PreferencesWindow preferences(updateCheck);
    QtDocuments documentController(window.window());
    QtMenus menus(window.applicationMenu());

    const DocumentExtractor extractor(&logReason);
    EngineRtfTextReader rtfReader(extractor);
    EngineHtmlTextReader htmlReader(extractor);
    EnginePdfTextReader pdfReader(extractor);
    const BackgroundWork backgroundWork(&window.spinner());
    BackgroundRtfTextReader backgroundRtfReader(rtfReader, backgroundWork);
    BackgroundHtmlTextReader backgroundHtmlReader(htmlReader, backgroundWork);
    BackgroundPdfTextReader backgroundPdfReader(pdfReader, backgroundWork);

    // The update checker. Its downloads end before what they report to goes.
    const MWAppSupportUtility supportUtility(workspace, alerts, systemInfo, supportAddresses());
    QtPropertyListLoader propertyListLoader;
    QtBackgroundQueue backgroundQueue;
    MWPhoneHome::setSharedPorts(
        {alerts, backgroundQueue, clock, defaults, mainQueue, propertyListLoader, workspace, supportUtility});
    QuillowAppDelegate::initialize(defaults, updateMirrors());

    // The delegate and its outlets.
    MWDragDropView dropView;
    QuillowAppDelegate delegate({alerts,
                                 bookmarkStore,
                                 bundle,
                                 clock,
                                 dateFormatting,
                                 defaults,
                                 documentController,
                                 fileSystem,
                                 backgroundHtmlReader,
                                 mainQueue,
                                 menus,
                                 panels,
                                 backgroundPdfReader,
                                 backgroundRtfReader,
                                 supportUtility,
                                 systemInfo,
                                 timers,
                                 undoManager,
                                 valueTransformers,
                                 workspace,
                                 updateCheck});
    MyPrefToolbarDelegate prefToolbarDelegate(toolbarFactory, preferences.window(), preferences.tabView());
    prefToolbarDelegate.awakeFromNib();
    delegate.setPrefWindow(&preferences.window());
    delegate.setPrefToolbarDelegate(&prefToolbarDelegate);
    delegate.setMainWindow(&window.window());
    delegate.setWindow(&window.window());
    delegate.setDragDropArea(&dropView);
    delegate.setProgressIndicator(&window.spinner());
    delegate.setTextLog(&window.logView());
    const Bindings bindings(delegate, defaults, undoManager, window);
    const PreferencesBindings preferencesBindings(preferences, delegate, defaults, dateFormatting,
                                                  transformsOf(valueTransformers), preferencesActionsOf(delegate));
    window.setCommands(commandsOf(delegate, dropView, undoManager));
    documentController.setRoads({[&window] { window.chooseDocuments(); },
                                 [&dropView](const QStringList& paths) { dropView.addLinkToFiles(paths); }});

    // The run.
    const TerminationSignals signals([] { QCoreApplication::exit(0); });
    QGuiApplication::setQuitOnLastWindowClosed(delegate.applicationShouldTerminateAfterLastWindowClosed());
    delegate.applicationWillFinishLaunching({});
    delegate.applicationDidFinishLaunching({});
    if (!documents.isEmpty()) {
        window.callWhenUp(
            [&] { mainQueue.addOperation([&dropView, &documents] { dropView.addLinkToFiles(documents); }); });
    }
    const int exitCode = QApplication::exec();
    delegate.applicationWillTerminate({});
    return exitCode;
}

} // namespace
} // namespace quillow

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    quillow::describeApplication();
    return quillow::runProgram(application);
}
