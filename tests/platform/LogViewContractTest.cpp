// The contract of the log view port, for all implementations.
#include "platform/qt/windows/QtLogView.h"
#include "tests/fakes/FakeLogView.h"
#include "tests/platform/Waiting.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QScrollBar>
#include <QTextBlock>

#include <gtest/gtest.h>

namespace quillow {
namespace {

struct FakeLogWorld {
    FakeLogView view;
    std::optional<Color> colorAt(qsizetype position) { return view.colors().at(static_cast<std::size_t>(position)); }
};

struct QtLogWorld {
    QtLogView view;
    std::optional<Color> colorAt(qsizetype position) { return view.foregroundColorAt(position); }
};

template <class World>
class LogViewContract : public testing::Test {
protected:
    LogView& view() { return world_.view; }
    void append(const QString& text) { view().replaceCharactersInRange({view().length(), 0}, text); }
    World world_;
};
using Worlds = testing::Types<FakeLogWorld, QtLogWorld>;
TYPED_TEST_SUITE(LogViewContract, Worlds);

TYPED_TEST(LogViewContract, beginsEmpty) {
    EXPECT_EQ(this->view().length(), 0);
    EXPECT_EQ(this->view().string(), QString());
}

TYPED_TEST(LogViewContract, keepsTheExactText) {
    const QString text = QStringLiteral("\nA\u00A0B\u2028C\u2029D\r\nE\rF\tG\U0001F600\uFDD0\uFFFC") + QChar::Null +
                         QChar(0xD800) + QStringLiteral("\u202FPM");
    this->append(text);
    EXPECT_EQ(this->view().string(), text);
    EXPECT_EQ(this->view().length(), text.size());
}

TYPED_TEST(LogViewContract, replacesARange) {
    this->append(QStringLiteral("one\r\ntwo\nthree"));
    this->view().replaceCharactersInRange({5, 3}, QStringLiteral("2"));
    EXPECT_EQ(this->view().string(), QStringLiteral("one\r\n2\nthree"));
    this->view().replaceCharactersInRange({0, this->view().length()}, QString());
    EXPECT_EQ(this->view().length(), 0);
}

TYPED_TEST(LogViewContract, coloursOnlyTheRangeItIsGiven) {
    this->append(QStringLiteral("a\r\nbcd"));
    this->view().addForegroundColor({Color::Source::controlText}, {4, 2});
    EXPECT_FALSE(this->world_.colorAt(3).has_value());
    EXPECT_EQ(this->world_.colorAt(4), Color{Color::Source::controlText});
    EXPECT_EQ(this->world_.colorAt(5), Color{Color::Source::controlText});
}

TYPED_TEST(LogViewContract, keepsALiteralColour) {
    this->append(QStringLiteral("abc"));
    const Color red{Color::Source::literal, 0xFFFF0000};
    this->view().addForegroundColor(red, {0, 3});
    EXPECT_EQ(this->world_.colorAt(1), red);
}

TYPED_TEST(LogViewContract, newCharactersCarryNoColour) {
    this->append(QStringLiteral("abc"));
    this->view().addForegroundColor({Color::Source::controlText}, {0, 3});
    this->append(QStringLiteral("def"));
    EXPECT_FALSE(this->world_.colorAt(3).has_value());
    this->view().replaceCharactersInRange({0, this->view().length()}, QStringLiteral("back"));
    EXPECT_FALSE(this->world_.colorAt(0).has_value());
}

TEST(QtLogView, everyUnitHasItsPlaceInTheWidget) {
    QtLogView view;
    const QString text = QStringLiteral("\r\n\r\u2028\u2029\n\uFDD1\U0001F600x");
    view.replaceCharactersInRange({0, 0}, text);
    EXPECT_EQ(view.document()->characterCount() - 1, text.size());
    view.addForegroundColor({Color::Source::literal, 0xFF0000FF}, {text.size() - 1, 1});
    EXPECT_TRUE(view.foregroundColorAt(text.size() - 1).has_value());
    EXPECT_FALSE(view.foregroundColorAt(text.size() - 2).has_value());
}

TEST(QtLogView, linesLongerThanAnyEntryAreBrokenForTheEyeOnly) {
    QtLogView view;
    const QString text = QString(30000, u'x') + u' ' + QString(100000, u'y') + u'\n' + QString(16000, u'z');
    view.replaceCharactersInRange({0, 0}, text);
    EXPECT_EQ(view.string(), text);
    EXPECT_EQ(view.document()->characterCount() - 1, text.size());
    QList<int> lengths;
    for (QTextBlock block = view.document()->begin(); block.isValid(); block = block.next())
        lengths.append(block.length());
    EXPECT_EQ(lengths, QList<int>({30001, 32768, 32768, 32768, 1697, 16001}));
}

TEST(QtLogView, copiesTheExactText) {
    QtLogView view;
    const QString text = QStringLiteral("9:41:12\u202FAM} A\u00A0B\u2028C");
    view.replaceCharactersInRange({0, 0}, text);
    view.selectAll();
    view.copy();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), text);
}

TEST(QtLogView, cannotBeEditedByTheUserAndHasNoUndoOfItsOwn) {
    QtLogView view;
    view.replaceCharactersInRange({0, 0}, QStringLiteral("x"));
    EXPECT_TRUE(view.isReadOnly());
    EXPECT_FALSE(view.document()->isUndoAvailable());
}

TEST(QtLogView, showsTheEndWhenAskedTo) {
    QtLogView view;
    view.resize(300, 100);
    view.show();
    for (int i = 0; i < 200; ++i)
        view.replaceCharactersInRange({view.length(), 0}, QStringLiteral("\nline"));
    view.verticalScrollBar()->setValue(0);
    view.scrollRangeToVisible({view.length(), 0});
    EXPECT_EQ(view.verticalScrollBar()->value(), view.verticalScrollBar()->maximum());
    EXPECT_GT(view.verticalScrollBar()->value(), 0);
    view.scrollRangeToVisible({0, 1});
    EXPECT_EQ(view.verticalScrollBar()->value(), 0);
}

TEST(QtLogView, keepsTheEndInSightWhenTheWindowShrinks) {
    QtLogView view;
    view.resize(300, 600);
    view.show();
    view.replaceCharactersInRange({0, 0}, QString(20, u'\n'));
    view.resize(300, 100);
    runEvents();
    EXPECT_GT(view.verticalScrollBar()->maximum(), 0);
    EXPECT_EQ(view.verticalScrollBar()->value(), view.verticalScrollBar()->maximum());
}

TEST(QtLogView, keepsTheUsersSelectionWhenLinesCome) {
    QtLogView view;
    view.replaceCharactersInRange({0, 0}, QStringLiteral("first"));
    view.selectAll();
    view.replaceCharactersInRange({5, 0}, QStringLiteral("\nsecond"));
    view.scrollRangeToVisible({view.length(), 0});
    EXPECT_EQ(view.textCursor().selectedText().left(5), QStringLiteral("first"));
}

TEST(QtLogView, followsTheThemeWithControlText) {
    QtLogView view;
    view.replaceCharactersInRange({0, 0}, QStringLiteral("x"));
    view.addForegroundColor({Color::Source::controlText}, {0, 1});
    QTextCursor cursor(view.document());
    cursor.setPosition(1);
    EXPECT_FALSE(cursor.charFormat().hasProperty(QTextFormat::ForegroundBrush));
}

} // namespace
} // namespace quillow
