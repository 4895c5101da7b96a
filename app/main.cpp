// The desktop program: makes the adapters, the delegate and the window, and ties them together.
#include "app/QuillowAppDelegate.h"
#include "base/Release.h"
#include "base/UndoManager.h"
#include "frame/MWDragDropView.h"
#include "platform/engine/EngineTextReaders.h"
#include "platform/qt/AccessRegistry.h"
#include "platform/qt/BackgroundTextReaders.h"
#include "platform/qt/DocumentGlyph.h"
#include "platform/qt/IcuDateFormatting.h"
#include "platform/qt/MainWindow.h"
#include "platform/qt/QtAlerts.h"
#include "platform/qt/QtBookmarkStore.h"
#include "platform/qt/QtBundle.h"
#include "platform/qt/QtClock.h"
#include "platform/qt/QtDefaults.h"
#include "platform/qt/QtFileSystem.h"
#include "platform/qt/QtLogView.h"
#include "platform/qt/QtMainQueue.h"
#include "platform/qt/QtPanels.h"
#include "platform/qt/QtWorkspace.h"
#include "platform/qt/Spinner.h"
#include "platform/qt/TerminationSignals.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>

#include <cstdio>

namespace quillow {
namespace {

void describeApplication() {
    QCoreApplication::setApplicationName(QString::fromUtf16(kApplicationName));
    QCoreApplication::setApplicationVersion(QString::fromUtf16(kCurrentReleaseString));
    QGuiApplication::setApplicationDisplayName(QString::fromUtf16(kApplicationName));
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
    Bindings(QuillowAppDelegate& delegate, UndoManager& undoManager, MainWindow& window) {
        bind(delegate, u"displayDestinationPath",
             [&delegate, &window] { window.setDestination(delegate.displayDestinationPath()); });
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
    commands.changeDestination = [&delegate] { delegate.selectFolderToSaveOutput(); };
    commands.resetCounter = [&delegate] { delegate.resetCounter(); };
    commands.showInput = [&delegate] { delegate.showLastProcessedFile(); };
    commands.openInput = [&delegate] { delegate.openLastProcessedFile(); };
    commands.showOutput = [&delegate] { delegate.showLastOutputFile(); };
    commands.openOutput = [&delegate] { delegate.openLastOutputFile(); };
    commands.showFolder = [&delegate] { delegate.showOutputDirectory(); };
    commands.clearLog = [&delegate] { delegate.resetLogAlert(); };
    commands.undo = [&undoManager] { undoManager.undo(); };
    commands.redo = [&undoManager] { undoManager.redo(); };
    commands.quit = [] { QCoreApplication::exit(0); };
    return commands;
}

int runProgram(QApplication& application) {
    const QStringList documents = documentsOf(application);

    // The adapters.
    AccessRegistry access;
    Sheets sheets;
    QtAlerts alerts(sheets);
    QtPanels panels(sheets);
    QtBookmarkStore bookmarkStore(access);
    QtBundle bundle;
    QtClock clock;
    IcuDateFormatting dateFormatting;
    QtDefaults defaults(QtDefaults::standardFilePath());
    QtFileSystem fileSystem(access);
    QtMainQueue mainQueue;
    QtWorkspace workspace;
    UndoManager undoManager;
    MainWindow window(alerts, workspace);

    const DocumentExtractor extractor(&logReason);
    EngineRtfTextReader rtfReader(extractor);
    EngineHtmlTextReader htmlReader(extractor);
    EnginePdfTextReader pdfReader(extractor);
    const BackgroundWork backgroundWork(&window.spinner());
    BackgroundRtfTextReader backgroundRtfReader(rtfReader, backgroundWork);
    BackgroundHtmlTextReader backgroundHtmlReader(htmlReader, backgroundWork);
    BackgroundPdfTextReader backgroundPdfReader(pdfReader, backgroundWork);

    // The delegate and its outlets.
    MWDragDropView dropView;
    QuillowAppDelegate delegate({alerts, bookmarkStore, bundle, clock, dateFormatting, defaults, fileSystem,
                                 backgroundHtmlReader, mainQueue, panels, backgroundPdfReader, backgroundRtfReader,
                                 undoManager, workspace});
    delegate.setWindow(&window.window());
    delegate.setDragDropArea(&dropView);
    delegate.setProgressIndicator(&window.spinner());
    delegate.setTextLog(&window.logView());
    const Bindings bindings(delegate, undoManager, window);
    window.setCommands(commandsOf(delegate, dropView, undoManager));

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
