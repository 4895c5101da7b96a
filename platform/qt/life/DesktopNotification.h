// A quiet notification of the desktop with one button, over org.freedesktop.Notifications. A desktop without such a
// service shows nothing.
#pragma once

#include <QDBusConnection>
#include <QObject>

#include <functional>

namespace quillow {

class DesktopNotification final : public QObject {
    Q_OBJECT
public:
    using Bus = std::function<QDBusConnection()>;
    /// The bus is connected when the first notification is shown.
    explicit DesktopNotification(Bus bus = &QDBusConnection::sessionBus);
    ~DesktopNotification() override;

    /// Replaces the notification that is shown. `pressed` is called when the user presses the notification or its
    /// button. The texts are plain.
    void show(const QString& summary, const QString& body, const QString& button, std::function<void()> pressed);
    /// Takes the notification away.
    void close();

private Q_SLOTS:
    void actionInvoked(uint id, const QString& action);
    void notificationClosed(uint id, uint reason);

private:
    void listen();

    Bus bus_;
    bool isListening_ = false;
    uint id_ = 0; ///< 0 if none is shown
    std::function<void()> pressed_;
};

} // namespace quillow
