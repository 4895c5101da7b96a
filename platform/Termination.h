// Port: whether the program is being ended from outside.
#pragma once

namespace quillow {

class Termination {
public:
    virtual ~Termination() = default;

    /// True once the program has been asked to end at the next document's end. Never false again.
    [[nodiscard]] virtual bool isRequested() const = 0;
};

} // namespace quillow
