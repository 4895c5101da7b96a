// Lets a piece of work run on a thread of its own while the main thread waits for it and the windows stay alive: the spinner
// turns, the windows are painted and the window manager's pings are answered. Nothing else happens meanwhile: no event of any
// kind is delivered, so nothing re-enters, and what arrives (drags, clicks, a request to close, a second program's files) waits
// in its queue, in order.
#pragma once

#include "platform/qt/Spinner.h"
#include "platform/qt/WindowPings.h"

#include <QPointer>

#include <chrono>
#include <functional>
#include <future>
#include <utility>

namespace quillow {

class BackgroundWork {
public:
    /// Shorter work than this leaves the windows alone.
    static constexpr std::chrono::milliseconds kFrame{40};

    /// `spinner` may be null; it turns while it is animated.
    explicit BackgroundWork(Spinner* spinner)
        : spinner_(spinner) {}

    /// The work's result, as if it had been called here.
    template <class Result>
    [[nodiscard]] Result wait(std::function<Result()> work) const {
        const WindowPings::Answering answering;
        std::future<Result> future = std::async(std::launch::async, std::move(work));
        for (int frame = 0; future.wait_for(kFrame) == std::future_status::timeout; ++frame)
            paint(frame);
        return future.get();
    }

private:
    void paint(int frame) const;

    WindowPings pings_;
    QPointer<Spinner> spinner_;
};

} // namespace quillow
