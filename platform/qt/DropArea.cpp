#include "platform/qt/DropArea.h"

#include "platform/qt/DocumentGlyph.h"

#include <QDragEnterEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QStyleOption>

namespace quillow {
namespace {

constexpr char kTitle[] = "Drop documents here";
constexpr char kHint[] = "RTF, RTFD, HTM, HTML, PDF \u2013 or choose files with Ctrl+O";

// The outline, in points.
constexpr qreal kCornerRadius = 6.0;
constexpr qreal kLineWidth = 1.0;
constexpr qreal kHilitedLineWidth = 2.0;
constexpr qreal kDash = 2.0;

constexpr int kGlyphHeight = 48;
constexpr int kGlyphGap = 26;

QFont titleFont(const QFont& font) {
    QFont title = font;
    title.setBold(true);
    title.setPointSizeF(font.pointSizeF() * 1.2);
    return title;
}

QColor mixed(const QColor& base, const QColor& over, float share) {
    const auto channel = [share](float a, float b) { return a + (b - a) * share; };
    return QColor::fromRgbF(channel(base.redF(), over.redF()), channel(base.greenF(), over.greenF()),
                            channel(base.blueF(), over.blueF()));
}

} // namespace

DropArea::DropArea(LinkAction linkAction, QWidget* parent)
    : QAbstractButton(parent)
    , linkAction_(linkAction) {
    setAcceptDrops(true);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setText(QString::fromUtf8(kTitle));
    setAccessibleName(QString::fromUtf8(kTitle));
    setAccessibleDescription(QString::fromUtf8(kHint));
}

QSize DropArea::minimumSizeHint() const {
    const int text = QFontMetrics(font()).horizontalAdvance(QString::fromUtf8(kHint));
    return {text + kGlyphHeight + kGlyphGap + 40, sizeHint().height()};
}

void DropArea::keyPressEvent(QKeyEvent* event) {
    // A button is pressed by Space of itself; Return is left to dialogs.
    const bool isPlain = !(event->modifiers() & ~Qt::KeyboardModifiers(Qt::KeypadModifier));
    if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && isPlain)
        click();
    else
        QAbstractButton::keyPressEvent(event);
}

void DropArea::dragEnterEvent(QDragEnterEvent* event) {
    answer_ = answerFor(event->possibleActions(), linkAction_);
    if (answer_ == Qt::IgnoreAction || !localFilesOf(*event->mimeData())) {
        answer_ = Qt::IgnoreAction;
        event->ignore();
        return;
    }
    setHilited(true);
    event->setDropAction(answer_);
    event->accept();
}

void DropArea::dragMoveEvent(QDragMoveEvent* event) {
    if (answer_ == Qt::IgnoreAction) {
        event->ignore();
        return;
    }
    event->setDropAction(answer_);
    event->accept();
}

void DropArea::dragLeaveEvent(QDragLeaveEvent*) {
    setHilited(false);
}

void DropArea::dropEvent(QDropEvent* event) {
    setHilited(false);
    const auto paths = localFilesOf(*event->mimeData());
    const Qt::DropAction answer = answerFor(event->possibleActions(), linkAction_);
    if (!paths || answer == Qt::IgnoreAction) {
        event->ignore();
        return;
    }
    event->setDropAction(answer);
    event->accept();
    if (dropHandler_) dropHandler_(*paths);
}

void DropArea::setHilited(bool isHilited) {
    if (isHilited_ == isHilited) return;
    isHilited_ = isHilited;
    update();
}

void DropArea::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor base = palette().color(QPalette::Base);
    const QColor text = palette().color(QPalette::Text);
    const QColor accent = palette().color(QPalette::Highlight);
    const bool isLit = isHilited_ || isDown();
    QStyleOption option;
    option.initFrom(this);
    const bool showsFocus = hasFocus() && option.state.testFlag(QStyle::State_KeyboardFocusChange);

    // The outline: dashes of two points and gaps of two; a pen counts them in its widths.
    const QRectF outline = QRectF(rect()).adjusted(kInset, kInset, -kInset, -kInset);
    const qreal width = isHilited_ ? kHilitedLineWidth : kLineWidth;
    QPen pen(isLit || showsFocus ? accent : mixed(base, text, 0.6F), width, Qt::CustomDashLine, Qt::FlatCap);
    pen.setDashPattern({kDash / width, kDash / width});
    painter.setPen(pen);
    painter.setBrush(isLit ? mixed(base, accent, 0.08F) : underMouse() ? mixed(base, accent, 0.03F) : base);
    painter.drawRoundedRect(outline, kCornerRadius, kCornerRadius);

    // The glyph and two lines of text, together in the middle.
    const QString title = QString::fromUtf8(kTitle);
    const QString hint = QString::fromUtf8(kHint);
    const QFont bold = titleFont(font());
    const QFontMetricsF titleMetrics(bold);
    const QFontMetricsF hintMetrics(font());
    const qreal glyphWidth = kGlyphHeight * kDocumentGlyphAspect;
    const qreal textWidth = qMax(titleMetrics.horizontalAdvance(title), hintMetrics.horizontalAdvance(hint));
    const qreal left = (this->width() - glyphWidth - kGlyphGap - textWidth) / 2;
    const QPointF middle = QRectF(rect()).center();
    paintDocumentGlyph(painter, QRectF(left, middle.y() - kGlyphHeight / 2.0, glyphWidth, kGlyphHeight), accent,
                       mixed(base, accent, 0.1F));
    const qreal textLeft = left + glyphWidth + kGlyphGap;
    const qreal textTop = middle.y() - (titleMetrics.height() + 2 + hintMetrics.height()) / 2;
    painter.setPen(text);
    painter.setFont(bold);
    painter.drawText(QPointF(textLeft, textTop + titleMetrics.ascent()), title);
    painter.setPen(mixed(base, text, 0.65F));
    painter.setFont(font());
    painter.drawText(QPointF(textLeft, textTop + titleMetrics.height() + 2 + hintMetrics.ascent()), hint);

    if (showsFocus) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(accent, 1));
        painter.drawRoundedRect(outline.adjusted(3.5, 3.5, -3.5, -3.5), kCornerRadius - 2, kCornerRadius - 2);
    }
}

LinkAction linkActionOfWindowSystem() {
    const bool isWayland = QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
    return isWayland ? LinkAction::missing : LinkAction::expressible;
}

} // namespace quillow
