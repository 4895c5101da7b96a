// Sends a window the messages of a window manager (Extended Window Manager Hints).
//   window-manager-message ping WINDOW MILLISECONDS   prints "alive" if the program answers in time, else "silent"
//   window-manager-message close WINDOW               asks the running window manager to close the window
#include <poll.h>
#include <xcb/xcb.h>

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string_view>

namespace {

template <class Reply>
using Owned = std::unique_ptr<Reply, decltype(&std::free)>;
using Clock = std::chrono::steady_clock;

class Display {
public:
    Display()
        : connection_(xcb_connect(nullptr, nullptr))
        , root_(xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root) {
        // Tool kits send their answers with either of these event masks.
        const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
        xcb_change_window_attributes(connection_, root_, XCB_CW_EVENT_MASK, &mask);
    }
    Display(const Display&) = delete;
    Display& operator=(const Display&) = delete;
    ~Display() { xcb_disconnect(connection_); }

    [[nodiscard]] xcb_atom_t atom(const char* name) const {
        const auto cookie = xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(std::strlen(name)), name);
        const Owned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection_, cookie, nullptr), &std::free);
        return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
    }

    [[nodiscard]] xcb_client_message_event_t makeMessage(xcb_window_t window, const char* type) const {
        xcb_client_message_event_t message = {};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = 32;
        message.window = window;
        message.type = atom(type);
        return message;
    }
    void sendToProgram(const xcb_client_message_event_t& message) const {
        send(message.window, XCB_EVENT_MASK_NO_EVENT, message);
    }
    void sendToWindowManager(const xcb_client_message_event_t& message) const {
        send(root_, XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT, message);
    }

    /// True if the program sends the question back before the deadline.
    [[nodiscard]] bool isAnswered(const xcb_client_message_event_t& question, Clock::time_point deadline) const {
        while (true) {
            while (const Owned<xcb_generic_event_t> event{xcb_poll_for_event(connection_), &std::free})
                if (isAnswer(*event, question)) return true;
            const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
            pollfd watched = {xcb_get_file_descriptor(connection_), POLLIN, 0};
            if (left.count() <= 0 || ::poll(&watched, 1, static_cast<int>(left.count())) == 0) return false;
        }
    }

private:
    void send(xcb_window_t destination, std::uint32_t mask, const xcb_client_message_event_t& message) const {
        xcb_send_event(connection_, 0, destination, mask, reinterpret_cast<const char*>(&message));
        // Wait for a reply: the server may drop requests of a client that has already disconnected.
        const auto cookie = xcb_get_input_focus(connection_);
        const Owned<xcb_get_input_focus_reply_t> reply(xcb_get_input_focus_reply(connection_, cookie, nullptr),
                                                       &std::free);
    }
    static bool isAnswer(const xcb_generic_event_t& event, const xcb_client_message_event_t& question) {
        if ((event.response_type & 0x7F) != XCB_CLIENT_MESSAGE) return false;
        const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
        return message.type == question.type &&
               std::memcmp(&message.data, &question.data, 3 * sizeof(std::uint32_t)) == 0;
    }

    xcb_connection_t* connection_;
    xcb_window_t root_;
};

void ping(const Display& display, xcb_window_t window, std::chrono::milliseconds patience) {
    xcb_client_message_event_t question = display.makeMessage(window, "WM_PROTOCOLS");
    question.data.data32[0] = display.atom("_NET_WM_PING");
    question.data.data32[1] = static_cast<std::uint32_t>(Clock::now().time_since_epoch().count());
    question.data.data32[2] = window;
    display.sendToProgram(question);
    std::puts(display.isAnswered(question, Clock::now() + patience) ? "alive" : "silent");
}

} // namespace

int main(int argc, char** argv) {
    const std::string_view what = argc > 2 ? argv[1] : "";
    const Display display;
    const auto window = argc > 2 ? static_cast<xcb_window_t>(std::strtoul(argv[2], nullptr, 0)) : xcb_window_t{0};
    if (what == "ping" && argc == 4) {
        ping(display, window, std::chrono::milliseconds(std::atoi(argv[3])));
        return 0;
    }
    if (what == "close") {
        display.sendToWindowManager(display.makeMessage(window, "_NET_CLOSE_WINDOW"));
        return 0;
    }
    return 2;
}
