// A window that counts how often it was raised.
#pragma once

#include "platform/Window.h"

namespace quillow {

class FakeWindow final : public Window {
public:
    void makeKeyAndOrderFront() override { ++raised_; }
    [[nodiscard]] int raised() const { return raised_; }

private:
    int raised_ = 0;
};

} // namespace quillow
