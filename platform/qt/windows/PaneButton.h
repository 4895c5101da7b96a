// A button of a preferences window's toolbar: an icon above a label. Only one of the selectable buttons is selected
// at a time. Assistive tools see them as radio buttons.
#pragma once

#include <QToolButton>

#include <functional>

namespace quillow {

struct ToolbarItem;

class PaneButton final : public QToolButton {
public:
    enum class Selectable { no, yes };
    /// The action runs when the user selects the button by mouse, keyboard or assistive tool, and when the user
    /// presses it again.
    PaneButton(const ToolbarItem& item, Selectable selectable, std::function<void()> action);

    /// Selects the button and does not run its action.
    void select();

private:
    bool wasSelectedWhenPressed_ = false;
};

} // namespace quillow
