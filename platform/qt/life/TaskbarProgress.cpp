// Source: the documentation of the Unity Launcher API. Several desktops' taskbars and docks understand it.
#include "platform/qt/life/TaskbarProgress.h"

#include <QDBusMessage>
#include <QVariantMap>

namespace quillow {

void TaskbarProgress::show(qint64 done, qint64 total) {
    const QDateTime now = clock_.now();
    if (!since_) since_ = now;
    // The clock may be set back.
    if (qAbs(since_->msecsTo(now)) < kIntervalMilliseconds) return;
    since_ = now;
    isShown_ = true;
    send(static_cast<double>(done) / static_cast<double>(total), true);
}

void TaskbarProgress::hide() {
    since_.reset();
    if (std::exchange(isShown_, false)) send(1, false);
}

void TaskbarProgress::send(double progress, bool isVisible) const {
    const QDBusConnection bus = bus_();
    if (!bus.isConnected()) return;
    // Each program has a path of its own below this one.
    QDBusMessage signal =
        QDBusMessage::createSignal(QStringLiteral("/com/canonical/unity/launcherentry/quillow"),
                                   QStringLiteral("com.canonical.Unity.LauncherEntry"), QStringLiteral("Update"));
    signal << QStringLiteral("application://org.quillow.Quillow.desktop")
           << QVariantMap{{QStringLiteral("progress"), progress},
                          {QStringLiteral("progress-visible"), isVisible},
                          {QStringLiteral("urgent"), false}};
    bus.send(signal);
}

} // namespace quillow
