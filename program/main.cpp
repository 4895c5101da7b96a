// The desktop program. A start that finds another instance running hands its documents over and ends.
#include "base/Release.h"
#include "frame/MWAppSupportUtility.h"
#include "platform/qt/controls/LazyIconStyle.h"
#include "platform/qt/life/SingleInstance.h"
#include "program/Application.h"
#include "program/CommandLine.h"

#include <QApplication>

#include <chrono>
#include <cstdio>
#include <optional>

namespace quillow {
namespace {

/// How long to wait for a running instance. It normally replies within milliseconds, whatever its window does.
constexpr std::chrono::seconds kPatience{10};

void describeApplication() {
    QCoreApplication::setApplicationName(QString::fromUtf16(kApplicationName));
    QCoreApplication::setApplicationVersion(MWAppSupportUtility::calcReleaseString(kCurrentRelease));
    // No application display name is set: Qt would append it to every window's title.
    QGuiApplication::setDesktopFileName(QStringLiteral("org.quillow.Quillow"));
}

/// Identifies the user's display: a start on another display is a separate instance.
QByteArray displayName() {
    QByteArray windowSystem = QGuiApplication::platformName().toUtf8();
    if (windowSystem.startsWith("wayland")) return windowSystem + '-' + qgetenv("WAYLAND_DISPLAY");
    if (windowSystem == "xcb") return windowSystem + '-' + qgetenv("DISPLAY");
    return windowSystem;
}

int runProgram(const Handover& handover) {
    std::optional<Application> application; // destroyed after the thread that passes messages to it
    SingleInstance instance(SingleInstance::standardFolder(), displayName());
    const SingleInstance::Role role = instance.begin(handover, kPatience);
    if (role == SingleInstance::Role::handedOver) return 0;
    if (role == SingleInstance::Role::unanswered) {
        std::fputs("quillow: Quillow is running but does not answer; nothing was converted\n", stderr);
        return 1;
    }
    application.emplace(role == SingleInstance::Role::first ? Findable::yes : Findable::no);
    application->open(handover);
    instance.serve([&application](const Handover& other) { return application->take(other); });
    return application->run();
}

} // namespace
} // namespace quillow

int main(int argc, char** argv) {
    const quillow::LauncherTraces traces;
    QApplication application(argc, argv);
    QApplication::setStyle(new quillow::LazyIconStyle);
    quillow::describeApplication();
    return quillow::runProgram(quillow::handoverOf(application, argc, argv, traces));
}
