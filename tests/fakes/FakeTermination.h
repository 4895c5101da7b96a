// A termination request that the test sets.
#pragma once

#include "platform/Termination.h"

namespace quillow {

class FakeTermination final : public Termination {
public:
    [[nodiscard]] bool isRequested() const override { return requested; }

    bool requested = false;
};

} // namespace quillow
