// Brings a window to the front on behalf of a launcher, with the desktop's startup protocols.
#pragma once

#include <QByteArray>
#include <QWidget>

namespace quillow {

/// Under X11 the window is activated as a direct user action, with the timestamp in the startup id, and the id's
/// launch is reported as complete (Startup Notification Protocol 0.1; Extended Window Manager Hints,
/// _NET_ACTIVE_WINDOW). Under Wayland the window asks for activation with the token (xdg-activation). The window must
/// be shown already.
void activateForLauncher(QWidget& window, const QByteArray& startupId, const QByteArray& activationToken);

/// The token that lets the window come to the front under Wayland; empty if the launcher passed none. Launchers that
/// do not use XDG_ACTIVATION_TOKEN pass it in DESKTOP_STARTUP_ID (GTK 4.8, so nautilus 43).
[[nodiscard]] QByteArray activationTokenOf(const QByteArray& startupId, const QByteArray& activationToken);

/// The X server's timestamp in a startup id "..._TIME12345"; 0 if it has none.
[[nodiscard]] quint32 timeOfStartupId(const QByteArray& startupId);

} // namespace quillow
