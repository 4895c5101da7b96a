// Finding a text in the message log: what opens the bar, which place becomes the selection, and what stays as it was.
#include "platform/qt/windows/FindBar.h"

#include "platform/qt/controls/DiscloseButton.h"
#include "platform/qt/windows/MainWindow.h"
#include "platform/qt/windows/QtLogView.h"
#include "tests/fakes/FakeAlerts.h"
#include "tests/platform/FileWorlds.h"
#include "tests/platform/Waiting.h"

#include <QAccessible>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QTest>
#include <QTextBlock>
#include <QToolButton>

#include <gtest/gtest.h>

namespace quillow {
namespace {

class FindBarTest : public testing::Test {
protected:
    FindBarTest() {
        MainWindowCommands commands;
        commands.switchWindows = [this] {
            ++switches;
            window.resize(MainWindow::kMinimumWidth, MainWindow::kBigHeight);
            window.setBig(true);
        };
        window.setCommands(commands);
        window.show();
        window.activateWindow();
        runEvents();
    }
    void write(const QString& text) { log.replaceCharactersInRange({0, log.length()}, text); }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QWidget* target = QApplication::focusWidget();
        QTest::keyClick(target ? target : &window, key, modifiers);
        runEvents();
    }
    void openAndType(const QString& text) {
        press(Qt::Key_F, Qt::ControlModifier);
        QTest::keyClicks(field(), text);
    }
    [[nodiscard]] QWidget* bar() const { return window.findChild<QWidget*>(QStringLiteral("findBar")); }
    [[nodiscard]] QLineEdit* field() const { return bar()->findChild<QLineEdit*>(); }
    [[nodiscard]] bool saysNotFound() const {
        const auto* note = bar()->findChild<QLabel*>(QStringLiteral("findNote"));
        return note->isVisible() && note->text() == QStringLiteral("Not found");
    }
    [[nodiscard]] TextRange selection() const {
        const QTextCursor cursor = log.textCursor();
        return {cursor.selectionStart(), cursor.selectionEnd() - cursor.selectionStart()};
    }

    DiskFileWorld world;
    FakeAlerts alerts;
    MainWindow window{alerts, world.workspace};
    QtLogView& log = window.logView();
    int switches = 0;
};

TEST_F(FindBarTest, isMadeAtItsFirstUse) {
    EXPECT_EQ(bar(), nullptr);
    press(Qt::Key_F, Qt::ControlModifier);
    ASSERT_NE(bar(), nullptr);
    EXPECT_TRUE(bar()->isVisible());
    EXPECT_TRUE(field()->hasFocus());
}

TEST_F(FindBarTest, opensAFoldedLogAndLeavesAnOpenOneOpen) {
    press(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(switches, 1);
    EXPECT_TRUE(log.isVisible());
    press(Qt::Key_F, Qt::ControlModifier);
    press(Qt::Key_F3);
    EXPECT_EQ(switches, 1);
}

TEST_F(FindBarTest, theEscapeKeyClosesItAndReturnsTheFocusToTheLog) {
    write(QStringLiteral("one"));
    openAndType(QStringLiteral("one"));
    press(Qt::Key_Escape);
    EXPECT_FALSE(bar()->isVisible());
    EXPECT_TRUE(log.hasFocus());
    EXPECT_EQ(selection(), (TextRange{0, 3}));
}

TEST_F(FindBarTest, findsWhileTypingWithoutRegardToCase) {
    write(QStringLiteral("the alpha, the Alphabet"));
    press(Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(field(), QStringLiteral("ALPHA"));
    EXPECT_EQ(selection(), (TextRange{4, 5}));
    QTest::keyClicks(field(), QStringLiteral("b"));
    EXPECT_EQ(selection(), (TextRange{15, 6}));
}

TEST_F(FindBarTest, goesOnAndBackAroundTheEnds) {
    write(QStringLiteral("ab ab ab"));
    openAndType(QStringLiteral("ab"));
    QList<qsizetype> places{selection().location};
    const auto go = [&](Qt::Key key, Qt::KeyboardModifiers modifiers) {
        press(key, modifiers);
        places.append(selection().location);
    };
    const Qt::KeyboardModifiers controlShift = Qt::ControlModifier | Qt::ShiftModifier;
    go(Qt::Key_F3, Qt::NoModifier);
    go(Qt::Key_G, Qt::ControlModifier);
    go(Qt::Key_Return, Qt::NoModifier);
    go(Qt::Key_F3, Qt::ShiftModifier);
    go(Qt::Key_G, controlShift);
    go(Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(places, (QList<qsizetype>{0, 3, 6, 0, 6, 3, 0}));
    for (auto* button : bar()->findChildren<QToolButton*>())
        if (button->text() == QStringLiteral("Next")) button->click();
    EXPECT_EQ(selection().location, 3);
}

TEST_F(FindBarTest, goesOnWhileItIsClosed) {
    write(QStringLiteral("ab ab"));
    openAndType(QStringLiteral("ab"));
    press(Qt::Key_Escape);
    press(Qt::Key_F3);
    EXPECT_EQ(selection().location, 3);
    EXPECT_FALSE(bar()->isVisible());
    write(QStringLiteral("nothing"));
    press(Qt::Key_F3);
    EXPECT_TRUE(saysNotFound());
}

TEST_F(FindBarTest, saysWhenTheLogDoesNotHaveTheText) {
    write(QStringLiteral("one"));
    openAndType(QStringLiteral("ox"));
    EXPECT_TRUE(saysNotFound());
    EXPECT_EQ(field()->accessibleDescription(), QStringLiteral("Not found"));
    EXPECT_EQ(selection().length, 0);
    press(Qt::Key_Backspace);
    EXPECT_FALSE(saysNotFound());
    EXPECT_EQ(selection(), (TextRange{0, 1}));
    QTest::keyClicks(field(), QStringLiteral("x"));
    field()->clear();
    EXPECT_FALSE(saysNotFound());
}

TEST_F(FindBarTest, findsNothingInAnEmptyLog) {
    openAndType(QStringLiteral("a"));
    press(Qt::Key_F3);
    press(Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_TRUE(saysNotFound());
}

TEST_F(FindBarTest, setsNoAttributeOfALine) {
    write(QStringLiteral("red one"));
    log.addForegroundColor({Color::Source::literal, 0xffff0000}, {0, 3});
    openAndType(QStringLiteral("red o"));
    ASSERT_EQ(selection(), (TextRange{0, 5}));
    const QTextBlock line = log.document()->firstBlock();
    for (auto it = line.begin(); !it.atEnd(); ++it)
        for (const int property : it.fragment().charFormat().properties().keys())
            EXPECT_EQ(property, QTextFormat::ForegroundBrush);
    EXPECT_NE(log.foregroundColorAt(1), std::nullopt);
    EXPECT_EQ(log.foregroundColorAt(4), std::nullopt);
}

TEST_F(FindBarTest, scrollsToThePlace) {
    write(QStringLiteral("needle") + QStringLiteral("\nhay").repeated(200));
    log.scrollRangeToVisible({log.length(), 0});
    openAndType(QStringLiteral("needle"));
    EXPECT_EQ(log.verticalScrollBar()->value(), 0);
}

TEST_F(FindBarTest, theReturnKeyInTheLogOpensThePathThatWasFound) {
    QStringList opened;
    log.setPathActions({[&](const QString& path) { opened.append(path); }, {}});
    write(QStringLiteral("\nNov 23, 2026, 1:02:03 AM} Converted /in/a.rtf  >>  /out/a.txt"));
    openAndType(QStringLiteral("a.txt"));
    press(Qt::Key_Escape);
    press(Qt::Key_Return);
    EXPECT_EQ(opened, QStringList{QStringLiteral("/out/a.txt")});
}

TEST_F(FindBarTest, isBetweenTheLogAndItsCommandsForTheTabKey) {
    press(Qt::Key_F, Qt::ControlModifier);
    log.setFocus();
    for (const char* name : {"Find in the message log", "Previous", "Next", "Close"}) {
        press(Qt::Key_Tab);
        auto* control = QAccessible::queryAccessibleInterface(QApplication::focusWidget());
        ASSERT_NE(control, nullptr);
        EXPECT_EQ(control->text(QAccessible::Name), QLatin1String(name));
    }
    press(Qt::Key_Tab);
    EXPECT_FALSE(bar()->isAncestorOf(QApplication::focusWidget()));
}

} // namespace
} // namespace quillow
