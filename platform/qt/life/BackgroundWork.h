// Runs work on a separate thread while the main thread waits for it and keeps the windows alive: the spinner turns,
// the windows are repainted and the window manager's pings are answered. No event is delivered meanwhile, so there is
// no re-entry. Incoming events (drags, clicks, a request to close, a second start's files) wait in their queue, in
// order. Only a request to end the program is shown at once.
#pragma once

#include "platform/Termination.h"
#include "platform/qt/controls/Spinner.h"
#include "platform/qt/life/WindowPings.h"

#include <QPointer>

#include <chrono>
#include <cstdint>
#include <exception>
#include <functional>
#include <future>
#include <string_view>
#include <thread>
#include <utility>

namespace quillow {

class BackgroundWork {
public:
    /// Work that takes less time than this does not repaint the windows.
    static constexpr std::chrono::milliseconds kFrame{40};

    /// Starts a thread that runs the function. Throws std::system_error or std::bad_alloc if that is impossible.
    using ThreadStarter = std::function<std::jthread(const std::function<void()>& run)>;

    /// `spinner` may be null; it turns while it is animated.
    explicit BackgroundWork(Spinner* spinner, ThreadStarter startThread = &BackgroundWork::startThread)
        : spinner_(spinner)
        , startThread_(std::move(startThread)) {}

    /// Takes the reason if work fails. Without it, standard error gets a line.
    void setLog(std::function<void(std::string_view line)> log) { log_ = std::move(log); }
    /// While work runs, `show` is called once when the end of the program has been requested.
    void setEnding(const Termination& termination, std::function<void()> show) {
        termination_ = &termination;
        showEnding_ = std::move(show);
    }

    /// The result of the work, which is a std::optional. It is empty if no thread could be started or the work threw,
    /// for example for lack of memory; the reason is then written to standard error.
    template <class Answer>
    [[nodiscard]] Answer wait(const std::function<Answer()>& work) const {
        const WindowPings::Answering answering(spinnersWindow());
        try {
            std::promise<Answer> promise;
            std::future<Answer> future = promise.get_future();
            // Its destructor waits for the thread, so the promise always outlives it.
            const std::jthread thread = startThread_([&promise, &work] {
                try {
                    promise.set_value(work());
                } catch (...) {
                    promise.set_exception(std::current_exception());
                }
            });
            for (int frame = 0; future.wait_for(kFrame) == std::future_status::timeout; ++frame)
                paint(frame);
            return future.get();
        } catch (const std::exception& failure) {
            tell(failure);
            return {};
        }
    }

private:
    [[nodiscard]] static std::jthread startThread(const std::function<void()>& run) { return std::jthread(run); }
    void tell(const std::exception& failure) const;
    /// The window system's number of the window; 0 if there is none.
    [[nodiscard]] std::uintptr_t spinnersWindow() const;
    void paint(int frame) const;

    WindowPings pings_;
    QPointer<Spinner> spinner_;
    ThreadStarter startThread_;
    std::function<void(std::string_view)> log_;
    const Termination* termination_ = nullptr;
    mutable std::function<void()> showEnding_; ///< until it has been called
};

} // namespace quillow
