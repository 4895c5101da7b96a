// The button that opens and closes the lower part of a window: a triangle and a title. The triangle points down while
// the button is on.
#pragma once

#include "platform/Button.h"
#include "platform/qt/controls/KeyedButton.h"

#include <functional>

namespace quillow {

class DiscloseButton final : public KeyedButton, public Button {
public:
    static constexpr int kInset = 4; ///< from the widget's edge to the triangle, in points

    /// The description is also the tool tip.
    DiscloseButton(const QString& title, const QString& description, QWidget* parent = nullptr);

    [[nodiscard]] ButtonState state() const override { return isChecked() ? ButtonState::on : ButtonState::off; }
    void setState(ButtonState state) override;

    /// Called after the user has changed the state, by mouse, keyboard or an assistive tool.
    void setAction(std::function<void()> action) { action_ = std::move(action); }

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::function<void()> action_;
};

} // namespace quillow
