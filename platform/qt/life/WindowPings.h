// Answers the window manager's pings (_NET_WM_PING of the Extended Window Manager Hints) while the main thread works.
// Without replies, the desktop reports after some seconds that the program does not respond, dims its window and
// offers to kill it in the middle of a document.
//
// Qt reads the X connection on a separate thread and answers pings on the main thread. The program intercepts the
// reads: it defines the two libxcb functions that this thread calls, passes every event on unchanged, and answers a
// ping at once while an Answering exists. If Qt does not use X, there are no pings and this does nothing.
//
// In the same way it sees at once that the user presses Ctrl+Q, so that the program need not convert a whole batch
// before it quits.
#pragma once

#include <cstdint>
#include <functional>

namespace quillow {

class WindowPings {
public:
    /// Construct it after the QApplication.
    WindowPings();

    /// `pressed` is called on another thread when Ctrl+Q is pressed on the window of an Answering. The key press itself
    /// arrives later, as any other. An empty function ends this.
    static void setQuitHandler(std::function<void()> pressed);

    /// While one exists, pings are answered although the main thread delivers no events.
    class [[nodiscard]] Answering {
    public:
        /// `window` is the X window that has the Quit command; 0 for none.
        explicit Answering(std::uintptr_t window = 0);
        Answering(const Answering&) = delete;
        Answering& operator=(const Answering&) = delete;
        ~Answering();
    };
};

} // namespace quillow
