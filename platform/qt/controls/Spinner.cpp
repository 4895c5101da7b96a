#include "platform/qt/controls/Spinner.h"

#include <QPainter>
#include <QTimerEvent>

#include <utility>

namespace quillow {
namespace {

constexpr int kStepsATurn = 24;
constexpr int kMillisecondsAStep = 40;
constexpr int kDegrees = 16; // QPainter's unit is a sixteenth of a degree

} // namespace

Spinner::Spinner(QString idleName, QString busyName, QWidget* parent)
    : QWidget(parent)
    , idleName_(std::move(idleName))
    , busyName_(std::move(busyName)) {
    setFixedSize(sizeHint());
    setAccessibleName(idleName_);
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void Spinner::startAnimation() {
    timer_.start(kMillisecondsAStep, this);
    setAccessibleName(busyName_);
    update();
}

void Spinner::stopAnimation() {
    timer_.stop();
    setAccessibleName(idleName_);
    update();
}

void Spinner::turnNow() {
    step_ = (step_ + 1) % kStepsATurn;
    repaint();
}

void Spinner::paintEvent(QPaintEvent*) {
    if (!isAnimated()) return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF circle = QRectF(rect()).adjusted(2, 2, -2, -2);
    QColor track = palette().color(QPalette::WindowText);
    track.setAlphaF(0.2F);
    painter.setPen(QPen(track, 2));
    painter.drawEllipse(circle);
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2, Qt::SolidLine, Qt::RoundCap));
    painter.drawArc(circle, -step_ * 360 / kStepsATurn * kDegrees, 100 * kDegrees);
}

void Spinner::timerEvent(QTimerEvent* event) {
    if (event->timerId() != timer_.timerId()) return;
    step_ = (step_ + 1) % kStepsATurn;
    update();
}

} // namespace quillow
