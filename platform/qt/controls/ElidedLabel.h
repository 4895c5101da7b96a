// One line of plain text that is cut in the middle when the window is too narrow for it; the whole text is its tool tip and what
// assistive tools read.
#pragma once

#include <QLabel>

namespace quillow {

class ElidedLabel final : public QLabel {
public:
    explicit ElidedLabel(QWidget* parent = nullptr);

    void setWholeText(const QString& text);
    [[nodiscard]] const QString& wholeText() const { return wholeText_; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString wholeText_;
};

} // namespace quillow
