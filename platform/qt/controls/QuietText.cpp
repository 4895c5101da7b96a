#include "platform/qt/controls/QuietText.h"

#include <QApplication>
#include <QEvent>
#include <QScopedValueRollback>

#include <cmath>

namespace quillow {
namespace {

constexpr double kQuiet = 0.7;
/// Black on white has 21, the most there is. The backgrounds of ordinary themes are less than white or more than black.
constexpr double kHighContrast = 20;

// The contrast of two colours as WCAG 2.1 defines it.

double linear(double channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& color) {
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double contrast(const QColor& a, const QColor& b) {
    const double la = luminance(a);
    const double lb = luminance(b);
    return (qMax(la, lb) + 0.05) / (qMin(la, lb) + 0.05);
}

} // namespace

QColor quietColor(const QPalette& palette) {
    const QColor text = palette.color(QPalette::Active, QPalette::WindowText);
    const QColor paper = palette.color(QPalette::Active, QPalette::Window);
    if (contrast(text, paper) >= kHighContrast) return text;
    const auto mixed = [](int a, int b) { return static_cast<int>(std::lround(a * kQuiet + b * (1 - kQuiet))); };
    return {mixed(text.red(), paper.red()), mixed(text.green(), paper.green()), mixed(text.blue(), paper.blue())};
}

void alignToLayout(QLabel& label) {
    const bool isMirrored = label.layoutDirection() == Qt::RightToLeft;
    label.setAlignment((isMirrored ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignAbsolute | Qt::AlignVCenter);
}

NoteLabel::NoteLabel(const QString& text, QWidget* parent)
    : QLabel(text, parent) {
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    alignToLayout(*this);
    applyColor();
}

void NoteLabel::changeEvent(QEvent* event) {
    QLabel::changeEvent(event);
    const bool isTheme = event->type() == QEvent::PaletteChange || event->type() == QEvent::ApplicationPaletteChange;
    if (isTheme && !isApplying_) applyColor();
}

void NoteLabel::applyColor() {
    const QScopedValueRollback applying(isApplying_, true);
    QPalette colors = QApplication::palette(this);
    colors.setColor(QPalette::WindowText, quietColor(colors));
    setPalette(colors);
}

} // namespace quillow
