// Answers the window manager's question whether the program is alive (_NET_WM_PING of the Extended Window Manager Hints) while
// the main thread works. Unanswered, the desktop would call the program not responding after some seconds, dim its window and
// offer to kill it in the middle of a document.
//
// Qt reads the X connection on a thread of its own and answers pings on the main thread. The program stands in between the
// two: it defines the two libxcb functions through which that thread reads, passes every event on as it is, and answers a ping
// at once while an Answering lives. Where Qt does not run over X there are no pings and nothing is done.
#pragma once

namespace quillow {

class WindowPings {
public:
    /// Made once there is an application.
    WindowPings();

    /// While one lives the main thread delivers no events and is busy for a good reason.
    class [[nodiscard]] Answering {
    public:
        Answering();
        Answering(const Answering&) = delete;
        Answering& operator=(const Answering&) = delete;
        ~Answering();
    };
};

} // namespace quillow
