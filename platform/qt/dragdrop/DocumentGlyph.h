// The picture of a document: the drop area's, and the program's icon where the desktop has none installed.
#pragma once

#include <QColor>
#include <QIcon>
#include <QRectF>

class QPainter;

namespace quillow {

/// Width over height.
inline constexpr qreal kDocumentGlyphAspect = 0.76;

/// Its colours where it stands on white, or on nothing known.
inline constexpr QRgb kDocumentGlyphLine = 0xFF2F6FC8;
inline constexpr QRgb kDocumentGlyphPaper = 0xFFF3F7FD;

void paintDocumentGlyph(QPainter& painter, const QRectF& place, const QColor& line, const QColor& paper);

/// The program's icon from the desktop's theme, else painted.
[[nodiscard]] QIcon applicationIcon();

} // namespace quillow
