// A button of a preferences window's toolbar: an icon above a label. Buttons that can appear selected are one choice, of which one
// is on; assistive tools see radio buttons.
#pragma once

#include <QToolButton>

#include <functional>

namespace quillow {

struct ToolbarItem;

class PaneButton final : public QToolButton {
public:
    enum class Selectable { no, yes };
    /// The action runs when the user selects the button, by mouse, keyboard or an assistive tool, and when he presses it again.
    PaneButton(const ToolbarItem& item, Selectable selectable, std::function<void()> action);

    /// Selects the button without its action.
    void select();

private:
    bool wasSelectedWhenPressed_ = false;
};

} // namespace quillow
