// A button that Return presses too, beside the Space of every Qt button.
#pragma once

#include <QAbstractButton>

namespace quillow {

class KeyedButton : public QAbstractButton {
public:
    using QAbstractButton::QAbstractButton;

protected:
    void keyPressEvent(QKeyEvent* event) override;
};

} // namespace quillow
