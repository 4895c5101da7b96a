// The contents of a window with a part that is always to be seen and, below it, one that a taller window discloses. While the
// window grows or shrinks nothing moves and nothing is laid out anew: the lower part is uncovered or covered by the edge.
#pragma once

#include <QWidget>

namespace quillow {

class DisclosedContent final : public QWidget {
public:
    /// Takes both widgets. A window of `smallHeight` points, its menu bar counted, shows `upper` alone; `lower` has its whole
    /// height in one of `bigHeight`.
    DisclosedContent(QWidget* upper, QWidget* lower, int smallHeight, int bigHeight);

    /// In a window that fills the screen the height does not tell whether the lower part is to be seen: this does.
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
