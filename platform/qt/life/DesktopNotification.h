// A quiet notification of the desktop with one button, over org.freedesktop.Notifications. A desktop without such a
// service shows nothing.
#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QTimer>

#include <chrono>
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
    /// Shows it if the program is in the background, and takes it away when the program comes to the front.
    void showInBackground(const QString& summary, const QString& body, const QString& button,
                          std::function<void()> pressed);
    /// Takes the notification away.
    void close();

    /// A window that was asked to come to the front gets there within this time.
    static constexpr std::chrono::milliseconds kTimeToTheFront{500};

private Q_SLOTS:
    void actionInvoked(uint id, const QString& action);
    void notificationClosed(uint id, uint reason);

private:
    void listen();
    void closeInFront();

    Bus bus_;
    bool isListening_ = false;
    bool closesInFront_ = false;
    uint id_ = 0; ///< 0 if none is shown
    QTimer timeToTheFront_;
    std::function<void()> pressed_;
};

} // namespace quillow
