#include "program/Application.h"

#include "platform/qt/life/WindowActivation.h"
#include "platform/qt/life/WindowPings.h"

#include <QApplication>
#include <QEvent>
#include <QSessionManager>

#include <cstdlib>
#include <utility>

namespace quillow {
namespace {

/// The next session starts the program without the documents of this start: they are converted already.
void leaveOutDocuments(QSessionManager& session) {
    session.setRestartCommand({QCoreApplication::applicationFilePath()});
}

} // namespace

Application* Application::running = nullptr;

Application::Application(Findable findable)
    : findable_(findable)
    , signals_([this] { quit(); }) {
    WindowPings::setQuitHandler([this] { signals_.request(); });
    qApp->installEventFilter(this);
    connect(qApp, &QGuiApplication::saveStateRequest, this, &leaveOutDocuments);
    QMetaObject::invokeMethod(
        this, [this] { launch(); }, Qt::QueuedConnection);
}

Application::~Application() {
    WindowPings::setQuitHandler({});
    running = nullptr;
}

void Application::terminateAtExit() {
    if (running) running->terminate();
}

int Application::run() {
    running = this;
    std::atexit(&terminateAtExit);
    const int exitCode = QApplication::exec();
    terminate();
    return exitCode;
}

void Application::launch() {
    parts_ = std::make_unique<Parts>(mainQueue_, signals_, [this] { quit(); });
    QuillowAppDelegate& delegate = parts_->delegate();
    const bool endsWithWindow = delegate.applicationShouldTerminateAfterLastWindowClosed();
    QGuiApplication::setQuitOnLastWindowClosed(endsWithWindow || findable_ == Findable::no);
    delegate.applicationWillFinishLaunching({});
    parts_->window().callWhenUp([this] { mainQueue_.addOperation([this] { parts_->doWhatCanWait(); }); });
    delegate.applicationDidFinishLaunching({});
    isLaunched_ = true;
    for (const auto& action : std::exchange(afterLaunch_, {}))
        action();
}

void Application::whenLaunched(std::function<void()> action) {
    if (isLaunched_)
        action();
    else
        afterLaunch_.push_back(std::move(action));
}

void Application::open(const Handover& handover) {
    whenLaunched([this, paths = absolutePathsOf(handover)] { convert(paths); });
}

bool Application::take(const Handover& handover) {
    if (isEnding_ || signals_.isRequested()) return false;
    mainQueue_.addOperation([this, handover] { whenLaunched([this, handover] { receive(handover); }); });
    return true;
}

void Application::receive(const Handover& handover) {
    if (isEnding_) return;
    parts_->delegate().showMainWindow();
    activateForLauncher(parts_->window(), handover.startupId, handover.activationToken);
    convert(absolutePathsOf(handover));
}

void Application::convert(const QStringList& paths) {
    if (paths.isEmpty()) return;
    unconverted_ += paths;
    // A conversion before the window's first paint would leave the window blank until it ends.
    parts_->window().callWhenUp([this] {
        mainQueue_.addOperation([this] {
            if (!isEnding_) parts_->dropView().addLinkToFiles(std::exchange(unconverted_, {}));
        });
    });
}

void Application::quit() {
    isEnding_ = true;
    QCoreApplication::exit(0); // also ends modal alerts: they return as dismissed
}

void Application::terminate() {
    if (std::exchange(isTerminated_, true)) return;
    isEnding_ = true;
    // A launch that was interrupted has loaded nothing that would need saving.
    if (!isLaunched_) return;
    mainQueue_.runAllAtEnd();
    parts_->delegate().applicationWillTerminate({});
}

bool Application::eventFilter(QObject* watched, QEvent* event) {
    // The session's end. Qt would first ask each window whether it may close, and a sheet would refuse.
    if (event->type() != QEvent::Quit || watched != qApp) return QObject::eventFilter(watched, event);
    quit();
    return true;
}

} // namespace quillow
