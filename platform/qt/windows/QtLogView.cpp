#include "platform/qt/windows/QtLogView.h"

#include <QMimeData>
#include <QScrollBar>
#include <QTextBlock>

#include <algorithm>

namespace quillow {
namespace {

/// A character with the palette's text colour has no colour property, so that a theme change applies to existing
/// lines. This property marks such a character.
constexpr int kHasControlTextColor = QTextFormat::UserProperty + 1;

constexpr qreal kMargin = 8;

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
    setReadOnly(true);
    setUndoRedoEnabled(false);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setTabChangesFocus(true);
    document()->setDocumentMargin(kMargin);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    setAccessibleName(QStringLiteral("Message log"));
}

void QtLogView::replaceCharactersInRange(const TextRange& range, const QString& text) {
    const TextRange place = clamped(range);
    const bool wasAtEnd = isAtEnd();
    QTextCursor cursor = cursorOver(place);
    cursor.insertText(displayed(text), QTextCharFormat());
    text_.replace(place.location, place.length, text);
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
