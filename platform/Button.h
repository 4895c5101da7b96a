// Port: a button with two states, such as a disclosure triangle.
#pragma once

namespace quillow {

enum class ButtonState { off = 0, on = 1 };

class Button {
public:
    virtual ~Button() = default;
    [[nodiscard]] virtual ButtonState state() const = 0;
    /// Shows the state. Does not run the button's action.
    virtual void setState(ButtonState state) = 0;
};

} // namespace quillow
