// A drawing context over a painter.
#pragma once

#include "platform/Drawing.h"

#include <QColor>
#include <QPainter>

namespace quillow {

/// Lines are moved onto whole device pixels, inwards and by less than one pixel, and are a whole number of pixels wide.
/// So a line of one point is one black line on a screen without scaling, not two grey ones, and a crisp line of two
/// pixels at a scale of 1.5.
class QtDrawing final : public Drawing {
public:
    /// `height` is the height of the area, whose lower left corner is the origin. The destructor restores the
    /// painter's state.
    QtDrawing(QPainter& painter, double height);
    QtDrawing(const QtDrawing&) = delete;
    QtDrawing& operator=(const QtDrawing&) = delete;
    ~QtDrawing() override { painter_.restore(); }

    void setColor(DrawingColor color) override;
    void fillRect(const Rect& rect) override;
    void strokeRect(const Rect& rect, const Stroke& stroke) override;
    void strokeRoundedRect(const Rect& rect, double xRadius, double yRadius, const Stroke& stroke) override;

private:
    [[nodiscard]] QRectF placeOf(const Rect& rect) const;
    /// The width of the line on the screen, in points.
    [[nodiscard]] double shownWidth(double lineWidth) const;
    [[nodiscard]] QRectF onWholePixels(const QRectF& place, double lineWidth) const;
    [[nodiscard]] QPen penFor(const Stroke& stroke) const;

    QPainter& painter_;
    double height_;
    QColor color_ = Qt::black;
};

} // namespace quillow
