#include "program/Parts.h"

#include "platform/qt/controls/DiscloseButton.h"
#include "platform/qt/dragdrop/DocumentGlyph.h"
#include "platform/qt/dragdrop/DropArea.h"
#include "prefs/MWPhoneHome.h"

#include <QGuiApplication>

#include <malloc.h>

#include <utility>

namespace quillow {
namespace {

QuillowAppDelegate::UpdateMirrors updateMirrors() {
    if constexpr (configuration::kTakesMirrorsFromTests) {
        const QStringList mirrors = qEnvironmentVariable("QUILLOW_TEST_MIRRORS").split(u' ');
        if (mirrors.size() == 4) return {mirrors[0], mirrors[1], mirrors[2], mirrors[3]};
    }
    return {QString::fromUtf16(configuration::kMirrorUrl1), QString::fromUtf16(configuration::kMirrorUrl2),
            QString::fromUtf16(configuration::kMirrorUrl3), QString::fromUtf16(configuration::kMirrorUrl4)};
}

} // namespace

Parts::Parts(QtMainQueue& mainQueue, const Termination& termination, std::function<void()> quit)
    : adapters_(mainQueue, termination)
    , whitePanel_(adapters_.window.dropArea())
    , dropView_(adapters_.window.dropArea().innerArea()) {
    MWPhoneHome::setSharedPorts({adapters_.alerts, adapters_.backgroundQueue, adapters_.clock, adapters_.defaults,
                                 adapters_.mainQueue, adapters_.propertyListLoader, adapters_.workspace,
                                 adapters_.supportUtility});
    QuillowAppDelegate::initialize(adapters_.defaults, updateMirrors());
    delegate_.emplace(adapters_.platform(), adapters_.supportUtility, adapters_.valueTransformers,
                      adapters_.undoManager);
    connectOutlets();
    connectWindows(std::move(quit));
    adapters_.backgroundQueue.hold();
}

void Parts::doWhatCanWait() {
    QGuiApplication::setWindowIcon(applicationIcon());
    adapters_.backgroundQueue.release();
    // The start leaves free memory behind: what was read of the fonts' configuration, and the first layout.
    ::malloc_trim(0);
}

Parts::Preferences::Preferences(Adapters& adapters, QuillowAppDelegate& delegate)
    : window(Adapters::kUpdateCheck)
    , toolbarFactory(PreferencesWindow::kToolbarHeight)
    , toolbarDelegate(toolbarFactory, window.window(), window.tabView())
    , bindings(window, delegate, adapters.defaults, adapters.dateFormatting, transformsOf(adapters.valueTransformers),
               preferencesActionsOf(delegate)) {
    toolbarDelegate.awakeFromNib();
    showChecks(MWPhoneHome::sharedPhoneHome(), window.updatePane());
}

Parts::Preferences::~Preferences() {
    MWPhoneHome::sharedPhoneHome().setCheckHandler({});
}

void Parts::notifyOf(const Outcome& outcome) {
    const auto [summary, body] = notificationTexts(outcome);
    notification_.showInBackground(summary, body, QStringLiteral("Show"), [this] {
        delegate_->showMainWindow();
        delegate_->showLastOutputFile();
    });
}

qint64 Parts::documentsOfBatch(int documentsBefore) const {
    // A drop reports documents for a fixed folder one by one. Others are collected before they are converted.
    const qsizetype collected = delegate_->fileToProcessPathArray().size();
    return collected > 0 ? collected : documentsBefore + 1 + dropView_.pathsToCome();
}

PreferencesWindow& Parts::preferences() {
    if (!preferences_) {
        preferences_.emplace(adapters_, *delegate_);
        delegate_->setPrefToolbarDelegate(&preferences_->toolbarDelegate);
    }
    return preferences_->window;
}

void Parts::connectOutlets() {
    dropView_.awakeFromNib();
    delegate_->setPrefWindow(&prefWindow_);
    delegate_->setMainWindow(&adapters_.window.window());
    delegate_->setWindow(&adapters_.window.window());
    delegate_->setDragDropArea(&dropView_);
    delegate_->setProgressIndicator(&adapters_.window.spinner());
    delegate_->setTextLog(&adapters_.window.logView());
    delegate_->setMyHelpMenu(&adapters_.helpMenu);
    delegate_->setMyDiscloseButton(&adapters_.window.discloseButton());
}

void Parts::connectWindows(std::function<void()> quit) {
    bindings_.emplace(*delegate_, adapters_.defaults, adapters_.undoManager, adapters_.window);
    adapters_.window.setStatement(delegate_->getAppStantment());
    adapters_.window.setIsolation([this] { return QString::fromStdString(adapters_.engine.isolationLine()); });
    adapters_.window.setCommands(commandsOf(*delegate_, dropView_, adapters_.undoManager, std::move(quit)));
    const auto ifThere = [this](void (*action)(QtWorkspace&, const QString&)) {
        return [this, action](const QString& path) {
            if (adapters_.fileSystem.fileExistsAtPath(path, nullptr)) action(adapters_.workspace, path);
        };
    };
    adapters_.window.logView().setPathActions(
        {ifThere([](QtWorkspace& workspace, const QString& path) { workspace.openFile(path); }),
         ifThere([](QtWorkspace& workspace, const QString& path) { workspace.selectFile(path, QString()); })});
    adapters_.conversionReport.setProgressHandler(
        [this](int documentsBefore) { taskbarProgress_.show(documentsBefore, documentsOfBatch(documentsBefore)); });
    adapters_.conversionReport.setHandler([this](const Outcome& outcome) {
        taskbarProgress_.hide();
        adapters_.window.showOutcome(outcome);
        notifyOf(outcome);
    });
    adapters_.documents.setRoads({[this] { adapters_.window.chooseDocuments(); },
                                  [this](const QStringList& paths) { dropView_.addLinkToFiles(paths); }});
}

} // namespace quillow
