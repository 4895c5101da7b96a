// Asks a window whether its program is alive, as window managers do (_NET_WM_PING of the Extended Window Manager Hints).
//   pinger WINDOW MILLISECONDS
// Prints "alive" when the answer comes within that time, else "silent"; "unasked" when the window does not want to be asked.
#include <xcb/xcb.h>

#include <poll.h>

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace {

template <class Reply>
using Owned = std::unique_ptr<Reply, decltype(&std::free)>;

xcb_atom_t atomOf(xcb_connection_t* connection, const char* name) {
    const auto cookie = xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(std::strlen(name)), name);
    const Owned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection, cookie, nullptr), &std::free);
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

bool wantsToBeAsked(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t protocols, xcb_atom_t ping) {
    const auto cookie = xcb_get_property(connection, 0, window, protocols, XCB_ATOM_ATOM, 0, 64);
    const Owned<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection, cookie, nullptr), &std::free);
    if (!reply) return false;
    const auto* atoms = static_cast<const xcb_atom_t*>(xcb_get_property_value(reply.get()));
    const int count = xcb_get_property_value_length(reply.get()) / static_cast<int>(sizeof(xcb_atom_t));
    for (int i = 0; i < count; ++i)
        if (atoms[i] == ping) return true;
    return false;
}

bool isAnswer(const xcb_generic_event_t& event, const xcb_client_message_event_t& question) {
    if ((event.response_type & 0x7F) != XCB_CLIENT_MESSAGE) return false;
    const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
    return message.type == question.type && std::memcmp(&message.data, &question.data, 3 * sizeof(std::uint32_t)) == 0;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) return 2;
    const auto window = static_cast<xcb_window_t>(std::strtoul(argv[1], nullptr, 0));
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection, root, XCB_CW_EVENT_MASK, &mask);

    xcb_client_message_event_t question = {};
    question.response_type = XCB_CLIENT_MESSAGE;
    question.format = 32;
    question.window = window;
    question.type = atomOf(connection, "WM_PROTOCOLS");
    question.data.data32[0] = atomOf(connection, "_NET_WM_PING");
    question.data.data32[1] = static_cast<std::uint32_t>(std::chrono::steady_clock::now().time_since_epoch().count());
    question.data.data32[2] = window;
    if (!wantsToBeAsked(connection, window, question.type, question.data.data32[0])) {
        std::puts("unasked");
        return 0;
    }
    xcb_send_event(connection, 0, window, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char*>(&question));
    xcb_flush(connection);

    const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(std::atoi(argv[2]));
    while (true) {
        while (const Owned<xcb_generic_event_t> event{xcb_poll_for_event(connection), &std::free}) {
            if (!isAnswer(*event, question)) continue;
            std::puts("alive");
            return 0;
        }
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
        pollfd watched = {xcb_get_file_descriptor(connection), POLLIN, 0};
        if (left.count() <= 0 || ::poll(&watched, 1, static_cast<int>(left.count())) == 0) break;
    }
    std::puts("silent");
    return 0;
}
