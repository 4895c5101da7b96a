// A private D-Bus session, with one connection for the tested side and one for its service. The bus starts only the
// services that the test names, whatever is installed.
#pragma once

#include <QDBusConnection>
#include <QFile>
#include <QMap>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>

namespace quillow {

class PrivateBus {
public:
    /// The command of each service is run when the service is first called.
    explicit PrivateBus(const QMap<QString, QString>& commandsOfServices = {}) {
        for (const auto& [name, command] : commandsOfServices.asKeyValueRange()) {
            write(name + QStringLiteral(".service"),
                  QStringLiteral("[D-BUS Service]\nName=%1\nExec=%2\n").arg(name, command));
        }
        write(QStringLiteral("session.conf"),
              QStringLiteral("<busconfig><type>session</type><listen>unix:dir=%1</listen><servicedir>%1</servicedir>"
                             "<policy context=\"default\"><allow send_destination=\"*\" eavesdrop=\"true\"/>"
                             "<allow eavesdrop=\"true\"/><allow own=\"*\"/></policy></busconfig>\n")
                  .arg(folder_.path()));
        daemon_.start(QStringLiteral("dbus-daemon"),
                      {QStringLiteral("--config-file=") + folder_.filePath(QStringLiteral("session.conf")),
                       QStringLiteral("--nofork"), QStringLiteral("--print-address")});
        if (!daemon_.waitForReadyRead()) return;
        address_ = QString::fromLatin1(daemon_.readLine()).trimmed();
        client_ = QDBusConnection::connectToBus(address_, QStringLiteral("client"));
        service_ = QDBusConnection::connectToBus(address_, QStringLiteral("service"));
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
    [[nodiscard]] const QString& address() const { return address_; }
    [[nodiscard]] QDBusConnection& client() { return client_; }
    [[nodiscard]] QDBusConnection& service() { return service_; }

private:
    void write(const QString& name, const QString& text) const {
        QFile file(folder_.filePath(name));
        if (file.open(QIODevice::WriteOnly)) file.write(text.toUtf8());
    }

    QTemporaryDir folder_;
    QProcess daemon_;
    QString address_;
    QDBusConnection client_{QString()};
    QDBusConnection service_{QString()};
};

} // namespace quillow
