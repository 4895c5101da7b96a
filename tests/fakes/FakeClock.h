// A clock that moves only when the test sets it.
#pragma once

#include "platform/Clock.h"

namespace quillow {

class FakeClock final : public Clock {
public:
    [[nodiscard]] QDateTime now() const override { return now_; }
    void set(const QDateTime& now) { now_ = now; }

private:
    QDateTime now_{QDate(2009, 3, 5), QTime(7, 4, 9)};
};

} // namespace quillow
