// One line of plain text that is elided in the middle if the window is too narrow for it. The tool tip and assistive
// tools give the whole text.
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
