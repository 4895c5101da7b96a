// A button in memory.
#pragma once

#include "platform/Button.h"
#include "tests/fakes/Journal.h"

namespace quillow {

class FakeButton final : public Button, public Recorded {
public:
    [[nodiscard]] ButtonState state() const override { return state_; }
    void setState(ButtonState state) override {
        record(state == ButtonState::on ? QStringLiteral("on") : QStringLiteral("off"));
        state_ = state;
        ++statesSet_;
    }
    [[nodiscard]] int statesSet() const { return statesSet_; }

private:
    ButtonState state_ = ButtonState::off;
    int statesSet_ = 0;
};

} // namespace quillow
