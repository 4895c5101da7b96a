// The picture of a document: used in the drop area, and as the program's icon if the desktop has none installed.
#pragma once

#include <QColor>
#include <QIcon>
#include <QRectF>

class QPainter;

namespace quillow {

/// Width over height.
inline constexpr qreal kDocumentGlyphAspect = 0.76;

/// Its colours on a white or an unknown background.
inline constexpr QRgb kDocumentGlyphLine = 0xFF2F6FC8;
inline constexpr QRgb kDocumentGlyphPaper = 0xFFF3F7FD;

/// The folded corner is at the end of the reading direction.
void paintDocumentGlyph(QPainter& painter, const QRectF& place, const QColor& line, const QColor& paper,
                        Qt::LayoutDirection direction = Qt::LeftToRight);

/// The program's icon as installed, else painted.
[[nodiscard]] QIcon applicationIcon();

} // namespace quillow
