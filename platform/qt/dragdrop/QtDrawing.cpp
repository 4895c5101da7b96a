#include "platform/qt/dragdrop/QtDrawing.h"

#include <QPen>

#include <cmath>

namespace quillow {
namespace {

QColor colorOf(DrawingColor color) {
    switch (color) {
    case DrawingColor::black: return Qt::black;
    case DrawingColor::white: return Qt::white;
    case DrawingColor::gray: return QColor(0x80, 0x80, 0x80);
    }
    return Qt::black;
}

/// Tolerance within which a length counts as a whole number of pixels.
constexpr double kRounding = 1e-6;

} // namespace

QtDrawing::QtDrawing(QPainter& painter, double height)
    : painter_(painter)
    , height_(height) {
    painter_.save();
    painter_.setRenderHint(QPainter::Antialiasing);
    painter_.setBrush(Qt::NoBrush);
}

void QtDrawing::setColor(DrawingColor color) {
    color_ = colorOf(color);
}

void QtDrawing::fillRect(const Rect& rect) {
    painter_.fillRect(placeOf(rect), color_);
}

void QtDrawing::strokeRect(const Rect& rect, const Stroke& stroke) {
    QPen pen = penFor(stroke);
    pen.setJoinStyle(Qt::MiterJoin);
    painter_.setPen(pen);
    painter_.drawRect(onWholePixels(placeOf(rect), shownWidth(stroke.lineWidth)));
}

void QtDrawing::strokeRoundedRect(const Rect& rect, double xRadius, double yRadius, const Stroke& stroke) {
    painter_.setPen(penFor(stroke));
    painter_.drawRoundedRect(onWholePixels(placeOf(rect), shownWidth(stroke.lineWidth)), xRadius, yRadius);
}

QRectF QtDrawing::placeOf(const Rect& rect) const {
    return {rect.x, height_ - rect.y - rect.height, rect.width, rect.height};
}

double QtDrawing::shownWidth(double lineWidth) const {
    const QTransform toPixels = painter_.deviceTransform();
    if (toPixels.type() > QTransform::TxScale) return lineWidth;
    return qMax(1.0, std::round(lineWidth * toPixels.m11())) / toPixels.m11();
}

QRectF QtDrawing::onWholePixels(const QRectF& place, double lineWidth) const {
    const QTransform toPixels = painter_.deviceTransform();
    const double width = lineWidth * toPixels.m11();
    if (toPixels.type() > QTransform::TxScale) return place;
    QRectF pixels = toPixels.mapRect(place);
    // The line's outer edges.
    const double left = std::ceil(pixels.left() - width / 2 - kRounding);
    const double top = std::ceil(pixels.top() - width / 2 - kRounding);
    const double right = std::floor(pixels.right() + width / 2 + kRounding);
    const double bottom = std::floor(pixels.bottom() + width / 2 + kRounding);
    pixels = QRectF(QPointF(left, top), QPointF(right, bottom)).adjusted(width / 2, width / 2, -width / 2, -width / 2);
    return toPixels.inverted().mapRect(pixels);
}

QPen QtDrawing::penFor(const Stroke& stroke) const {
    const double width = shownWidth(stroke.lineWidth);
    QPen pen(color_, width, Qt::SolidLine, Qt::FlatCap);
    if (stroke.dash.empty()) return pen;
    // QPen's dash lengths are in units of the pen width.
    QList<qreal> pattern;
    for (const double length : stroke.dash)
        pattern.append(length / width);
    pen.setDashPattern(pattern);
    pen.setDashOffset(stroke.phase / width);
    return pen;
}

} // namespace quillow
