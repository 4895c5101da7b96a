#include "platform/qt/life/DesktopNotification.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QGuiApplication>
#include <QVariantMap>

#include <utility>

namespace quillow {
namespace {

const QString kService = QStringLiteral("org.freedesktop.Notifications");
const QString kPath = QStringLiteral("/org/freedesktop/Notifications");
/// The server chooses how long it shows the notification.
constexpr int kServersTime = -1;
constexpr uchar kLowUrgency = 0;

QDBusMessage callOf(const QString& method) {
    return QDBusMessage::createMethodCall(kService, kPath, kService, method);
}

bool isInFront() {
    return QGuiApplication::applicationState() == Qt::ApplicationActive;
}

} // namespace

DesktopNotification::DesktopNotification(Bus bus)
    : bus_(std::move(bus)) {
    timeToTheFront_.setSingleShot(true);
    timeToTheFront_.setInterval(kTimeToTheFront);
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this, &DesktopNotification::closeInFront);
}

DesktopNotification::~DesktopNotification() {
    close();
}

void DesktopNotification::listen() {
    if (std::exchange(isListening_, true)) return;
    bus_().connect(kService, kPath, kService, QStringLiteral("ActionInvoked"), this,
                   SLOT(actionInvoked(uint, QString)));
    bus_().connect(kService, kPath, kService, QStringLiteral("NotificationClosed"), this,
                   SLOT(notificationClosed(uint, uint)));
}

void DesktopNotification::show(const QString& summary, const QString& body, const QString& button,
                               std::function<void()> pressed) {
    listen();
    pressed_ = std::move(pressed);
    closesInFront_ = false;
    QDBusMessage call = callOf(QStringLiteral("Notify"));
    // Servers read a body as markup.
    call << QStringLiteral("Quillow") << id_ << QStringLiteral("org.quillow.Quillow") << summary << body.toHtmlEscaped()
         << QStringList{QStringLiteral("default"), button, QStringLiteral("show"), button}
         << QVariantMap{{QStringLiteral("desktop-entry"), QStringLiteral("org.quillow.Quillow")},
                        {QStringLiteral("urgency"), QVariant::fromValue(kLowUrgency)},
                        {QStringLiteral("suppress-sound"), true}}
         << kServersTime;
    auto* watcher = new QDBusPendingCallWatcher(bus_().asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* finished) {
        const QDBusPendingReply<uint> reply = *finished;
        if (!reply.isError()) id_ = reply.value();
        finished->deleteLater();
        closeInFront();
    });
}

void DesktopNotification::showInBackground(const QString& summary, const QString& body, const QString& button,
                                           std::function<void()> pressed) {
    if (isInFront()) return;
    timeToTheFront_.disconnect();
    timeToTheFront_.callOnTimeout([=, this] {
        show(summary, body, button, pressed);
        closesInFront_ = true;
    });
    timeToTheFront_.start();
}

void DesktopNotification::closeInFront() {
    if (!isInFront()) return;
    timeToTheFront_.stop();
    if (closesInFront_) close();
}

void DesktopNotification::close() {
    if (id_ == 0) return;
    QDBusMessage call = callOf(QStringLiteral("CloseNotification"));
    call << std::exchange(id_, 0U);
    bus_().send(call);
}

void DesktopNotification::actionInvoked(uint id, const QString&) {
    if (id == id_ && pressed_) pressed_();
}

void DesktopNotification::notificationClosed(uint id, uint) {
    if (id == id_) id_ = 0;
}

} // namespace quillow
