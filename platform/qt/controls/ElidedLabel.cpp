#include "platform/qt/controls/ElidedLabel.h"

#include <QPainter>

namespace quillow {
namespace {

constexpr int kMinimumCharacters = 6;

} // namespace

ElidedLabel::ElidedLabel(QWidget* parent)
    : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred);
}

void ElidedLabel::setWholeText(const QString& text) {
    wholeText_ = text;
    // A tool tip would parse "<" as markup.
    setToolTip(QStringLiteral("<span>") + text.toHtmlEscaped() + QStringLiteral("</span>"));
    setText(text);
    updateGeometry();
    update();
}

QSize ElidedLabel::sizeHint() const {
    const QFontMetrics metrics(font());
    return {metrics.horizontalAdvance(wholeText_) + 2, metrics.height()};
}

QSize ElidedLabel::minimumSizeHint() const {
    const QFontMetrics metrics(font());
    return {qMin(sizeHint().width(), metrics.averageCharWidth() * kMinimumCharacters), metrics.height()};
}

void ElidedLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QString shown = fontMetrics().elidedText(wholeText_, Qt::ElideMiddle, width());
    painter.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::WindowText));
    painter.drawText(rect(), static_cast<int>(Qt::AlignVCenter) | Qt::TextSingleLine, shown);
}

} // namespace quillow
