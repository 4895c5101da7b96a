#include "platform/qt/life/WindowPings.h"

#include <QGuiApplication>

#include <dlfcn.h>
#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <mutex>
#include <optional>

namespace quillow {
namespace {

struct Ping {
    xcb_connection_t* connection;
    xcb_client_message_event_t event;
};

std::mutex mutex;
// These are guarded by it.
int answering = 0;
xcb_atom_t protocolsAtom = XCB_ATOM_NONE;
xcb_atom_t pingAtom = XCB_ATOM_NONE;
std::optional<Ping> latest; ///< a ping that arrived while no Answering lived; Qt may still have it in its queue

xcb_atom_t atomOf(xcb_connection_t* connection, const char* name) {
    const auto cookie = xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(std::strlen(name)), name);
    const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> reply(
        xcb_intern_atom_reply(connection, cookie, nullptr), &std::free);
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

/// The reply is the ping message itself, sent to the root window.
void answer(const Ping& ping) {
    xcb_client_message_event_t reply = ping.event;
    reply.response_type = XCB_CLIENT_MESSAGE;
    reply.window = xcb_setup_roots_iterator(xcb_get_setup(ping.connection)).data->root;
    xcb_send_event(ping.connection, 0, reply.window,
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&reply));
    xcb_flush(ping.connection);
}

/// Inspects an event before Qt gets it.
xcb_generic_event_t* seen(xcb_connection_t* connection, xcb_generic_event_t* event) {
    constexpr std::uint8_t kWithoutSentFlag = 0x7F;
    if (!event || (event->response_type & kWithoutSentFlag) != XCB_CLIENT_MESSAGE) return event;
    const auto& message = *reinterpret_cast<const xcb_client_message_event_t*>(event);
    const std::lock_guard lock(mutex);
    if (pingAtom == XCB_ATOM_NONE || message.format != 32 || message.type != protocolsAtom ||
        message.data.data32[0] != pingAtom)
        return event;
    const Ping ping{connection, message};
    if (answering > 0)
        answer(ping);
    else
        latest = ping;
    return event;
}

using EventReader = xcb_generic_event_t* (*)(xcb_connection_t*);

EventReader readerOfLibrary(const char* name) {
    return reinterpret_cast<EventReader>(::dlsym(RTLD_NEXT, name));
}

} // namespace

WindowPings::WindowPings() {
    // Other Qt platforms may have this interface too, but without a connection.
    const bool isX11 = qGuiApp && QGuiApplication::platformName() == QLatin1String("xcb");
    const auto* x11 = isX11 ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    if (!x11) return;
    const xcb_atom_t protocols = atomOf(x11->connection(), "WM_PROTOCOLS");
    const xcb_atom_t ping = atomOf(x11->connection(), "_NET_WM_PING");
    const std::lock_guard lock(mutex);
    protocolsAtom = protocols;
    pingAtom = ping;
}

WindowPings::Answering::Answering() {
    const std::lock_guard lock(mutex);
    ++answering;
    // The ping may wait in Qt's queue until the work ends. The window manager ignores a second reply to the same
    // ping.
    if (latest) answer(*latest);
    latest.reset();
}

WindowPings::Answering::~Answering() {
    const std::lock_guard lock(mutex);
    --answering;
}

} // namespace quillow

// Every library of the process finds these functions before libxcb's own.

extern "C" __attribute__((visibility("default"))) xcb_generic_event_t* xcb_wait_for_event(xcb_connection_t* c) {
    static const auto reader = quillow::readerOfLibrary("xcb_wait_for_event");
    return quillow::seen(c, reader(c));
}

extern "C" __attribute__((visibility("default"))) xcb_generic_event_t* xcb_poll_for_queued_event(xcb_connection_t* c) {
    static const auto reader = quillow::readerOfLibrary("xcb_poll_for_queued_event");
    return quillow::seen(c, reader(c));
}
