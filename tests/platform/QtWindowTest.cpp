// Windows as the logic sees them: frames that grow upwards, a resize with animation, the Window menu.
#include "platform/qt/controls/QtWindow.h"

#include "platform/qt/controls/WorkArea.h"
#include "tests/platform/Waiting.h"

#include <QGuiApplication>
#include <QScreen>
#include <QTimer>

#include <gtest/gtest.h>

namespace quillow {
namespace {

class QtWindowTest : public testing::Test {
protected:
    static double screenHeight() { return QGuiApplication::primaryScreen()->geometry().height(); }
    void show() {
        widget_.setGeometry(40, 60, 300, 200);
        widget_.show();
        runEvents();
    }
    QWidget widget_;
    QtWindow window_{widget_};
};

TEST_F(QtWindowTest, theOriginOfAFrameIsTheBottomLeftCorner) {
    show();
    EXPECT_EQ(window_.frame(), (Rect{40, screenHeight() - 260, 300, 200}));
    window_.setFrame({10, 20, 320, 100}, Animate::no);
    EXPECT_EQ(widget_.geometry(), QRect(10, static_cast<int>(screenHeight()) - 120, 320, 100));
    EXPECT_EQ(window_.frame(), (Rect{10, 20, 320, 100}));
}

TEST_F(QtWindowTest, anAnimatedFrameIsToldAtOnceAndReachedExactly) {
    show();
    const Rect target{40, window_.frame().y + 55, 300, 145};
    window_.setFrame(target, Animate::yes);
    EXPECT_EQ(window_.frame(), target);
    EXPECT_EQ(widget_.height(), 200);
    ASSERT_TRUE(waitUntil([this] { return widget_.height() == 145; }));
    EXPECT_EQ(widget_.geometry(), QRect(40, 60, 300, 145));
    EXPECT_EQ(window_.frame(), target);
}

TEST_F(QtWindowTest, theTopEdgeStandsStillDuringTheAnimation) {
    show();
    window_.setFrame({40, window_.frame().y - 100, 300, 300}, Animate::yes);
    ASSERT_TRUE(waitUntil([this] {
        EXPECT_EQ(widget_.geometry().topLeft(), QPoint(40, 60));
        return widget_.height() == 300;
    }));
}

TEST(WorkArea, aWindowRisesUntilItsLowerEdgeIsInIt) {
    const QRect area(0, 20, 800, 580); // with a panel above
    EXPECT_EQ(riseInto(area, {10, 100, 300, 500}), 0) << "it touches the lower edge";
    EXPECT_EQ(riseInto(area, {10, 130, 300, 500}), 30);
    EXPECT_EQ(riseInto(area, {10, 60, 300, 600}), 40) << "the title bar stays in reach";
    EXPECT_EQ(riseInto(area, {10, 10, 300, 700}), 0) << "it is not moved down";
}

TEST_F(QtWindowTest, aWindowThatGrowsBelowTheWorkAreaMovesUpAndComesBack) {
    const int bottom = widget_.screen()->availableGeometry().bottom();
    widget_.setGeometry(40, bottom - 299, 300, 200);
    widget_.show();
    runEvents();
    const QPoint before = widget_.pos();
    const Rect frame = window_.frame();
    window_.setFrame({40, frame.y - 200, 300, 400}, Animate::yes);
    ASSERT_TRUE(waitUntil([&] { return widget_.height() == 400; }));
    EXPECT_EQ(widget_.pos(), before) << "first the frame that was asked for";
    ASSERT_TRUE(waitUntil([&] { return widget_.frameGeometry().bottom() == bottom; }));
    const Rect raised = window_.frame();
    window_.setFrame({40, raised.y + 200, 300, 200}, Animate::yes);
    ASSERT_TRUE(waitUntil([&] { return widget_.height() == 200; }));
    EXPECT_EQ(widget_.pos(), before);
}

TEST_F(QtWindowTest, aWindowThatTheUserHasMovedStaysThere) {
    const int bottom = widget_.screen()->availableGeometry().bottom();
    widget_.setGeometry(40, bottom - 299, 300, 200);
    widget_.show();
    runEvents();
    window_.setFrame({40, window_.frame().y - 200, 300, 400}, Animate::yes);
    ASSERT_TRUE(waitUntil([&] { return widget_.frameGeometry().bottom() == bottom && widget_.height() == 400; }));
    // The animation may have a last step to come.
    bool isOver = false;
    QTimer::singleShot(2 * QtWindow::kAnimationMilliseconds, &widget_, [&isOver] { isOver = true; });
    ASSERT_TRUE(waitUntil([&] { return isOver; }));
    widget_.move(60, 70);
    runEvents();
    const Rect moved = window_.frame();
    window_.setFrame({moved.x, moved.y + 200, 300, 200}, Animate::yes);
    ASSERT_TRUE(waitUntil([&] { return widget_.height() == 200; }));
    EXPECT_EQ(widget_.pos(), QPoint(60, 70));
}

TEST_F(QtWindowTest, aHiddenWindowTakesItsFrameAtOnce) {
    widget_.resize(300, 200);
    const Rect frame = window_.frame();
    window_.setFrame({frame.x, frame.y + 50, 300, 150}, Animate::yes);
    EXPECT_EQ(widget_.size(), QSize(300, 150));
}

TEST_F(QtWindowTest, sizeLimitsDoNotHoldAFrameBack) {
    show();
    widget_.setMinimumSize(300, 200);
    window_.setFrame({40, 100, 200, 100}, Animate::no);
    EXPECT_EQ(widget_.size(), QSize(200, 100));
}

TEST_F(QtWindowTest, aFixedHeightStaysFixedAtItsNewValue) {
    show();
    widget_.setFixedSize(300, 200);
    window_.setFrame({40, 100, 300, 150}, Animate::no);
    EXPECT_EQ(widget_.size(), QSize(300, 150));
    EXPECT_EQ(widget_.minimumHeight(), 150);
    EXPECT_EQ(widget_.maximumHeight(), 150);
}

// Limits that the window keeps itself, because the window system gets no largest height.
class LimitsKeptByTheWindow : public testing::Test {
protected:
    void SetUp() override {
        widget_.resize(300, 200);
        limitHeight(200);
        widget_.show();
        runEvents();
    }
    void limitHeight(double height) {
        window_.setMaxSize({600, height});
        window_.setMinSize({250, height});
    }
    /// Resizes the window as the user does with its edges.
    QSize resizedTo(int width, int height) {
        widget_.resize(width, height);
        runEvents();
        return widget_.size();
    }
    QWidget widget_;
    QtWindow window_{widget_, LimitKeeper::window};
};

TEST_F(LimitsKeptByTheWindow, theWindowSystemGetsNoMaximumHeight) {
    EXPECT_EQ(widget_.maximumSize(), QSize(600, QWIDGETSIZE_MAX));
    window_.setFrame({40, 100, 300, 350}, Animate::no);
    limitHeight(350);
    EXPECT_EQ(widget_.maximumSize(), QSize(600, QWIDGETSIZE_MAX));
    EXPECT_EQ(widget_.size(), QSize(300, 350));
}

TEST_F(LimitsKeptByTheWindow, onlyTheWidthIsTheUsers) {
    EXPECT_EQ(resizedTo(400, 200), QSize(400, 200));
    EXPECT_EQ(resizedTo(400, 300), QSize(400, 200));
    EXPECT_EQ(resizedTo(500, 300), QSize(500, 200));
    widget_.setMinimumSize(0, 0); // as if the window system did not keep the least size either
    EXPECT_EQ(resizedTo(240, 180), QSize(250, 200));
}

TEST_F(LimitsKeptByTheWindow, changedLimitsResizeIt) {
    limitHeight(150);
    EXPECT_EQ(widget_.size(), QSize(300, 150));
    limitHeight(250);
    EXPECT_EQ(widget_.size(), QSize(300, 250));
}

TEST_F(LimitsKeptByTheWindow, theyDoNotHoldAnAnimationBack) {
    window_.setFrame({window_.frame().x, window_.frame().y - 150, 300, 350}, Animate::yes);
    limitHeight(350);
    ASSERT_TRUE(waitUntil([this] { return widget_.height() > 200; }));
    ASSERT_TRUE(waitUntil([this] { return widget_.height() == 350; }));
}

TEST_F(LimitsKeptByTheWindow, aMaximisedWindowFillsTheScreen) {
    const int screenHeight = widget_.screen()->availableGeometry().height();
    widget_.setWindowState(Qt::WindowMaximized);
    ASSERT_TRUE(waitUntil([&] { return widget_.frameGeometry().height() == screenHeight; }));
    // A height set meanwhile is applied later.
    window_.setFrame({40, 100, 300, 350}, Animate::yes);
    limitHeight(350);
    runEvents();
    EXPECT_EQ(widget_.frameGeometry().height(), screenHeight);
    widget_.setWindowState(Qt::WindowNoState);
    EXPECT_TRUE(waitUntil([this] { return widget_.size() == QSize(300, 350); }));
}

TEST_F(QtWindowTest, centerPutsItIntoTheMiddleOfItsScreen) {
    widget_.resize(300, 200);
    window_.center();
    window_.makeKeyAndOrderFront();
    runEvents();
    const QPoint offset = widget_.geometry().center() - widget_.screen()->availableGeometry().center();
    // The size of the decoration is unknown before the window is first shown.
    const QSize decoration = widget_.frameGeometry().size() - widget_.size();
    EXPECT_LE(offset.manhattanLength(), 2 + decoration.width() + decoration.height());
    EXPECT_TRUE(window_.isVisible());
}

} // namespace
} // namespace quillow
