// One line of plain text that is elided if there is too little room for it. The tool tip of an elided text and
// assistive tools give the whole text.
#pragma once

#include <QLabel>

namespace quillow {

class ElidedLabel : public QLabel {
public:
    /// The middle of a path says least, the end of a word does.
    explicit ElidedLabel(Qt::TextElideMode mode = Qt::ElideMiddle, QWidget* parent = nullptr);

    void setWholeText(const QString& text);
    [[nodiscard]] const QString& wholeText() const { return wholeText_; }
    /// Makes the text fainter than others.
    void setQuiet(bool isQuiet);
    [[nodiscard]] bool isQuiet() const { return isQuiet_; }
    /// The text as the label shows it now. A label too narrow for three characters shows nothing.
    [[nodiscard]] virtual QString shownText() const;
    /// The tool tip as rich text; empty if the whole text is visible.
    [[nodiscard]] QString hoverText() const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    /// Draws a text in the place. deliberate: from left to right in every layout: the texts are English or paths, and a
    /// path drawn from right to left would have its first slash at the end.
    void drawLine(QPainter& painter, const QRect& place, const QString& text) const;
    [[nodiscard]] QString elided(const QString& text, int width) const;
    [[nodiscard]] QColor textColor() const;

private:
    QString wholeText_;
    Qt::TextElideMode mode_;
    bool isQuiet_ = false;
};

} // namespace quillow
