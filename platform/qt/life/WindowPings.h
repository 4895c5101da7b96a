// Answers the window manager's pings (_NET_WM_PING of the Extended Window Manager Hints) while the main thread works.
// Without replies, the desktop reports after some seconds that the program does not respond, dims its window and
// offers to kill it in the middle of a document.
//
// Qt reads the X connection on a separate thread and answers pings on the main thread. The program intercepts the
// reads: it defines the two libxcb functions that this thread calls, passes every event on unchanged, and answers a
// ping at once while an Answering exists. If Qt does not use X, there are no pings and this does nothing.
#pragma once

namespace quillow {

class WindowPings {
public:
    /// Construct it after the QApplication.
    WindowPings();

    /// While one exists, pings are answered although the main thread delivers no events.
    class [[nodiscard]] Answering {
    public:
        Answering();
        Answering(const Answering&) = delete;
        Answering& operator=(const Answering&) = delete;
        ~Answering();
    };
};

} // namespace quillow
