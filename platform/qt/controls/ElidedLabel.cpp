#include "platform/qt/controls/ElidedLabel.h"

#include "platform/qt/controls/QuietText.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace quillow {
namespace {

constexpr int kMinimumCharacters = 6;
constexpr int kFewestCharacters = 3;

} // namespace

ElidedLabel::ElidedLabel(Qt::TextElideMode mode, QWidget* parent)
    : QLabel(parent)
    , mode_(mode) {
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred);
}

void ElidedLabel::setWholeText(const QString& text) {
    wholeText_ = text;
    setText(text);
    updateGeometry();
    update();
}

void ElidedLabel::setQuiet(bool isQuiet) {
    isQuiet_ = isQuiet;
    update();
}

QString ElidedLabel::elided(const QString& text, int width) const {
    const QString shown = fontMetrics().elidedText(text, mode_, width);
    return shown == text || shown.size() > kFewestCharacters ? shown : QString();
}

QColor ElidedLabel::textColor() const {
    if (!isEnabled()) return palette().color(QPalette::Disabled, QPalette::WindowText);
    return isQuiet_ ? quietColor(palette()) : palette().color(QPalette::Active, QPalette::WindowText);
}

QString ElidedLabel::shownText() const {
    return elided(wholeText_, width());
}

QString ElidedLabel::hoverText() const {
    // A tool tip would parse "<" as markup.
    if (shownText() == wholeText_) return {};
    return QStringLiteral("<span>") + wholeText_.toHtmlEscaped() + QStringLiteral("</span>");
}

QSize ElidedLabel::sizeHint() const {
    const QFontMetrics metrics(font());
    return {metrics.horizontalAdvance(wholeText_) + 2, metrics.height()};
}

QSize ElidedLabel::minimumSizeHint() const {
    const QFontMetrics metrics(font());
    return {qMin(sizeHint().width(), metrics.averageCharWidth() * kMinimumCharacters), metrics.height()};
}

bool ElidedLabel::event(QEvent* event) {
    // Not the tool tip property: assistive tools would read it, with its markup, as the description.
    if (event->type() != QEvent::ToolTip) return QLabel::event(event);
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), hoverText(), this);
    return true;
}

void ElidedLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    drawLine(painter, rect(), shownText());
}

void ElidedLabel::drawLine(QPainter& painter, const QRect& place, const QString& text) const {
    const bool isMirrored = layoutDirection() == Qt::RightToLeft;
    painter.setLayoutDirection(Qt::LeftToRight);
    painter.setPen(textColor());
    painter.drawText(place,
                     static_cast<int>(Qt::AlignVCenter | (isMirrored ? Qt::AlignRight : Qt::AlignLeft)) |
                         static_cast<int>(Qt::TextSingleLine),
                     text);
}

} // namespace quillow
