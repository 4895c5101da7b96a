#include "platform/qt/dragdrop/DragWay.h"

#include <QGuiApplication>

#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace quillow {
namespace {

template <class Reply>
using Owned = std::unique_ptr<Reply, decltype(&std::free)>;

xcb_atom_t atomOf(xcb_connection_t* connection, const char* name) {
    const auto cookie = xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(std::strlen(name)), name);
    const Owned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection, cookie, nullptr), &std::free);
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

xcb_window_t dragSource(xcb_connection_t* connection) {
    const auto cookie = xcb_get_selection_owner(connection, atomOf(connection, "XdndSelection"));
    const Owned<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(connection, cookie, nullptr),
                                                       &std::free);
    return reply ? reply->owner : xcb_window_t{XCB_WINDOW_NONE};
}

xcb_window_t windowProperty(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t property) {
    const auto cookie = xcb_get_property(connection, 0, window, property, XCB_ATOM_WINDOW, 0, 1);
    const Owned<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection, cookie, nullptr), &std::free);
    if (!reply || reply->format != 32 || xcb_get_property_value_length(reply.get()) != sizeof(xcb_window_t))
        return XCB_WINDOW_NONE;
    return *static_cast<const xcb_window_t*>(xcb_get_property_value(reply.get()));
}

/// A window of the window manager. By the Extended Window Manager Hints its property names the window itself, which
/// tells a running window manager from one that has ended.
xcb_window_t windowOfManager(xcb_connection_t* connection) {
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    const xcb_atom_t check = atomOf(connection, "_NET_SUPPORTING_WM_CHECK");
    const xcb_window_t window = windowProperty(connection, root, check);
    const bool isRunning = window != XCB_WINDOW_NONE && windowProperty(connection, window, check) == window;
    return isRunning ? window : xcb_window_t{XCB_WINDOW_NONE};
}

/// Under Xwayland the compositor is the window manager. It owns the selection on behalf of a Wayland program that
/// drags. (Measured with mutter 43 and KWin 5.27.)
bool isBridged(xcb_connection_t* connection) {
    const xcb_window_t source = dragSource(connection);
    const xcb_window_t manager = windowOfManager(connection);
    if (source == XCB_WINDOW_NONE || manager == XCB_WINDOW_NONE) return false;
    // All ids of one X client have the same upper bits.
    const std::uint32_t clientBits = ~xcb_get_setup(connection)->resource_id_mask;
    return (source & clientBits) == (manager & clientBits);
}

} // namespace

DragWay wayOfCurrentDrag() {
    const QString platform = QGuiApplication::platformName();
    if (platform.startsWith(QLatin1String("wayland"))) return DragWay::wayland;
    // Other Qt platforms may have this interface too, but without a connection.
    if (platform != QLatin1String("xcb")) return DragWay::direct;
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 && isBridged(x11->connection()) ? DragWay::bridged : DragWay::direct;
}

} // namespace quillow
