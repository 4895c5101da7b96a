#include "platform/qt/controls/DiscloseButton.h"

#include <QPainter>
#include <QSignalBlocker>
#include <QStyleOption>

namespace quillow {
namespace {

constexpr int kLeastTriangle = 8;
constexpr int kGap = 7;
constexpr int kVerticalPadding = 3;

/// The triangle's side: half the height of the title, an even number of points.
int triangleSide(const QFontMetrics& metrics) {
    return qMax(kLeastTriangle, metrics.height() / 4 * 2);
}

/// A triangle in the middle of the square. It points right, or down if open.
QPolygonF triangle(const QRectF& square, bool isOpen) {
    const QPointF middle = square.center();
    const qreal half = square.width() / 2;
    const qreal flat = half * 0.6;
    if (isOpen) return {{middle + QPointF(-half, -flat), middle + QPointF(half, -flat), middle + QPointF(0, flat)}};
    return {{middle + QPointF(-flat, -half), middle + QPointF(flat, 0), middle + QPointF(-flat, half)}};
}

} // namespace

DiscloseButton::DiscloseButton(const QString& title, const QString& description, QWidget* parent)
    : KeyedButton(parent) {
    setText(title);
    setToolTip(description);
    setAccessibleDescription(description);
    setCheckable(true);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    QFont bold = font();
    bold.setBold(true);
    setFont(bold);
    // Not clicked(): a toggle by assistive tools does not emit it.
    connect(this, &QAbstractButton::toggled, this, [this] {
        if (action_) action_();
    });
}

void DiscloseButton::setState(ButtonState state) {
    const QSignalBlocker noAction(this);
    setChecked(state == ButtonState::on);
}

QSize DiscloseButton::sizeHint() const {
    const QSize title = fontMetrics().size(Qt::TextShowMnemonic, text());
    return {2 * kInset + triangleSide(fontMetrics()) + kGap + title.width(), title.height() + 2 * kVerticalPadding};
}

void DiscloseButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool isRightToLeft = layoutDirection() == Qt::RightToLeft;
    const QColor text = palette().color(QPalette::WindowText);
    const QColor accent = palette().color(QPalette::Highlight);

    const int side = triangleSide(fontMetrics());
    QRectF square(kInset, (height() - side) / 2.0, side, side);
    if (isRightToLeft) square.moveRight(width() - kInset);
    painter.save();
    if (isRightToLeft && !isChecked()) {
        painter.translate(2 * square.center().x(), 0);
        painter.scale(-1, 1);
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(isDown() || underMouse() ? accent : text);
    painter.drawPolygon(triangle(square, isChecked()));
    painter.restore();

    const int indent = kInset + side + kGap;
    const QRect title = rect().adjusted(isRightToLeft ? 0 : indent, 0, isRightToLeft ? -indent : 0, 0);
    QStyleOption option;
    option.initFrom(this);
    // Some styles underline mnemonics only while Alt is pressed; they need the option to tell.
    const int mnemonic =
        style()->styleHint(QStyle::SH_UnderlineShortcut, &option, this) ? Qt::TextShowMnemonic : Qt::TextHideMnemonic;
    painter.setPen(text);
    painter.drawText(title, static_cast<int>(Qt::AlignVCenter | Qt::AlignLeading) | mnemonic, this->text());

    if (hasFocus() && option.state.testFlag(QStyle::State_KeyboardFocusChange)) {
        painter.setPen(QPen(accent, 1));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 3, 3);
    }
}

} // namespace quillow
