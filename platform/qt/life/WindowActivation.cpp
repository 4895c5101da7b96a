#include "platform/qt/life/WindowActivation.h"

#include <QGuiApplication>
#include <QWindow>

#include <xcb/xcb.h>

#include <cstdlib>
#include <cstring>
#include <memory>

namespace quillow {
namespace {

/// _NET_ACTIVE_WINDOW's source indication for direct user actions.
constexpr quint32 kUserAction = 2;
constexpr int kBytesAMessage = 20; ///< in a client message of format 8
constexpr quint32 kRootMask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT;

class RootMessages {
public:
    explicit RootMessages(xcb_connection_t* connection)
        : connection_(connection)
        , root_(xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root) {}
    RootMessages(const RootMessages&) = delete;
    RootMessages& operator=(const RootMessages&) = delete;
    ~RootMessages() { xcb_flush(connection_); }

    void activate(xcb_window_t window, quint32 time) const {
        xcb_client_message_event_t message = makeMessage(window, "_NET_ACTIVE_WINDOW", 32);
        message.data.data32[0] = kUserAction;
        message.data.data32[1] = time;
        send(message, kRootMask);
    }

    /// Sends a null-terminated text to all launchers, split into messages.
    void broadcast(const QByteArray& text) const {
        // The sender window identifies the messages of one text.
        const xcb_window_t sender = xcb_generate_id(connection_);
        xcb_create_window(connection_, XCB_COPY_FROM_PARENT, sender, root_, -1, -1, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
        const char* type = "_NET_STARTUP_INFO_BEGIN";
        for (qsizetype at = 0; at <= text.size(); at += kBytesAMessage) {
            xcb_client_message_event_t message = makeMessage(sender, type, 8);
            const QByteArray piece = text.mid(at, kBytesAMessage);
            std::memcpy(message.data.data8, piece.constData(), static_cast<std::size_t>(piece.size()));
            send(message, XCB_EVENT_MASK_PROPERTY_CHANGE);
            type = "_NET_STARTUP_INFO";
        }
        xcb_destroy_window(connection_, sender);
    }

private:
    [[nodiscard]] xcb_client_message_event_t makeMessage(xcb_window_t window, const char* type, quint8 format) const {
        const auto cookie = xcb_intern_atom(connection_, 0, static_cast<quint16>(std::strlen(type)), type);
        const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> reply(
            xcb_intern_atom_reply(connection_, cookie, nullptr), &std::free);
        xcb_client_message_event_t message = {};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = format;
        message.window = window;
        message.type = reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
        return message;
    }
    void send(const xcb_client_message_event_t& message, quint32 mask) const {
        xcb_send_event(connection_, 0, root_, mask, reinterpret_cast<const char*>(&message));
    }

    xcb_connection_t* connection_;
    xcb_window_t root_;
};

/// The protocol's quoting: a backslash before quotes and backslashes.
QByteArray quoted(QByteArray text) {
    text.replace('\\', "\\\\").replace('"', "\\\"");
    return '"' + text + '"';
}

} // namespace

quint32 timeOfStartupId(const QByteArray& startupId) {
    constexpr QByteArrayView kMark = "_TIME";
    const qsizetype mark = startupId.lastIndexOf(kMark);
    return mark < 0 ? 0 : startupId.mid(mark + kMark.size()).toUInt();
}

QByteArray activationTokenOf(const QByteArray& startupId, const QByteArray& activationToken) {
    return activationToken.isEmpty() ? startupId : activationToken;
}

void activateForLauncher(QWidget& window, const QByteArray& startupId, const QByteArray& activationToken) {
    // Qt's Wayland integration takes the token of the next activation from here. An X11 platform leaves it.
    const QByteArray token = activationTokenOf(startupId, activationToken);
    if (!token.isEmpty()) qputenv("XDG_ACTIVATION_TOKEN", token);
    window.activateWindow();
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (!x11 || !x11->connection()) return; // the offscreen platform has this interface without a connection
    qunsetenv("XDG_ACTIVATION_TOKEN");
    const RootMessages messages(x11->connection());
    messages.activate(static_cast<xcb_window_t>(window.winId()), timeOfStartupId(startupId));
    if (!startupId.isEmpty() && !startupId.contains('\0')) messages.broadcast("remove: ID=" + quoted(startupId));
}

} // namespace quillow
