// A portal for file dialogs on a private bus. It shows nothing: the test responds in the place of the user.
#pragma once

#include "tests/platform/PrivateBus.h"
#include "tests/platform/Waiting.h"

#include <QDBusArgument>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QStringList>
#include <QVariantMap>

#include <optional>

namespace quillow {

class FakeFilePortal final : public QDBusVirtualObject {
public:
    enum class Reply { path, anotherPath, responseFirst, error, none };

    std::optional<uint> version = 3; ///< none: the portal does not show file dialogs
    Reply reply = Reply::path;
    QStringList urisBeforeTheReply;
    QList<QDBusMessage> asked;  ///< calls of OpenFile and SaveFile
    QStringList closedRequests; ///< the paths of their objects

    explicit FakeFilePortal(QDBusConnection& bus)
        : bus_(bus) {}
    ~FakeFilePortal() override { bus_.unregisterObject(kObject, QDBusConnection::UnregisterTree); }
    void start() {
        bus_.registerVirtualObject(kObject, this, QDBusConnection::SubPath);
        bus_.registerService(kService);
    }
    void die() { bus_.unregisterService(kService); }

    /// The response of the user to the latest dialog.
    void respond(uint response, const QStringList& uris = {}) { respondAt(requestPath_, response, uris); }
    [[nodiscard]] const QString& requestPath() const { return requestPath_; }

    // The latest call.
    [[nodiscard]] QString parentWindow() const { return asked.constLast().arguments().at(0).toString(); }
    [[nodiscard]] QString title() const { return asked.constLast().arguments().at(1).toString(); }
    [[nodiscard]] QVariantMap options() const { return qdbus_cast<QVariantMap>(asked.constLast().arguments().at(2)); }
    [[nodiscard]] QVariant option(const char* name) const { return options().value(QLatin1String(name)); }
    /// A line for each filter: its name and its patterns.
    [[nodiscard]] QStringList filters() const {
        QStringList lines;
        const auto list = option("filters").value<QDBusArgument>();
        if (list.currentSignature() != u"a(sa(us))") return {list.currentSignature()};
        for (list.beginArray(); !list.atEnd();) {
            QString line;
            list.beginStructure();
            list >> line;
            for (list.beginArray(); !list.atEnd();) {
                uint kind = 0;
                QString text;
                list.beginStructure();
                list >> kind >> text;
                list.endStructure();
                line += QStringLiteral(" %1:%2").arg(kind).arg(text);
            }
            list.endArray();
            list.endStructure();
            lines.append(line);
        }
        return lines;
    }

    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        if (message.member() == u"Get") {
            if (!version)
                return connection.send(message.createErrorReply(QDBusError::UnknownInterface, QStringLiteral("no")));
            return connection.send(message.createReply(QVariant::fromValue(QDBusVariant(*version))));
        }
        if (message.member() == u"Close") {
            closedRequests.append(message.path());
            return connection.send(message.createReply());
        }
        asked.append(message);
        const QString sender = message.service().mid(1).replace(u'.', u'_');
        requestPath_ = kObject + QStringLiteral("/request/") + sender + u'/' + option("handle_token").toString();
        switch (reply) {
        case Reply::none: return true;
        case Reply::error:
            return connection.send(message.createErrorReply(QDBusError::AccessDenied, QStringLiteral("no")));
        case Reply::responseFirst: respond(0, urisBeforeTheReply); break;
        case Reply::anotherPath: requestPath_ = kObject + QStringLiteral("/request/7"); break;
        case Reply::path: break;
        }
        return connection.send(message.createReply(QVariant::fromValue(QDBusObjectPath(requestPath_))));
    }

private:
    static inline const QString kService = QStringLiteral("org.freedesktop.portal.Desktop");
    static inline const QString kObject = QStringLiteral("/org/freedesktop/portal/desktop");

    void respondAt(const QString& path, uint response, const QStringList& uris) {
        QDBusMessage signal = QDBusMessage::createSignal(path, QStringLiteral("org.freedesktop.portal.Request"),
                                                         QStringLiteral("Response"));
        signal << response << QVariantMap{{QStringLiteral("uris"), uris}};
        bus_.send(signal);
    }

    QDBusConnection& bus_;
    QString requestPath_;
};

} // namespace quillow
