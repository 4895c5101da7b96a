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
constexpr char kHintTypes[] = "RTF, RTFD, HTM, HTML, PDF";
constexpr char kHintKeys[] = "or choose files with Ctrl+O";
constexpr char kLitHint[] = "Release to convert";
constexpr char kEndingTitle[] = "Quitting\u2026";
constexpr char kEndingHint[] = "after the current document";

// The views' panel is white in every theme, so the items on it have fixed colours, not the palette's.
constexpr QRgb kTitleColor = 0xFF1F2328;
constexpr QRgb kHintColor = 0xFF57606A;
constexpr QRgb kPressedPaper = 0xFFD6E4F8;

// In points.
constexpr qreal kOutlineRoom = 8; ///< from the inner area's edge to the texts: the outline and space inside it
constexpr qreal kFocusInset = 17.5;
constexpr qreal kFocusRadius = 4;
constexpr qreal kFocusWidth = 1.5;
constexpr qreal kMarkSize = 20;

QFont scaled(QFont font, qreal scale, bool isBold) {
    font.setBold(isBold);
    // A font has a size in points or in pixels.
    if (font.pointSizeF() > 0)
        font.setPointSizeF(font.pointSizeF() * scale);
    else
        font.setPixelSize(qRound(font.pixelSize() * scale));
    return font;
}

QSizeF sizeOf(const QString& text, const QFontMetricsF& metrics) {
    return {metrics.horizontalAdvance(text), metrics.height()};
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
    add(view, 0);
}

void DropArea::add(View& view, int inset) {
    views_.push_back({&view, inset});
    update();
}

void DropArea::removeView(View& view) {
    std::erase_if(views_, [&view](const PlacedView& placed) { return placed.view == &view; });
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

Rect DropArea::InnerArea::bounds() const {
    const Rect outer = outer_.bounds();
    return {0, 0, qMax(outer.width - 2.0 * kInnerInset, 0.0), qMax(outer.height - 2.0 * kInnerInset, 0.0)};
}

void DropArea::registerForDraggedTypes(const QStringList& types) {
    draggedTypes_ = types;
    setAcceptDrops(true);
}

void DropArea::unregisterDraggedTypes() {
    draggedTypes_.clear();
    setAcceptDrops(false);
}

void DropArea::showMark(OutcomeMark mark) {
    mark_ = mark;
    if (mark == OutcomeMark::none)
        markTimer_.stop();
    else
        markTimer_.start(kMarkMilliseconds, this);
    update();
}

void DropArea::showEnding() {
    isEnding_ = true;
    update();
}

void DropArea::timerEvent(QTimerEvent* event) {
    if (event->timerId() == markTimer_.timerId())
        showMark(OutcomeMark::none);
    else
        KeyedButton::timerEvent(event);
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
    for (const auto& [view, inset] : views_) {
        painter.save();
        painter.translate(inset, inset);
        QtDrawing drawing(painter, height() - 2 * inset);
        view->drawRect({rect.x - inset, rect.y - inset, rect.width, rect.height}, drawing);
        painter.restore();
    }
    painter.setRenderHint(QPainter::Antialiasing);
    paintContent(painter);
    paintFocus(painter);
}

DropArea::Texts DropArea::texts() const {
    const auto text = [](const char* utf8) { return QString::fromUtf8(utf8); };
    if (isEnding_) return {text(kEndingTitle), text(kEndingHint), {text(kEndingHint)}};
    if (isLit()) return {text(kTitle), text(kLitHint), {text(kLitHint)}};
    return {text(kTitle), text(kHint), {text(kHintTypes), text(kHintKeys)}};
}

QRectF DropArea::contentRoom() const {
    constexpr qreal inset = kInnerInset + kOutlineRoom;
    return QRectF(rect()).adjusted(inset, inset, -inset, -inset);
}

DropContent DropArea::content() const {
    return DropContent::arranged(contentRoom(), DropContent::kGlyphHeight * kDocumentGlyphAspect,
                                 [this, words = texts()](const DropTextScales& scales) {
                                     const QFontMetricsF title(scaled(font(), scales.title, true));
                                     const QFontMetricsF hint(scaled(font(), scales.hint, false));
                                     DropTextSizes sizes{sizeOf(words.title, title), sizeOf(words.hint, hint), {}};
                                     for (const QString& line : words.hintLines)
                                         sizes.hintLines.push_back(sizeOf(line, hint));
                                     return sizes;
                                 });
}

void DropArea::paintContent(QPainter& painter) const {
    const DropContent places = content();
    const Texts words = texts();
    const auto mirrored = [this](const QRectF& place) {
        if (layoutDirection() == Qt::LeftToRight) return place;
        return QRectF(width() - place.right(), place.y(), place.width(), place.height());
    };
    // deliberate: English from left to right in every layout.
    painter.setLayoutDirection(Qt::LeftToRight);
    const auto write = [&painter, &mirrored](const QRectF& place, const QString& text) {
        const qreal ascent = QFontMetricsF(painter.font()).ascent();
        painter.drawText(mirrored(place).topLeft() + QPointF(0, ascent), text);
    };
    painter.setPen(QColor(isLit() ? kDocumentGlyphLine : kTitleColor));
    painter.setFont(scaled(font(), places.scales.title, true));
    write(places.title, words.title);
    painter.setPen(QColor(kHintColor));
    painter.setFont(scaled(font(), places.scales.hint, false));
    for (std::size_t i = 0; i < places.hint.size(); ++i)
        write(places.hint[i], places.hint.size() == 1 ? words.hint : words.hintLines.value(static_cast<qsizetype>(i)));

    // The mark is on the glyph's lower corner. Without a glyph it is in the corner of the room.
    QPointF markPlace = contentRoom().bottomRight() - QPointF(kMarkSize / 2, kMarkSize / 2);
    if (places.glyph) {
        paintDocumentGlyph(painter, mirrored(*places.glyph), QColor(kDocumentGlyphLine),
                           QColor(isLit() || isDown() ? kPressedPaper : kDocumentGlyphPaper), layoutDirection());
        markPlace = places.glyph->bottomRight() - QPointF(2, 3);
    }
    const QRectF mark(markPlace - QPointF(kMarkSize / 2, kMarkSize / 2), QSizeF(kMarkSize, kMarkSize));
    if (!isLit()) paintOutcomeMark(painter, mirrored(mark), mark_, Qt::white);
}

void DropArea::paintFocus(QPainter& painter) const {
    QStyleOption option;
    option.initFrom(this);
    if (!hasFocus() || !option.state.testFlag(QStyle::State_KeyboardFocusChange)) return;
    const QRectF ring = QRectF(rect()).adjusted(kFocusInset, kFocusInset, -kFocusInset, -kFocusInset);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(kDocumentGlyphLine), kFocusWidth));
    painter.drawRoundedRect(ring, kFocusRadius, kFocusRadius);
}

} // namespace quillow
