// A drawing context over a painter.
#pragma once

#include "platform/Drawing.h"

#include <QColor>
#include <QPainter>

namespace quillow {

/// Lines whose width is a whole number of the screen's pixels are moved onto whole pixels, inwards and by less than one: a line
/// of one point is black on a plain screen, not two grey ones.
class QtDrawing final : public Drawing {
public:
    /// `height` is that of the area, whose lower left corner is the origin. The painter's state is put back at the end.
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
    [[nodiscard]] QRectF onWholePixels(const QRectF& place, double lineWidth) const;
    [[nodiscard]] QPen penFor(const Stroke& stroke) const;

    QPainter& painter_;
    double height_;
    QColor color_ = Qt::black;
};

} // namespace quillow
