// The message log as assistive tools read it.
#include "platform/qt/windows/QtLogView.h"
#include "tests/platform/Waiting.h"

#include <QAccessible>

#include <gtest/gtest.h>

namespace quillow {
namespace {

const QString kLong =
    QStringLiteral("\nstamp} Converted /home/a/papers/a long name with blanks.rtf  >>  /home/a/texts/b.txt");
const QString kShort = QStringLiteral("\nstamp} Not able to extract any text from /c");

class LogAccessTest : public testing::Test {
protected:
    void SetUp() override {
        log_.resize(300, 200);
        log_.show();
        log_.replaceCharactersInRange({0, 0}, kLong + kShort);
        runEvents();
    }
    QAccessibleInterface* access() { return QAccessible::queryAccessibleInterface(&log_); }
    QAccessibleTextInterface* text() { return access()->textInterface(); }
    QString line(int offset) {
        int start = 0;
        int end = 0;
        const QString found = text()->textAtOffset(offset, QAccessible::LineBoundary, &start, &end);
        EXPECT_EQ(found, log_.string().mid(start, end - start));
        return found;
    }

    QtLogView log_;
};

TEST_F(LogAccessTest, isAReadOnlyText) {
    EXPECT_EQ(access()->role(), QAccessible::EditableText);
    EXPECT_TRUE(access()->state().readOnly);
    EXPECT_EQ(access()->text(QAccessible::Name), QStringLiteral("Message log"));
    EXPECT_EQ(text()->text(0, text()->characterCount()), kLong + kShort);
}

TEST_F(LogAccessTest, eachCharacterIsAtItsPlace) {
    const QString all = log_.string();
    QRect before;
    for (int offset = 1; offset < all.size(); ++offset) {
        if (all[offset].isSpace()) continue;
        const QRect place = text()->characterRect(offset);
        EXPECT_EQ(text()->offsetAtPoint(place.center()), offset) << all.mid(offset, 1).toStdString();
        EXPECT_NE(place, before);
        before = place;
    }
    EXPECT_GT(before.top(), text()->characterRect(1).bottom());
    EXPECT_EQ(text()->offsetAtPoint(log_.mapToGlobal(QPoint(log_.width() / 2, log_.height() - 5))), -1);
}

TEST_F(LogAccessTest, linesAreThoseOfTheView) {
    QStringList lines;
    int end = 0;
    for (int start = 0; end < text()->characterCount();)
        lines.append(text()->textAtOffset(end, QAccessible::LineBoundary, &start, &end));
    EXPECT_EQ(lines.join(QString()), kLong + kShort);
    EXPECT_GT(lines.size(), 3);
    int start = 0;
    EXPECT_EQ(text()->textBeforeOffset(1, QAccessible::LineBoundary, &start, &end), QStringLiteral("\n"));
    EXPECT_EQ(text()->textAfterOffset(0, QAccessible::LineBoundary, &start, &end), lines[1]);
    EXPECT_EQ(text()->textBeforeOffset(0, QAccessible::LineBoundary, &start, &end), QString());
    EXPECT_EQ(text()->textAfterOffset(text()->characterCount(), QAccessible::LineBoundary, &start, &end), QString());
    EXPECT_EQ(line(text()->characterCount()), lines.last());
    text()->setCursorPosition(2);
    EXPECT_EQ(line(-2), lines[1]) << "at the cursor";
}

TEST_F(LogAccessTest, selectsForTheUser) {
    text()->setSelection(0, 1, 6);
    EXPECT_EQ(log_.textCursor().selectedText(), QStringLiteral("stamp"));
    int start = 0;
    int end = 0;
    text()->selection(0, &start, &end);
    EXPECT_EQ(text()->selectionCount(), 1);
    EXPECT_EQ(QPoint(start, end), QPoint(1, 6));
    text()->removeSelection(0);
    EXPECT_EQ(text()->selectionCount(), 0);
}

TEST_F(LogAccessTest, offsetsOutOfTheTextAreHarmless) {
    EXPECT_EQ(text()->characterRect(-1), QRect());
    EXPECT_EQ(text()->characterRect(text()->characterCount() + 1), QRect());
    EXPECT_EQ(text()->text(-5, 100000), log_.string());
    text()->setSelection(0, -5, 100000);
    EXPECT_EQ(log_.textCursor().selectedText().size(), log_.length());
    log_.replaceCharactersInRange({0, log_.length()}, QString());
    EXPECT_EQ(line(0), QString());
    EXPECT_EQ(line(-1), QString());
}

} // namespace
} // namespace quillow
