// The desktop's own file dialog: org.freedesktop.portal.FileChooser. The portal shows the dialog in a process of the
// desktop, with the desktop's bookmarks and recent folders. A sandboxed program gets access to what is chosen.
#pragma once

#include "platform/qt/dialogs/FileQuestion.h"

#include <QDBusConnection>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

#include <functional>
#include <memory>
#include <utility>

class QDBusMessage;
class QDBusPendingCallWatcher;

namespace quillow {

struct FileAnswer {
    enum class End {
        chosen,
        cancelled,
        unavailable ///< the portal cannot show the dialog, or went away while it was open
    };
    End end = End::cancelled;
    QStringList paths; ///< local items without trailing slashes; not empty if End::chosen
};

/// One dialog of the portal.
class PortalRequest final : public QObject {
    Q_OBJECT
public:
    using Handler = std::function<void(const FileAnswer& answer)>;
    /// Asks at once. `handler` is called once, from the event loop; it may destroy the request.
    PortalRequest(const QDBusConnection& bus, const FileQuestion& question, const QString& parentWindow,
                  int limitMilliseconds, Handler handler);
    PortalRequest(const PortalRequest&) = delete;
    PortalRequest& operator=(const PortalRequest&) = delete;
    /// Closes a dialog that is still open. The handler is not called.
    ~PortalRequest() override;

private Q_SLOTS:
    void respond(uint response, const QVariantMap& results);

private:
    void call(const QDBusMessage& message, const std::function<void(QDBusPendingCallWatcher&)>& replied);
    void ask();
    void listenAt(const QString& path);
    void close();
    void end(const FileAnswer& answer);

    QDBusConnection bus_;
    FileQuestion question_;
    QString parentWindow_;
    int limitMilliseconds_;
    Handler handler_; ///< null after the end
    QString path_;    ///< of the request's object; empty until the dialog is asked for
};

class FilePortal {
public:
    using Bus = std::function<QDBusConnection()>;
    /// `bus` is called when a dialog is about to be shown. A portal that has not replied within the limit is not
    /// available. The limit is not for the user's answer.
    explicit FilePortal(Bus bus = &QDBusConnection::sessionBus, int limitMilliseconds = 5000)
        : bus_(std::move(bus))
        , limitMilliseconds_(limitMilliseconds) {}

    /// Whether the session has a portal, or can start one. Asks the bus only, which replies at once.
    [[nodiscard]] bool isOffered() const;
    /// Shows the dialog. `parentWindow` identifies the window that it belongs to, as the portals specify.
    [[nodiscard]] std::unique_ptr<PortalRequest> ask(const FileQuestion& question, const QString& parentWindow,
                                                     PortalRequest::Handler handler) const;

private:
    Bus bus_;
    int limitMilliseconds_;
};

} // namespace quillow
