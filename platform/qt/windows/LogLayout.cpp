#include "platform/qt/windows/LogLayout.h"

#include <QFontMetricsF>
#include <QScopedValueRollback>
#include <QTextBlock>
#include <QTextLayout>
#include <QWidget>

#include <algorithm>

namespace quillow {
namespace {

constexpr int kIndentInCharacters = 3;
/// A line holds at least this, however narrow the view is.
constexpr qreal kLeastWidth = 20;
/// Keeps a word that ends exactly at the line's end from being moved by a rounding error.
constexpr qreal kRounding = 0.1;

bool hasRightToLeft(QStringView text) {
    return std::any_of(text.begin(), text.end(),
                       [](QChar unit) { return unit.direction() == QChar::DirR || unit.direction() == QChar::DirAL; });
}

/// Ends the line after its last blank, if it ends inside a word. The position of a blank in a line of both directions
/// says nothing about the width before it, so such a line keeps its end.
void breakAtBlank(QTextLine& line, QStringView text) {
    const qsizetype start = line.textStart();
    const qsizetype end = start + line.textLength();
    if (end >= text.size() || text[end - 1].isSpace()) return;
    const qsizetype blank = text.first(end).lastIndexOf(QLatin1Char(' '));
    if (blank <= start || text.sliced(start, blank - start).trimmed().isEmpty()) return;
    if (hasRightToLeft(text.sliced(start, end - start))) return;
    line.setLineWidth(line.cursorToX(static_cast<int>(blank)) + kRounding);
}

} // namespace

LogLayout::LogLayout(QTextDocument* document, const QWidget& viewport)
    : QPlainTextDocumentLayout(document)
    , viewport_(viewport) {}

QRectF LogLayout::blockBoundingRect(const QTextBlock& block) const {
    if (block.isValid() && block.layout()->lineCount() == 0) layOut(block);
    QRectF place = QPlainTextDocumentLayout::blockBoundingRect(block);
    // The view keeps the margin free below the last block anyway. The base class adds it once more.
    if (block.isValid() && !block.next().isValid()) place.adjust(0, 0, 0, -document()->documentMargin());
    return place;
}

void LogLayout::layOut(QTextBlock block) const {
    QTextLayout& layout = *block.layout();
    const QString text = block.text();
    const qreal margin = document()->documentMargin();
    const qreal indent = kIndentInCharacters * QFontMetricsF(document()->defaultFont()).averageCharWidth();
    const qreal width = std::max(viewport_.width() - 2 * margin, kLeastWidth + indent);
    layout.setTextOption(document()->defaultTextOption());
    layout.beginLayout();
    qreal height = block.blockNumber() > 0 ? kBetweenEntries : 0;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        const qreal indentOfLine = line.lineNumber() > 0 ? indent : 0;
        line.setLeadingIncluded(true);
        line.setLineWidth(width - indentOfLine);
        breakAtBlank(line, text);
        line.setPosition({margin + (text.isRightToLeft() ? 0 : indentOfLine), height});
        height += line.height();
    }
    layout.endLayout();
    if (block.lineCount() == layout.lineCount()) return;
    block.setLineCount(layout.lineCount());
    tellSize();
}

void LogLayout::documentChanged(int from, int charsRemoved, int charsAdded) {
    QPlainTextDocumentLayout::documentChanged(from, charsRemoved, charsAdded);
    // The base class may have laid out a changed block in its own way.
    const QTextBlock last = document()->findBlock(from + std::max(charsAdded - 1, 0));
    for (QTextBlock block = document()->findBlock(from); block.isValid(); block = block.next()) {
        block.clearLayout();
        if (block == last) break;
    }
    tellSize();
    Q_EMIT update();
}

/// The view then asks for the sizes of blocks, which may change the size again.
void LogLayout::tellSize() const {
    if (isTelling_) return;
    const QScopedValueRollback<bool> telling(isTelling_, true);
    Q_EMIT const_cast<LogLayout*>(this)->documentSizeChanged(documentSize());
}

} // namespace quillow
