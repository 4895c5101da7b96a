#include "platform/qt/controls/OutcomeMark.h"

#include <QPainter>
#include <QPen>

namespace quillow {
namespace {

// The symbols are white, with a contrast of more than 3 to 1 (WCAG 2.1, 1.4.11) on both.
constexpr QRgb kDone = 0xFF1A7F37;
constexpr QRgb kAttention = 0xFFB26A00;

} // namespace

void paintOutcomeMark(QPainter& painter, const QRectF& place, OutcomeMark mark, const QColor& ring) {
    if (mark == OutcomeMark::none) return;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal unit = place.width() / 20;
    painter.setPen(ring.alpha() > 0 ? QPen(ring, 2 * unit) : QPen(Qt::NoPen));
    painter.setBrush(QColor(mark == OutcomeMark::done ? kDone : kAttention));
    painter.drawEllipse(place.adjusted(unit, unit, -unit, -unit));
    painter.translate(place.topLeft());
    painter.scale(unit, unit);
    painter.setPen(QPen(Qt::white, 2.2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    if (mark == OutcomeMark::done) {
        painter.drawPolyline(QPolygonF({{6.2, 10.4}, {9, 13.1}, {13.8, 7.2}}));
    } else {
        painter.drawLine(QPointF(10, 5.6), QPointF(10, 10.6));
        painter.drawPoint(QPointF(10, 14.3));
    }
    painter.restore();
}

} // namespace quillow
