// The progress of a batch on the program's icon in the taskbar, for desktops that show it: the signal Update of
// com.canonical.Unity.LauncherEntry. It comes a few times a second at most, and not at all for a short batch.
#pragma once

#include "platform/Clock.h"

#include <QDBusConnection>
#include <QDateTime>

#include <functional>
#include <optional>
#include <utility>

namespace quillow {

class TaskbarProgress {
public:
    static constexpr int kIntervalMilliseconds = 250;

    using Bus = std::function<QDBusConnection()>;
    /// The bus is connected when the first progress is shown.
    explicit TaskbarProgress(const Clock& clock, Bus bus = &QDBusConnection::sessionBus)
        : clock_(clock)
        , bus_(std::move(bus)) {}

    /// Shows how much of the total is done. The first call begins a batch.
    void show(qint64 done, qint64 total);
    /// Ends the batch.
    void hide();

private:
    void send(double progress, bool isVisible) const;

    const Clock& clock_;
    Bus bus_;
    std::optional<QDateTime> since_; ///< the latest signal of the batch, else its beginning
    bool isShown_ = false;
};

} // namespace quillow
