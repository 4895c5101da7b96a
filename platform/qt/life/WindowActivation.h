// Brings a window to the front on behalf of a launcher, as the desktop's own startup protocols ask for.
#pragma once

#include <QByteArray>
#include <QWidget>

namespace quillow {

/// Under X11 the window is activated as a direct action of the user, at the time that the startup id tells, and the id's
/// launch is reported as complete (Startup Notification Protocol 0.1; Extended Window Manager Hints, _NET_ACTIVE_WINDOW).
/// Under Wayland the window asks for activation with the token (xdg-activation). The window is shown already.
void activateForLauncher(QWidget& window, const QByteArray& startupId, const QByteArray& activationToken);

/// The token that lets the window come to the front under Wayland; empty when the launcher left none. Launchers that know no
/// XDG_ACTIVATION_TOKEN leave it in DESKTOP_STARTUP_ID (GTK 4.8, so nautilus 43).
[[nodiscard]] QByteArray activationTokenOf(const QByteArray& startupId, const QByteArray& activationToken);

/// The X server's time in a startup id "..._TIME12345"; 0 when it tells none.
[[nodiscard]] quint32 timeOfStartupId(const QByteArray& startupId);

} // namespace quillow
