// Port: whether something outside the program has requested its end.
#pragma once

namespace quillow {

class Termination {
public:
    virtual ~Termination() = default;

    /// True after a request to end the program when the current document is done. Never becomes false again.
    [[nodiscard]] virtual bool isRequested() const = 0;
};

} // namespace quillow
