#include "platform/qt/windows/LogAccess.h"

#include "platform/qt/windows/QtLogView.h"

#include <QAccessibleWidget>
#include <QTextBlock>
#include <QTextLayout>

#include <algorithm>

namespace quillow {
namespace {

// Offsets with a meaning of their own (QAccessibleTextInterface).
constexpr int kAtEnd = -1;
constexpr int kAtCursor = -2;

class LogAccess final : public QAccessibleWidget, public QAccessibleTextInterface {
public:
    explicit LogAccess(QtLogView& log)
        : QAccessibleWidget(&log, QAccessible::EditableText) {}

    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::TextInterface) return static_cast<QAccessibleTextInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }

    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.readOnly = true;
        state.multiLine = true;
        state.selectableText = true;
        return state;
    }

    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Value ? log().string() : QAccessibleWidget::text(kind);
    }

    // The viewport and the scroll bars are no controls of their own.

    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] QAccessibleInterface* child(int) const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface*) const override { return -1; }

    [[nodiscard]] int selectionCount() const override { return log().textCursor().hasSelection() ? 1 : 0; }

    void selection(int index, int* start, int* end) const override {
        const QTextCursor cursor = log().textCursor();
        const bool isThere = index == 0 && cursor.hasSelection();
        *start = isThere ? cursor.selectionStart() : 0;
        *end = isThere ? cursor.selectionEnd() : 0;
    }

    void addSelection(int start, int end) override { setSelection(0, start, end); }

    void removeSelection(int index) override {
        if (index == 0) setCursorPosition(cursorPosition());
    }

    void setSelection(int index, int start, int end) override {
        if (index == 0) log().setTextCursor(cursorOver(start, end));
    }

    [[nodiscard]] int cursorPosition() const override { return log().textCursor().position(); }
    void setCursorPosition(int position) override { log().setTextCursor(cursorOver(position, position)); }

    [[nodiscard]] QString text(int start, int end) const override {
        const int first = inText(start);
        return log().string().mid(first, inText(end) - first);
    }

    [[nodiscard]] int characterCount() const override { return static_cast<int>(log().length()); }

    // A line is one of the view, so an entry may have several.

    QString textBeforeOffset(int offset, QAccessible::TextBoundaryType type, int* start, int* end) const override {
        if (type != QAccessible::LineBoundary)
            return QAccessibleTextInterface::textBeforeOffset(offset, type, start, end);
        const int next = lineAt(offset).start;
        return put(next > 0 ? lineAt(next - 1) : Line(), start, end);
    }

    QString textAtOffset(int offset, QAccessible::TextBoundaryType type, int* start, int* end) const override {
        if (type != QAccessible::LineBoundary) return QAccessibleTextInterface::textAtOffset(offset, type, start, end);
        return put(lineAt(offset), start, end);
    }

    QString textAfterOffset(int offset, QAccessible::TextBoundaryType type, int* start, int* end) const override {
        if (type != QAccessible::LineBoundary)
            return QAccessibleTextInterface::textAfterOffset(offset, type, start, end);
        const int next = lineAt(offset).end;
        return put(next < characterCount() ? lineAt(next) : Line{next, next}, start, end);
    }

    [[nodiscard]] QRect characterRect(int offset) const override {
        if (offset < 0 || offset > characterCount()) return {};
        const QRect before = log().cursorRect(cursorOver(offset, offset));
        const int next = inText(offset + 1);
        const QRect after = log().cursorRect(cursorOver(next, next));
        const bool isInLine = next > offset && after.center().y() == before.center().y();
        const int left = isInLine ? std::min(before.left(), after.left()) : before.left();
        const int right = isInLine ? std::max(before.left(), after.left()) : before.right();
        const QRect place(left, before.top(), std::max(1, right - left), before.height());
        return place.translated(log().viewport()->mapToGlobal(QPoint(0, 0)));
    }

    [[nodiscard]] int offsetAtPoint(const QPoint& point) const override {
        const int nearest = log().cursorForPosition(log().viewport()->mapFromGlobal(point)).position();
        // The caret is before the character at the point or after it.
        for (const int offset : {nearest, nearest - 1})
            if (characterRect(offset).contains(point)) return offset;
        return -1;
    }

    void scrollToSubstring(int start, int end) override { log().scrollRangeToVisible({start, end - start}); }

    [[nodiscard]] QString attributes(int, int* start, int* end) const override {
        *start = 0;
        *end = characterCount();
        return {};
    }

private:
    struct Line {
        int start = 0;
        int end = 0; ///< after its line feed, if it has one
    };

    [[nodiscard]] QtLogView& log() const { return *static_cast<QtLogView*>(widget()); }
    [[nodiscard]] int inText(int offset) const { return std::clamp(offset, 0, characterCount()); }

    [[nodiscard]] QTextCursor cursorOver(int start, int end) const {
        QTextCursor cursor(log().document());
        cursor.setPosition(inText(start));
        cursor.setPosition(inText(end), QTextCursor::KeepAnchor);
        return cursor;
    }

    [[nodiscard]] Line lineAt(int offset) const {
        if (offset == kAtEnd) offset = characterCount();
        if (offset == kAtCursor) offset = cursorPosition();
        const QTextBlock block = log().document()->findBlock(inText(offset));
        const int blockEnd = std::min(block.position() + block.length(), characterCount());
        const QTextLine line = block.layout()->lineForTextPosition(inText(offset) - block.position());
        if (!line.isValid()) return {block.position(), blockEnd};
        const int start = block.position() + line.textStart();
        const bool isLast = line.lineNumber() + 1 == block.layout()->lineCount();
        return {start, isLast ? blockEnd : start + line.textLength()};
    }

    QString put(const Line& line, int* start, int* end) const {
        *start = line.start;
        *end = line.end;
        return text(line.start, line.end);
    }
};

QAccessibleInterface* makeAccess(const QString&, QObject* object) {
    auto* log = dynamic_cast<QtLogView*>(object);
    return log ? new LogAccess(*log) : nullptr;
}

} // namespace

void installLogAccess() {
    [[maybe_unused]] static const bool isInstalled = (QAccessible::installFactory(&makeAccess), true);
}

} // namespace quillow
