#include "platform/qt/windows/PaneGlyphs.h"

#include "platform/qt/dragdrop/DocumentGlyph.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

#include <array>
#include <utility>

namespace quillow {
namespace {

constexpr QRgb kLine = 0xFF2F6FC8;
constexpr QRgb kPaper = 0xFFF3F7FD;

// Both functions paint into a square of 32 by 32.

/// Three sliders: settings.
void paintGeneral(QPainter& painter) {
    painter.setPen(QPen(QColor(kLine), 2, Qt::SolidLine, Qt::RoundCap));
    painter.setBrush(QColor(kPaper));
    for (const auto& [y, knob] : {std::pair(8.0, 11.0), {16.0, 21.0}, {24.0, 13.0}}) {
        painter.drawLine(QPointF(4, y), QPointF(28, y));
        painter.drawEllipse(QPointF(knob, y), 3.5, 3.5);
    }
}

/// A document with an arrow down to it.
void paintUpdate(QPainter& painter) {
    paintDocumentGlyph(painter, QRectF(4, 2, 28 * kDocumentGlyphAspect, 28), QColor(kLine), QColor(kPaper));
    painter.setPen(QPen(QColor(kPaper), 2));
    painter.setBrush(QColor(kLine));
    painter.drawEllipse(QPointF(23, 22), 8, 8);
    painter.setPen(QPen(QColor(kPaper), 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawLine(QPointF(23, 18), QPointF(23, 25.5));
    QPainterPath head(QPointF(19.8, 22.5));
    head.lineTo(23, 25.8);
    head.lineTo(26.2, 22.5);
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(head);
}

} // namespace

QIcon imageNamed(const QString& name) {
    void (*paint)(QPainter&) = name == u"generalPref"      ? paintGeneral
                               : name == u"softwareUpdate" ? paintUpdate
                                                           : nullptr;
    if (!paint) return {};
    QIcon icon;
    for (const int size : std::array{32, 48, 64}) {
        QPixmap pixmap(size, size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(size / 32.0, size / 32.0);
        paint(painter);
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

} // namespace quillow
