#include "platform/qt/windows/LatestEntry.h"

#include "platform/qt/controls/OutcomeMark.h"

#include <QMouseEvent>
#include <QPainter>
#include <QStyle>

namespace quillow {
namespace {

constexpr int kMarkSize = 14;
constexpr int kMarkGap = 6;

} // namespace

LatestEntry::LatestEntry(QWidget* parent)
    : ElidedLabel(Qt::ElideMiddle, parent) {
    setQuiet(true);
    setCursor(Qt::PointingHandCursor);
}

void LatestEntry::setEntry(const QString& message) {
    setWholeText(message);
    tell();
}

void LatestEntry::setRemark(const QString& remark, bool isFailure) {
    remark_ = remark;
    isFailure_ = isFailure;
    updateGeometry();
    update();
    tell();
}

void LatestEntry::tell() {
    setAccessibleName(QStringLiteral("Latest entry: ") + wholeText() + tail());
}

int LatestEntry::markWidth() const {
    return isFailure_ ? kMarkSize + kMarkGap : 0;
}

QString LatestEntry::tail() const {
    return remark_.isEmpty() ? QString() : QStringLiteral(" \u00B7 ") + remark_;
}

int LatestEntry::tailWidth() const {
    return fontMetrics().horizontalAdvance(tail());
}

QString LatestEntry::shownText() const {
    const int room = width() - markWidth();
    const QString message = elided(wholeText(), room - tailWidth());
    if (!message.isEmpty() || wholeText().isEmpty()) return message + tail();
    // Too little room for the message: the remark alone, or the message if there is no remark.
    return remark_.isEmpty() ? elided(wholeText(), room) : fontMetrics().elidedText(remark_, Qt::ElideRight, room);
}

QSize LatestEntry::sizeHint() const {
    return ElidedLabel::sizeHint().grownBy({markWidth(), 0, tailWidth(), 0});
}

QSize LatestEntry::minimumSizeHint() const {
    return {qMin(sizeHint().width(), ElidedLabel::minimumSizeHint().width() + markWidth()), sizeHint().height()};
}

void LatestEntry::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    QRect text = rect();
    if (isFailure_) {
        const QRect mark(0, (height() - kMarkSize) / 2, kMarkSize, kMarkSize);
        paintOutcomeMark(painter, QStyle::visualRect(layoutDirection(), rect(), mark), OutcomeMark::attention,
                         Qt::transparent);
        text = QStyle::visualRect(layoutDirection(), rect(), rect().adjusted(markWidth(), 0, 0, 0));
    }
    drawLine(painter, text, shownText());
}

void LatestEntry::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint()) && action_) action_();
}

} // namespace quillow
