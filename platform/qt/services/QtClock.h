// The system clock.
#pragma once

#include "platform/Clock.h"

namespace quillow {

class QtClock final : public Clock {
public:
    [[nodiscard]] QDateTime now() const override { return QDateTime::currentDateTime(); }
};

} // namespace quillow
