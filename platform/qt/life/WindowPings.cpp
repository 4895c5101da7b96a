#include "platform/qt/life/WindowPings.h"

#include "platform/qt/life/QuitKey.h"

#include <QGuiApplication>

#include <dlfcn.h>
#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <utility>
#include <vector>

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

std::function<void()> quitPressed;
std::uintptr_t quitWindow = 0;

/// The symbols of all keys, read when the first work begins and after each change of the layout.
struct KeyMap {
    bool isRead = false;
    std::size_t firstKey = 0;
    std::size_t symbolsAKey = 0;
    std::vector<std::uint32_t> symbols;
};
KeyMap keyMap;

KeyMap readKeyMap(xcb_connection_t* connection) {
    const xcb_setup_t* setup = xcb_get_setup(connection);
    const auto count = static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1);
    const auto cookie = xcb_get_keyboard_mapping(connection, setup->min_keycode, count);
    const std::unique_ptr<xcb_get_keyboard_mapping_reply_t, decltype(&std::free)> reply(
        xcb_get_keyboard_mapping_reply(connection, cookie, nullptr), &std::free);
    KeyMap map;
    map.isRead = true;
    map.firstKey = setup->min_keycode;
    if (!reply) return map;
    map.symbolsAKey = reply->keysyms_per_keycode;
    const xcb_keysym_t* symbols = xcb_get_keyboard_mapping_keysyms(reply.get());
    map.symbols.assign(symbols, symbols + xcb_get_keyboard_mapping_keysyms_length(reply.get()));
    return map;
}

/// Call it under the lock.
bool isQuit(const xcb_key_press_event_t& press) {
    if (quitWindow == 0 || press.event != quitWindow || press.detail < keyMap.firstKey) return false;
    const std::size_t start = (press.detail - keyMap.firstKey) * keyMap.symbolsAKey;
    if (start + keyMap.symbolsAKey > keyMap.symbols.size()) return false;
    return isQuitKey(press.state, std::span(keyMap.symbols).subspan(start, keyMap.symbolsAKey));
}

xcb_connection_t* connectionOfQt() {
    // Other Qt platforms may have this interface too, but without a connection.
    const bool isX11 = qGuiApp && QGuiApplication::platformName() == QLatin1String("xcb");
    const auto* x11 = isX11 ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    return x11 ? x11->connection() : nullptr;
}

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
    if (!event) return event;
    const auto type = static_cast<std::uint8_t>(event->response_type & kWithoutSentFlag);
    if (type == XCB_KEY_PRESS || type == XCB_MAPPING_NOTIFY) {
        const std::lock_guard lock(mutex);
        if (type == XCB_MAPPING_NOTIFY)
            keyMap.isRead = false;
        else if (answering > 0 && quitPressed && isQuit(*reinterpret_cast<const xcb_key_press_event_t*>(event)))
            quitPressed();
    }
    if (type != XCB_CLIENT_MESSAGE) return event;
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
    xcb_connection_t* connection = connectionOfQt();
    if (!connection) return;
    const xcb_atom_t protocols = atomOf(connection, "WM_PROTOCOLS");
    const xcb_atom_t ping = atomOf(connection, "_NET_WM_PING");
    const std::lock_guard lock(mutex);
    protocolsAtom = protocols;
    pingAtom = ping;
}

void WindowPings::setQuitHandler(std::function<void()> pressed) {
    const std::lock_guard lock(mutex);
    quitPressed = std::move(pressed);
}

WindowPings::Answering::Answering(std::uintptr_t window) {
    std::unique_lock lock(mutex);
    if (quitPressed && !keyMap.isRead) {
        lock.unlock();
        xcb_connection_t* connection = connectionOfQt();
        KeyMap map = connection ? readKeyMap(connection) : KeyMap();
        lock.lock();
        keyMap = std::move(map);
    }
    ++answering;
    quitWindow = window;
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
