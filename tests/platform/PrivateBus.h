// A private D-Bus session, with one connection for the tested side and one for its service.
#pragma once

#include <QDBusConnection>
#include <QProcess>
#include <QString>

namespace quillow {

class PrivateBus {
public:
    PrivateBus() {
        daemon_.start(QStringLiteral("dbus-daemon"),
                      {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--print-address")});
        if (!daemon_.waitForReadyRead()) return;
        const QString address = QString::fromLatin1(daemon_.readLine()).trimmed();
        client_ = QDBusConnection::connectToBus(address, QStringLiteral("client"));
        service_ = QDBusConnection::connectToBus(address, QStringLiteral("service"));
    }
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;
    ~PrivateBus() {
        QDBusConnection::disconnectFromBus(QStringLiteral("client"));
        QDBusConnection::disconnectFromBus(QStringLiteral("service"));
        daemon_.kill();
        daemon_.waitForFinished();
    }

    [[nodiscard]] bool isConnected() const { return client_.isConnected() && service_.isConnected(); }
    [[nodiscard]] QDBusConnection& client() { return client_; }
    [[nodiscard]] QDBusConnection& service() { return service_; }

private:
    QProcess daemon_;
    QDBusConnection client_{QString()};
    QDBusConnection service_{QString()};
};

} // namespace quillow
