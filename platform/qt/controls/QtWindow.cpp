#include "platform/qt/controls/QtWindow.h"

#include "platform/qt/controls/WorkArea.h"

#include <QEvent>
#include <QGuiApplication>
#include <QScopedValueRollback>
#include <QScreen>

#include <cmath>
#include <utility>

namespace quillow {
namespace {

int heightOfPrimaryScreen() {
    return QGuiApplication::primaryScreen()->geometry().height();
}

// Converts a widget's rectangle to the logic's, whose y axis points up and whose y is the lower edge.

Rect fromPlace(const QRect& place) {
    return {static_cast<double>(place.x()), static_cast<double>(heightOfPrimaryScreen() - place.y() - place.height()),
            static_cast<double>(place.width()), static_cast<double>(place.height())};
}

int whole(double value) {
    return static_cast<int>(std::lround(value));
}

QSize toSize(const Size& size) {
    return {whole(size.width), whole(size.height)};
}

QRect toPlace(const Rect& frame) {
    return {whole(frame.x), heightOfPrimaryScreen() - whole(frame.y + frame.height), whole(frame.width),
            whole(frame.height)};
}

} // namespace

LimitKeeper limitKeeperOfWindowSystem() {
    const bool isWayland = QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
    return isWayland ? LimitKeeper::window : LimitKeeper::windowSystem;
}

QtWindow::QtWindow(QWidget& widget, LimitKeeper limitKeeper)
    : widget_(widget)
    , limitKeeper_(limitKeeper) {
    if (limitKeeper_ == LimitKeeper::window) widget_.installEventFilter(this);
    animation_.setDuration(kAnimationMilliseconds);
    animation_.setEasingCurve(QEasingCurve::InOutQuad);
    QObject::connect(&animation_, &QVariantAnimation::valueChanged, &animation_,
                     [this](const QVariant& place) { moveTo(place.toRect()); });
    QObject::connect(&animation_, &QVariantAnimation::finished, &animation_, [this] { finishMoving(); });
}

void QtWindow::makeKeyAndOrderFront() {
    if (widget_.isMinimized()) widget_.setWindowState(widget_.windowState() & ~Qt::WindowMinimized);
    widget_.show();
    widget_.raise();
    widget_.activateWindow();
}

void QtWindow::center() {
    const QRect screen = widget_.screen()->availableGeometry();
    const QRect now = place();
    QRect centred(QPoint(0, 0), now.size());
    centred.moveCenter(screen.center());
    animation_.stop();
    moveTo(centred);
    applyLimits();
}

Rect QtWindow::frame() const {
    return fromPlace(place());
}

QRect QtWindow::place() const {
    return animation_.state() == QAbstractAnimation::Running ? animation_.endValue().toRect() : widget_.geometry();
}

void QtWindow::setFrame(const Rect& frame, Animate animate) {
    QRect target = toPlace(frame);
    const QRect before = place();
    if (rise_.distance > 0 && target.height() < before.height()) {
        if (before.topLeft() == rise_.corner) target.translate(0, rise_.distance);
        rise_.distance = 0;
    }
    animation_.stop();
    limitsWait_ = false;
    if (limitKeeper_ == LimitKeeper::window && fillsScreen()) return;
    if (animate == Animate::no || !widget_.isVisible()) {
        moveTo(target);
        return;
    }
    mayRise_ = true;
    animation_.setStartValue(widget_.geometry());
    animation_.setEndValue(target);
    animation_.start();
}

void QtWindow::finishMoving() {
    applyLimits();
    if (std::exchange(mayRise_, false)) riseIntoWorkArea();
}

void QtWindow::riseIntoWorkArea() {
    // Under Wayland no window knows where it is.
    if (limitKeeper_ == LimitKeeper::window || fillsScreen() || !widget_.isVisible()) return;
    const int distance = riseInto(widget_.screen()->availableGeometry(), widget_.frameGeometry());
    if (distance == 0) return;
    const QRect target = widget_.geometry().translated(0, -distance);
    rise_ = {rise_.distance + distance, target.topLeft()};
    animation_.setStartValue(widget_.geometry());
    animation_.setEndValue(target);
    animation_.start();
}

void QtWindow::moveTo(const QRect& place) {
    const QScopedValueRollback<bool> moving(isMoving_, true);
    const QSize size = place.size();
    const QSize least = leastSize();
    const QSize most = mostSize();
    const auto lower = [](int limit, int other, int value) { return limit == other ? value : qMin(limit, value); };
    const auto upper = [](int limit, int other, int value) { return limit == other ? value : qMax(limit, value); };
    widget_.setMinimumSize(lower(least.width(), most.width(), size.width()),
                           lower(least.height(), most.height(), size.height()));
    setMaximumSizeOfWidget(
        {upper(most.width(), least.width(), size.width()), upper(most.height(), least.height(), size.height())});
    // The decoration is outside the geometry, and its size is unknown before the window was first shown. A window
    // that only changes its size must not move by a pixel.
    const bool isPlaced = widget_.isVisible();
    if (place.topLeft() == widget_.geometry().topLeft()) {
        widget_.resize(size);
    } else if (isPlaced) {
        widget_.setGeometry(place);
    } else {
        widget_.resize(size);
        widget_.move(place.topLeft());
    }
    widget_.update();
}

void QtWindow::setMinSize(const Size& size) {
    minSize_ = toSize(size);
    limitsChanged();
}

void QtWindow::setMaxSize(const Size& size) {
    maxSize_ = toSize(size);
    limitsChanged();
}

void QtWindow::limitsChanged() {
    limitsWait_ = true;
    if (animation_.state() != QAbstractAnimation::Running) applyLimits();
}

void QtWindow::applyLimits() {
    if (!std::exchange(limitsWait_, false)) return;
    // The minimum never exceeds the maximum, so that the window is not resized to an intermediate size. The widget
    // keeps its top left corner when its limits resize it.
    widget_.setMinimumSize(leastSize().boundedTo(widget_.maximumSize()));
    setMaximumSizeOfWidget(mostSize());
    widget_.setMinimumSize(leastSize());
    if (limitKeeper_ == LimitKeeper::window) keepLimits();
}

void QtWindow::setMaximumSizeOfWidget(const QSize& size) {
    const bool isHeightTold = limitKeeper_ == LimitKeeper::windowSystem || !maxSize_;
    widget_.setMaximumSize(size.width(), isHeightTold ? size.height() : QWIDGETSIZE_MAX);
}

void QtWindow::keepLimits() {
    if (fillsScreen() || isMoving_ || limitsWait_ || animation_.state() == QAbstractAnimation::Running) return;
    const QSize least = minSize_.value_or(QSize(0, 0));
    const QSize most = maxSize_.value_or(QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX)).expandedTo(least);
    widget_.resize(widget_.size().boundedTo(most).expandedTo(least));
}

bool QtWindow::eventFilter(QObject*, QEvent* event) {
    // Runs before the contents are painted in a wrong size. The state change of a window that stops filling the
    // screen needs no handling: a resize to its former size follows.
    if (event->type() == QEvent::Resize) keepLimits();
    return false;
}

void QtWindow::setExcludedFromWindowsMenu(bool excluded) {
    widget_.setProperty(kExcludedFromWindowsMenu, excluded);
}

} // namespace quillow
