#include "platform/qt/windows/QtLogView.h"

#include "base/PathBytes.h"
#include "platform/qt/windows/LogAccess.h"
#include "platform/qt/windows/LogLayout.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDrag>
#include <QMenu>
#include <QMimeData>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextEdit>
#include <QUrl>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <utility>

namespace quillow {
namespace {

/// A character with the palette's text colour has no colour property, so that a theme change applies to existing
/// lines. This property marks such a character.
constexpr int kHasControlTextColor = QTextFormat::UserProperty + 1;

constexpr qreal kMargin = 8;
/// The margin and two pixels: with less, the view counts the first line as one that does not fit.
constexpr int kLeastSpaceBelowEnd = 10;

/// No log entry is as long as this: its two paths have at most 4,096 bytes each. The layout of a line uses about
/// sixty bytes per character, so longer lines are shown with breaks, at a blank if there is one.
constexpr qsizetype kLongLine = 16384;

/// Maps each unit of the text to one displayed unit. The result has no unit that the document would interpret as
/// structure or combine with another.
QString displayed(const QString& text) {
    QString result = text;
    qsizetype length = 0; // of the line
    for (QChar& unit : result) {
        switch (unit.unicode()) {
        case u'\0': unit = QChar::ReplacementCharacter; break;
        case u'\r':
        case 0xFDD0: // QTextBeginningOfFrame
        case 0xFDD1: // QTextEndOfFrame
        case QChar::ObjectReplacementCharacter: unit = QLatin1Char(' '); break;
        case QChar::ParagraphSeparator: unit = QLatin1Char('\n'); break;
        default: break;
        }
        ++length;
        if ((length >= kLongLine && unit == QLatin1Char(' ')) || length >= 2 * kLongLine) unit = QLatin1Char('\n');
        if (unit == QLatin1Char('\n')) length = 0;
    }
    return result;
}

} // namespace

QtLogView::QtLogView(QWidget* parent)
    : QPlainTextEdit(parent) {
    installLogAccess();
    auto* log = new QTextDocument(this);
    log->setDefaultFont(font());
    log->setDocumentLayout(new LogLayout(log, *viewport()));
    setDocument(log);
    setReadOnly(true);
    setUndoRedoEnabled(false);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setTabChangesFocus(true);
    document()->setDocumentMargin(kMargin);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    setAccessibleName(QStringLiteral("Message log"));
    setMouseTracking(true);
    viewport()->setMouseTracking(true);
    // The space above the viewport looks like the viewport.
    setBackgroundRole(QPalette::Base);
    setAutoFillBackground(true);
}

void QtLogView::replaceCharactersInRange(const TextRange& range, const QString& text) {
    const TextRange place = clamped(range);
    const bool wasAtEnd = isAtEnd();
    QTextCursor cursor = cursorOver(place);
    cursor.insertText(displayed(text), QTextCharFormat());
    text_.replace(place.location, place.length, text);
    hover(std::nullopt);
    pressed_.reset();
    if (text_.isEmpty() || wasAtEnd) scrollRangeToVisible({text_.size(), 0});
}

void QtLogView::addForegroundColor(const Color& color, const TextRange& range) {
    QTextCharFormat format;
    if (color.source == Color::Source::controlText)
        format.setProperty(kHasControlTextColor, true);
    else
        format.setForeground(QColor::fromRgba(color.argb));
    QTextCursor cursor = cursorOver(clamped(range));
    cursor.mergeCharFormat(format);
}

void QtLogView::setNeedsDisplay() {
    viewport()->update();
}

void QtLogView::scrollRangeToVisible(const TextRange& range) {
    const TextRange place = clamped(range);
    if (place.location + place.length == text_.size()) {
        verticalScrollBar()->setValue(verticalScrollBar()->maximum());
        alignEnd();
        return;
    }
    const int line = document()->findBlock(static_cast<int>(place.location)).firstLineNumber();
    const int first = verticalScrollBar()->value();
    const int page = verticalScrollBar()->pageStep();
    if (line < first || line >= first + page) verticalScrollBar()->setValue(line);
}

std::optional<Color> QtLogView::foregroundColorAt(qsizetype position) const {
    const QTextCharFormat format = cursorOver(clamped({position, 1})).charFormat();
    if (format.hasProperty(kHasControlTextColor)) return Color{};
    if (!format.hasProperty(QTextFormat::ForegroundBrush)) return std::nullopt;
    return Color{Color::Source::literal, format.foreground().color().rgba()};
}

QMimeData* QtLogView::createMimeDataFromSelection() const {
    const QTextCursor selection = textCursor();
    auto* exactText = new QMimeData;
    exactText->setText(text_.mid(selection.selectionStart(), selection.selectionEnd() - selection.selectionStart()));
    return exactText;
}

void QtLogView::resizeEvent(QResizeEvent* event) {
    const bool wasAtEnd = isAtEnd();
    QPlainTextEdit::resizeEvent(event);
    if (wasAtEnd) scrollRangeToVisible({text_.size(), 0});
}

int QtLogView::spaceBelowEnd() const {
    const QRectF last = blockBoundingGeometry(document()->lastBlock()).translated(contentOffset());
    return viewport()->height() - static_cast<int>(std::ceil(last.bottom()));
}

void QtLogView::showEndBelow(int space) {
    setViewportMargins(0, space, 0, 0);
    verticalScrollBar()->setValue(verticalScrollBar()->maximum());
}

void QtLogView::alignEnd() {
    // Each change of the space resizes the viewport, which calls this function.
    if (isAligning_ || !isVisible()) return;
    const QScopedValueRollback<bool> aligning(isAligning_, true);
    showEndBelow(0);
    if (verticalScrollBar()->maximum() == 0) return;
    const int space = spaceBelowEnd() - kLeastSpaceBelowEnd;
    if (space <= 0) return;
    showEndBelow(space);
    // A first line that just does not fit any more.
    if (spaceBelowEnd() > 2 * kLeastSpaceBelowEnd) showEndBelow(0);
}

std::optional<LogPath> QtLogView::pathAt(const QPoint& place) const {
    const QTextCursor cursor = cursorForPosition(place);
    const QRect caret = cursorRect(cursor);
    // The nearest caret may be far away.
    if (place.y() < caret.top() || place.y() > caret.bottom()) return std::nullopt;
    if (std::abs(place.x() - caret.center().x()) > 2 * fontMetrics().averageCharWidth()) return std::nullopt;
    // The caret is before the character that is pointed at, or after it.
    const auto path = logPathAt(text_, cursor.position());
    return path ? path : logPathAt(text_, cursor.position() - 1);
}

void QtLogView::hover(const std::optional<LogPath>& path) {
    if (path == hovered_) return;
    hovered_ = path;
    viewport()->setCursor(path ? Qt::PointingHandCursor : Qt::IBeamCursor);
    QList<QTextEdit::ExtraSelection> marks;
    if (path) {
        QTextEdit::ExtraSelection mark;
        mark.cursor = cursorOver(path->range);
        mark.format.setFontUnderline(true);
        marks.append(mark);
    }
    setExtraSelections(marks);
}

void QtLogView::mousePressEvent(QMouseEvent* event) {
    pressPlace_ = event->position().toPoint();
    const bool isPlain = event->button() == Qt::LeftButton && event->modifiers() == Qt::NoModifier;
    pressed_ = isPlain ? pathAt(pressPlace_) : std::nullopt;
    QPlainTextEdit::mousePressEvent(event);
}

void QtLogView::mouseMoveEvent(QMouseEvent* event) {
    const QPoint place = event->position().toPoint();
    if (event->buttons() == Qt::NoButton) hover(pathAt(place));
    // A drag from a text takes its file along. From anywhere else it selects.
    const bool isDrag = (place - pressPlace_).manhattanLength() >= QApplication::startDragDistance();
    if (pressed_ && pressed_->isText) {
        if (isDrag) drag(*std::exchange(pressed_, std::nullopt));
        return;
    }
    if (isDrag) pressed_.reset();
    QPlainTextEdit::mouseMoveEvent(event);
}

void QtLogView::mouseReleaseEvent(QMouseEvent* event) {
    QPlainTextEdit::mouseReleaseEvent(event);
    if (const auto path = std::exchange(pressed_, std::nullopt)) open(*path);
}

void QtLogView::leaveEvent(QEvent* event) {
    hover(std::nullopt);
    QPlainTextEdit::leaveEvent(event);
}

void QtLogView::drag(const LogPath& path) {
    auto* files = new QMimeData;
    files->setUrls({fileUrlFromPath(path.path)});
    files->setText(path.path);
    auto* file = new QDrag(this);
    file->setMimeData(files);
    file->exec(Qt::CopyAction | Qt::LinkAction, Qt::CopyAction);
}

void QtLogView::open(const LogPath& path) const {
    if (pathActions_.open) pathActions_.open(path.path);
}

void QtLogView::contextMenuEvent(QContextMenuEvent* event) {
    const bool isOfKeyboard = event->reason() == QContextMenuEvent::Keyboard;
    const auto path = isOfKeyboard ? logPathAt(text_, textCursor().position()) : pathAt(event->pos());
    const std::unique_ptr<QMenu> menu(createStandardContextMenu(event->pos()));
    if (path) {
        QAction* first = menu->actions().value(0);
        const auto add = [&](const QString& title, std::function<void()> action) {
            auto* item = new QAction(title, menu.get());
            connect(item, &QAction::triggered, this, std::move(action));
            menu->insertAction(first, item);
        };
        add(QStringLiteral("&Open"), [this, path] { open(*path); });
        add(QStringLiteral("&Show in File Manager"), [this, path] {
            if (pathActions_.show) pathActions_.show(path->path);
        });
        add(QStringLiteral("Copy &Path"), [path] { QGuiApplication::clipboard()->setText(path->path); });
        menu->insertSeparator(first);
    }
    const QPoint caret = viewport()->mapToGlobal(cursorRect().bottomLeft());
    menu->exec(isOfKeyboard ? caret : event->globalPos());
}

void QtLogView::keyPressEvent(QKeyEvent* event) {
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const auto path =
        isReturn && event->modifiers() == Qt::NoModifier ? logPathAt(text_, textCursor().position()) : std::nullopt;
    if (path)
        open(*path);
    else
        QPlainTextEdit::keyPressEvent(event);
}

bool QtLogView::isAtEnd() const {
    return verticalScrollBar()->value() == verticalScrollBar()->maximum();
}

TextRange QtLogView::clamped(const TextRange& range) const {
    const qsizetype location = std::clamp<qsizetype>(range.location, 0, text_.size());
    return {location, std::clamp<qsizetype>(range.length, 0, text_.size() - location)};
}

QTextCursor QtLogView::cursorOver(const TextRange& range) const {
    QTextCursor cursor(document());
    cursor.setPosition(static_cast<int>(range.location));
    cursor.setPosition(static_cast<int>(range.location + range.length), QTextCursor::KeepAnchor);
    return cursor;
}

} // namespace quillow
