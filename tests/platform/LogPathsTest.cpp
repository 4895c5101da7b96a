// Which parts of the log's entries are paths, and what the log view does with them.
#include "platform/qt/windows/LogPaths.h"

#include "platform/qt/windows/QtLogView.h"
#include "tests/platform/Waiting.h"

#include <QScrollBar>
#include <QTest>
#include <QTextBlock>
#include <QTextLayout>

#include <gtest/gtest.h>

namespace quillow {
namespace {

const QString kDone = QStringLiteral("\nNov 23, 2026, 1:02:03 AM} Converted /in/a b.rtf  >>  /out/a b.txt");
const QString kFailed = QStringLiteral("\nNov 23, 2026, 1:02:03 AM} Not able to extract any text from /in/c.pdf");

QString pathUnder(const QString& log, const QString& part) {
    const auto path = logPathAt(log, log.indexOf(part));
    return path ? path->path : QString();
}

TEST(LogPaths, theDocumentAndTheTextArePaths) {
    const QString log = kDone + kFailed;
    EXPECT_EQ(pathUnder(log, QStringLiteral("b.rtf")), QStringLiteral("/in/a b.rtf"));
    EXPECT_EQ(pathUnder(log, QStringLiteral("b.txt")), QStringLiteral("/out/a b.txt"));
    EXPECT_EQ(pathUnder(log, QStringLiteral("c.pdf")), QStringLiteral("/in/c.pdf"));
    EXPECT_TRUE(logPathAt(log, log.indexOf(QStringLiteral("/out")))->isText);
    EXPECT_FALSE(logPathAt(log, log.indexOf(QStringLiteral("/in")))->isText);
}

TEST(LogPaths, nothingElseIs) {
    const QString log = kDone + kFailed + QStringLiteral("\nConverted /x  >>  /y");
    for (const char16_t* part : {u"Nov", u"Converted", u">>", u"Not able", u"/x"})
        EXPECT_EQ(pathUnder(log, QString::fromUtf16(part)), QString()) << QString::fromUtf16(part).toStdString();
    EXPECT_EQ(logPathAt(log, 0), std::nullopt);
    EXPECT_EQ(logPathAt(log, log.size()), std::nullopt);
    EXPECT_EQ(logPathAt(log, -1), std::nullopt);
    EXPECT_EQ(logPathAt(QStringLiteral("\n} Converted /a"), 14), std::nullopt) << "no text";
}

class LogOnScreen : public testing::Test {
protected:
    LogOnScreen() {
        view.setPathActions({[this](const QString& path) { opened.append(path); },
                             [this](const QString& path) { shown.append(path); }});
        view.resize(400, 160);
        view.show();
        runEvents();
    }
    void append(const QString& text) { view.replaceCharactersInRange({view.length(), 0}, text); }
    [[nodiscard]] QPoint placeOf(const QString& part) const {
        QTextCursor cursor(view.document());
        cursor.setPosition(static_cast<int>(view.string().indexOf(part)));
        return view.cursorRect(cursor).center() + QPoint(3, 0);
    }
    [[nodiscard]] QStringList linesOf(int block) {
        const QTextBlock entry = view.document()->findBlockByNumber(block);
        view.document()->documentLayout()->blockBoundingRect(entry);
        QStringList lines;
        for (int i = 0; i < entry.layout()->lineCount(); ++i) {
            const QTextLine line = entry.layout()->lineAt(i);
            lines.append(entry.text().mid(line.textStart(), line.textLength()).trimmed());
        }
        return lines;
    }

    QtLogView view;
    QStringList opened;
    QStringList shown;
};

TEST_F(LogOnScreen, aPressOnAPathOpensIt) {
    append(kDone);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, placeOf(QStringLiteral("/out")));
    EXPECT_EQ(opened, QStringList{QStringLiteral("/out/a b.txt")});
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, placeOf(QStringLiteral("Converted")));
    EXPECT_EQ(opened.size(), 1);
}

TEST_F(LogOnScreen, thePathUnderTheTextCursorIsOpenedByTheReturnKey) {
    append(kDone);
    QTextCursor cursor = view.textCursor();
    cursor.setPosition(static_cast<int>(view.string().indexOf(QStringLiteral("a b.rtf"))));
    view.setTextCursor(cursor);
    QTest::keyClick(&view, Qt::Key_Return);
    EXPECT_EQ(opened, QStringList{QStringLiteral("/in/a b.rtf")});
}

TEST_F(LogOnScreen, aHoveredPathIsMarkedWithoutAnAttribute) {
    append(kDone);
    QTest::mouseMove(view.viewport(), placeOf(QStringLiteral("/out")));
    runEvents();
    EXPECT_EQ(view.viewport()->cursor().shape(), Qt::PointingHandCursor);
    EXPECT_EQ(view.foregroundColorAt(view.length() - 1), std::nullopt);
    EXPECT_FALSE(view.document()->lastBlock().charFormat().fontUnderline());
    QTest::mouseMove(view.viewport(), placeOf(QStringLiteral("Converted")));
    runEvents();
    EXPECT_EQ(view.viewport()->cursor().shape(), Qt::IBeamCursor);
}

TEST_F(LogOnScreen, entriesBreakAtBlanksBeforeSlashes) {
    append(QStringLiteral("\nNov 23, 2026, 1:02:03 AM} Converted /home/user/Documents/Letters/one.rtf  >>  "
                          "/home/user/Texts/one.txt"));
    const QStringList lines = linesOf(1);
    ASSERT_GT(lines.size(), 1);
    for (const QString& line : lines)
        EXPECT_TRUE(line.startsWith(u'/') || line.startsWith(u"Nov") || line.startsWith(u">>") ||
                    line.startsWith(u"Converted"))
            << line.toStdString();
}

TEST_F(LogOnScreen, aPathLongerThanALineBreaksInside) {
    append(QStringLiteral("\n} ") + QStringLiteral("/folder").repeated(40));
    EXPECT_GT(linesOf(1).size(), 3);
}

TEST_F(LogOnScreen, furtherLinesAreIndentedAndEntriesApart) {
    append(kDone + kDone);
    const QTextBlock first = view.document()->findBlockByNumber(1);
    const QTextBlock second = first.next();
    ASSERT_GT(linesOf(1).size(), 1);
    EXPECT_GT(first.layout()->lineAt(1).x(), first.layout()->lineAt(0).x());
    ASSERT_FALSE(linesOf(2).isEmpty());
    EXPECT_GE(second.layout()->lineAt(0).y(), 3);
    EXPECT_LE(second.layout()->lineAt(0).y(), 4);
}

TEST_F(LogOnScreen, theLastLineIsAtTheBottomEdge) {
    for (int i = 0; i < 40; ++i)
        append(kDone);
    for (const int height : {150, 157, 163, 171}) {
        view.resize(400, height);
        runEvents();
        QTextCursor cursor(view.document());
        cursor.movePosition(QTextCursor::End);
        const int below = view.viewport()->height() - view.cursorRect(cursor).bottom();
        EXPECT_GE(below, 0) << height;
        EXPECT_LE(below, 12) << height << ": only the margin";
    }
}

} // namespace
} // namespace quillow
