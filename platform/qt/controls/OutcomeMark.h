// The small mark that tells the outcome of a drop: a tick if everything was converted, an amber mark if not.
#pragma once

#include <QColor>
#include <QRectF>

class QPainter;

namespace quillow {

enum class OutcomeMark { none, done, attention };

/// Paints the mark as a disc with a symbol. `ring` is the colour around the disc, which separates it from what is
/// below; a transparent colour for no ring.
void paintOutcomeMark(QPainter& painter, const QRectF& place, OutcomeMark mark, const QColor& ring);

} // namespace quillow
