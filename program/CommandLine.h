// The command line of the desktop program, and the parts of the environment that a start hands over.
#pragma once

#include "platform/qt/life/HandoverMessage.h"

#include <QCoreApplication>

namespace quillow {

/// Environment variables that launchers set. Read them before the QApplication is constructed: it removes them.
struct LauncherTraces {
    QByteArray startupId = qgetenv("DESKTOP_STARTUP_ID");
    QByteArray activationToken = qgetenv("XDG_ACTIVATION_TOKEN");
};

/// The documents named on the command line. Qt has already removed its own options. This function handles the other
/// options: --help, --version and an unknown option end the program.
[[nodiscard]] Handover handoverOf(const QCoreApplication& application, int argc, char** argv,
                                  const LauncherTraces& traces);

} // namespace quillow
