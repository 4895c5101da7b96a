#include "platform/qt/services/QtTextMeasure.h"

#include <QFontMetricsF>
#include <QGuiApplication>

#include <algorithm>

namespace quillow {
namespace {

QFont fontOf(const TextAttributes& attributes) {
    QFont font = QGuiApplication::font();
    if (!attributes.fontFamily.isEmpty()) font.setFamily(attributes.fontFamily);
    if (attributes.fontSize > 0) font.setPointSizeF(attributes.fontSize);
    font.setBold(attributes.isBold);
    font.setItalic(attributes.isItalic);
    return font;
}

bool endsLine(QChar unit) {
    return unit == u'\n' || unit == u'\r' || unit == QChar::LineSeparator || unit == QChar::ParagraphSeparator;
}

} // namespace

double QtTextMeasure::width(const QString& text, const TextAttributes& attributes) const {
    const QFontMetricsF metrics(fontOf(attributes));
    double widest = 0;
    for (auto start = text.begin();;) {
        const auto end = std::find_if(start, text.end(), endsLine);
        widest = std::max(widest, metrics.horizontalAdvance(QString(start, end - start)));
        if (end == text.end()) return widest;
        start = end + 1;
    }
}

} // namespace quillow
