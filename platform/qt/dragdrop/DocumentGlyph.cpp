#include "platform/qt/dragdrop/DocumentGlyph.h"

#include <QCoreApplication>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

namespace quillow {
namespace {

QPixmap paintedIcon(int size) {
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal height = size * 0.92;
    const qreal width = height * kDocumentGlyphAspect;
    paintDocumentGlyph(painter, QRectF((size - width) / 2, (size - height) / 2, width, height),
                       QColor(kDocumentGlyphLine), QColor(kDocumentGlyphPaper));
    return pixmap;
}

} // namespace

void paintDocumentGlyph(QPainter& painter, const QRectF& place, const QColor& line, const QColor& paper,
                        Qt::LayoutDirection direction) {
    painter.save();
    if (direction == Qt::RightToLeft) {
        painter.translate(2 * place.center().x(), 0);
        painter.scale(-1, 1);
    }
    const qreal weight = qMax(1.0, place.height() / 22);
    const QRectF page = place.adjusted(weight / 2, weight / 2, -weight / 2, -weight / 2);
    const qreal fold = page.width() * 0.34;

    QPainterPath sheet(page.topLeft());
    sheet.lineTo(page.right() - fold, page.top());
    sheet.lineTo(page.right(), page.top() + fold);
    sheet.lineTo(page.bottomRight());
    sheet.lineTo(page.bottomLeft());
    sheet.closeSubpath();
    QPainterPath corner(QPointF(page.right() - fold, page.top()));
    corner.lineTo(page.right() - fold, page.top() + fold);
    corner.lineTo(page.right(), page.top() + fold);

    painter.setPen(QPen(line, weight, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
    painter.setBrush(paper);
    painter.drawPath(sheet);
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(corner);
    const qreal left = page.left() + page.width() * 0.2;
    const qreal right = page.right() - page.width() * 0.2;
    for (const auto& [y, end] : {std::pair(0.46, 1.0), {0.62, 1.0}, {0.78, 0.6}}) {
        const qreal height = page.top() + page.height() * y;
        painter.drawLine(QPointF(left, height), QPointF(left + (right - left) * end, height));
    }
    painter.restore();
}

/// Not from the icon theme: that would read the whole index of the theme, which takes longer than a window to appear.
/// Desktops with a theme take the icon that the desktop file names.
QIcon applicationIcon() {
    const QString installed = QCoreApplication::applicationDirPath() +
                              QStringLiteral("/../share/icons/hicolor/%1x%1/apps/org.quillow.Quillow.png");
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 128}) {
        const QPixmap pixmap(installed.arg(size), "PNG");
        icon.addPixmap(pixmap.isNull() ? paintedIcon(size) : pixmap);
    }
    return icon;
}

} // namespace quillow
