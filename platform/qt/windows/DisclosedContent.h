// The contents of a window: an upper part that is always visible and a lower part that a taller window discloses.
// While the window grows or shrinks, nothing moves and nothing is laid out again: the window's edge uncovers or
// covers the lower part.
#pragma once

#include <QWidget>

namespace quillow {

class DisclosedContent final : public QWidget {
public:
    /// Takes ownership of both widgets. Heights are in points and include the menu bar. A window of `smallHeight`
    /// shows only `upper`; a window of `bigHeight` shows `lower` at its full height.
    DisclosedContent(QWidget* upper, QWidget* lower, int smallHeight, int bigHeight);

    /// Shows or hides the lower part in a window that fills the screen. In other windows, the height decides.
    void setDisclosed(bool isDisclosed);

    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void layOut();

    QWidget* upper_;
    QWidget* lower_;
    int smallHeight_;
    int bigHeight_;
    bool isDisclosed_ = false;
};

} // namespace quillow
