#include "platform/qt/dragdrop/DropArea.h"

#include "platform/qt/dragdrop/DocumentGlyph.h"
#include "platform/qt/dragdrop/DropRule.h"
#include "platform/qt/dragdrop/QtDraggingInfo.h"
#include "platform/qt/dragdrop/QtDrawing.h"

#include <QDragEnterEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QStyleOption>

#include <algorithm>
#include <utility>

namespace quillow {
namespace {

constexpr char kTitle[] = "Drop documents here";
constexpr char kHint[] = "RTF, RTFD, HTM, HTML, PDF \u2013 or choose files with Ctrl+O";

// The views' panel is white in every theme, so the items on it have fixed colours, not the palette's.
constexpr QRgb kTitleColor = 0xFF1F2328;
constexpr QRgb kHintColor = 0xFF57606A;
constexpr QRgb kPressedPaper = 0xFFD6E4F8;

// In points.
constexpr int kGlyphHeight = 48;
constexpr int kGlyphGap = 26;
constexpr qreal kFocusInset = 7.5;
constexpr qreal kFocusRadius = 4;
constexpr qreal kFocusWidth = 1.5;

QFont titleFont(const QFont& font) {
    QFont title = font;
    title.setBold(true);
    title.setPointSizeF(font.pointSizeF() * 1.2);
    return title;
}

} // namespace

DropArea::DropArea(DragWayFinder wayOfDrag, FileTransferPortal portal, QWidget* parent)
    : KeyedButton(parent)
    , wayOfDrag_(std::move(wayOfDrag))
    , portal_(std::move(portal)) {
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setText(QString::fromUtf8(kTitle));
    setAccessibleName(QString::fromUtf8(kTitle));
    setAccessibleDescription(QString::fromUtf8(kHint));
}

void DropArea::addView(View& view) {
    views_.push_back(&view);
    update();
}

void DropArea::removeView(View& view) {
    std::erase(views_, &view);
    update();
}

void DropArea::setFrame(const Rect& frame) {
    const int parentHeight = parentWidget() ? parentWidget()->height() : 0;
    const QRectF place(frame.x, parentHeight - frame.y - frame.height, frame.width, frame.height);
    setGeometry(place.toRect());
}

Rect DropArea::bounds() const {
    return {0, 0, static_cast<double>(width()), static_cast<double>(height())};
}

void DropArea::registerForDraggedTypes(const QStringList& types) {
    draggedTypes_ = types;
    setAcceptDrops(true);
}

void DropArea::unregisterDraggedTypes() {
    draggedTypes_.clear();
    setAcceptDrops(false);
}

QSize DropArea::minimumSizeHint() const {
    const int text = QFontMetrics(font()).horizontalAdvance(QString::fromUtf8(kHint));
    return {text + kGlyphHeight + kGlyphGap + 40, sizeHint().height()};
}

void DropArea::dragEnterEvent(QDragEnterEvent* event) {
    way_ = wayOfDrag_();
    const QtDraggingInfo info(*event, way_, portal_);
    answer_ = target() && bringsRegisteredType(info) ? target()->draggingEntered(info) : DragOperation::none;
    answer(*event);
}

void DropArea::dragMoveEvent(QDragMoveEvent* event) {
    answer(*event);
}

void DropArea::dragLeaveEvent(QDragLeaveEvent*) {
    answer_ = DragOperation::none;
    if (target()) target()->draggingExited();
}

void DropArea::dropEvent(QDropEvent* event) {
    const DragOperation former = std::exchange(answer_, DragOperation::none);
    const Qt::DropAction action = dropActionFor(former, event->possibleActions(), way_);
    if (!target() || former == DragOperation::none) {
        event->ignore();
        return;
    }
    const QtDraggingInfo info(*event, way_, portal_);
    // The accepted action is no longer offered, or the source has ended with its data. For the view, the drag has
    // left.
    if (action == Qt::IgnoreAction || !bringsRegisteredType(info)) {
        event->ignore();
        target()->draggingExited();
        return;
    }
    // Accept before the view handles the drop, which may take long.
    event->setDropAction(action);
    event->accept();
    if (!target()->prepareForDragOperation(info) || !target()->performDragOperation(info)) event->ignore();
}

bool DropArea::bringsRegisteredType(const DraggingInfo& info) const {
    const QStringList types = info.types();
    return std::any_of(types.begin(), types.end(),
                       [this](const QString& type) { return draggedTypes_.contains(type); });
}

void DropArea::answer(QDropEvent& event) const {
    const Qt::DropAction action = dropActionFor(answer_, event.possibleActions(), way_);
    if (action == Qt::IgnoreAction) {
        event.ignore();
        return;
    }
    // Not acceptProposedAction(): it accepts the action that the source prefers, copy or even move.
    event.setDropAction(action);
    event.accept();
}

void DropArea::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    const QRect dirty = event->rect();
    const Rect rect{static_cast<double>(dirty.x()), static_cast<double>(height() - dirty.bottom() - 1),
                    static_cast<double>(dirty.width()), static_cast<double>(dirty.height())};
    for (View* view : views_) {
        QtDrawing drawing(painter, height());
        view->drawRect(rect, drawing);
    }
    painter.setRenderHint(QPainter::Antialiasing);
    paintContent(painter);
}

/// The glyph and two lines of text, centred together, and the keyboard focus ring.
void DropArea::paintContent(QPainter& painter) const {
    const QString title = QString::fromUtf8(kTitle);
    const QString hint = QString::fromUtf8(kHint);
    const QFont bold = titleFont(font());
    const QFontMetricsF titleMetrics(bold);
    const QFontMetricsF hintMetrics(font());
    const qreal glyphWidth = kGlyphHeight * kDocumentGlyphAspect;
    const qreal textWidth = qMax(titleMetrics.horizontalAdvance(title), hintMetrics.horizontalAdvance(hint));
    const qreal left = (width() - glyphWidth - kGlyphGap - textWidth) / 2;
    const QPointF middle = QRectF(rect()).center();
    const bool isLit = isDown() || answer_ != DragOperation::none;
    paintDocumentGlyph(painter, QRectF(left, middle.y() - kGlyphHeight / 2.0, glyphWidth, kGlyphHeight),
                       QColor(kDocumentGlyphLine), QColor(isLit ? kPressedPaper : kDocumentGlyphPaper));
    const qreal textLeft = left + glyphWidth + kGlyphGap;
    const qreal textTop = middle.y() - (titleMetrics.height() + 2 + hintMetrics.height()) / 2;
    painter.setPen(QColor(kTitleColor));
    painter.setFont(bold);
    painter.drawText(QPointF(textLeft, textTop + titleMetrics.ascent()), title);
    painter.setPen(QColor(kHintColor));
    painter.setFont(font());
    painter.drawText(QPointF(textLeft, textTop + titleMetrics.height() + 2 + hintMetrics.ascent()), hint);

    QStyleOption option;
    option.initFrom(this);
    if (!hasFocus() || !option.state.testFlag(QStyle::State_KeyboardFocusChange)) return;
    const QRectF ring = QRectF(rect()).adjusted(kFocusInset, kFocusInset, -kFocusInset, -kFocusInset);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(kDocumentGlyphLine), kFocusWidth));
    painter.drawRoundedRect(ring, kFocusRadius, kFocusRadius);
}

} // namespace quillow
