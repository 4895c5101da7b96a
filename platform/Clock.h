// Port: the current instant.
#pragma once

#include <QDateTime>

namespace quillow {

class Clock {
public:
    virtual ~Clock() = default;
    /// Now, in the user's time zone.
    [[nodiscard]] virtual QDateTime now() const = 0;
};

} // namespace quillow
