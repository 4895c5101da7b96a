// The command line of the desktop program, and what of its surroundings a start hands over.
#pragma once

#include "platform/qt/life/HandoverMessage.h"

#include <QCoreApplication>

namespace quillow {

/// What launchers leave in the environment. Read before there is a QApplication, which takes it away.
struct LauncherTraces {
    QByteArray startupId = qgetenv("DESKTOP_STARTUP_ID");
    QByteArray activationToken = qgetenv("XDG_ACTIVATION_TOKEN");
};

/// The documents named on the command line, of which Qt has taken its own options. Options are answered here; --help,
/// --version and an option that there is not end the program.
[[nodiscard]] Handover handoverOf(const QCoreApplication& application, int argc, char** argv,
                                  const LauncherTraces& traces);

} // namespace quillow
