// The contract of the window port for frames and size limits, for all implementations.
#include "platform/qt/controls/LazyWindow.h"
#include "tests/fakes/FakeWindow.h"
#include "tests/platform/Waiting.h"

#include <gtest/gtest.h>

namespace quillow {
namespace {

struct FakeWindowWorld {
    FakeWindow window;
    void settle() const {}
};

struct QtWindowWorld {
    QWidget widget;
    QtWindow window{widget};
    /// Waits until the widget has reached the frame that window.frame() reports.
    void settle() const {
        EXPECT_TRUE(waitUntil([this] { return QRect(widget.geometry()).size() == toldSize(); }));
        runEvents();
    }
    [[nodiscard]] QSize toldSize() const {
        return {static_cast<int>(window.frame().width), static_cast<int>(window.frame().height)};
    }
};

template <class World>
class WindowContract : public testing::Test {
protected:
    void SetUp() override {
        window().makeKeyAndOrderFront();
        window().setFrame(kStart, Animate::no);
        world_.settle();
    }
    Window& window() { return world_.window; }
    void limitHeight(double height) {
        window().setMaxSize({600, height});
        window().setMinSize({200, height});
    }
    Rect settledFrame() {
        world_.settle();
        return window().frame();
    }

    static constexpr Rect kStart{40, 300, 400, 100};
    World world_;
};
/// A window that the test's first call makes.
struct LazyWindowWorld {
    QWidget widget;
    std::optional<QtWindow> made;
    LazyWindow window{[this]() -> QtWindow& { return made.emplace(widget); }};
    void settle() const {
        EXPECT_TRUE(waitUntil(
            [this] { return widget.width() == window.frame().width && widget.height() == window.frame().height; }));
        runEvents();
    }
};

using Worlds = testing::Types<FakeWindowWorld, QtWindowWorld, LazyWindowWorld>;
TYPED_TEST_SUITE(WindowContract, Worlds);

TYPED_TEST(WindowContract, aFrameIsTakenAsItIs) {
    const Rect frame{60, 120, 300, 220};
    this->window().setFrame(frame, Animate::no);
    EXPECT_EQ(this->window().frame(), frame);
    this->window().setFrame({60, 100, 300, 240}, Animate::yes);
    EXPECT_EQ(this->settledFrame(), (Rect{60, 100, 300, 240}));
}

TYPED_TEST(WindowContract, limitsThatHoldTheFrameChangeNothing) {
    this->window().setMinSize({200, 100});
    this->window().setMaxSize({600, 100});
    EXPECT_EQ(this->settledFrame(), this->kStart);
}

TYPED_TEST(WindowContract, limitsResizeAFrameOutsideOfThemWithItsTopLeftCornerKept) {
    this->limitHeight(180);
    EXPECT_EQ(this->settledFrame(), (Rect{40, 220, 400, 180}));
    this->limitHeight(80);
    EXPECT_EQ(this->settledFrame(), (Rect{40, 320, 400, 80}));
    this->window().setMaxSize({300, 80});
    EXPECT_EQ(this->settledFrame(), (Rect{40, 320, 300, 80}));
    this->window().setMinSize({350, 80});
    EXPECT_EQ(this->settledFrame().width, 350);
}

TYPED_TEST(WindowContract, theLeastSizeHoldsAgainstALargest) {
    this->window().setMinSize({200, 150});
    this->window().setMaxSize({600, 120});
    EXPECT_EQ(this->settledFrame().height, 150);
}

TYPED_TEST(WindowContract, aFrameMayLieOutsideOfTheLimits) {
    this->limitHeight(100);
    this->window().setFrame({40, 200, 700, 200}, Animate::no);
    EXPECT_EQ(this->settledFrame(), (Rect{40, 200, 700, 200}));
    this->window().setFrame({40, 150, 700, 250}, Animate::yes);
    EXPECT_EQ(this->settledFrame(), (Rect{40, 150, 700, 250}));
}

TYPED_TEST(WindowContract, limitsOfAFrameOnItsWayHoldAtItsEnd) {
    this->window().setFrame({40, 200, 400, 200}, Animate::yes);
    this->limitHeight(200);
    EXPECT_EQ(this->settledFrame(), (Rect{40, 200, 400, 200}));
    this->window().setFrame({40, 100, 400, 300}, Animate::yes);
    this->limitHeight(180);
    this->world_.settle();
    EXPECT_EQ(this->settledFrame(), (Rect{40, 220, 400, 180}));
}

TYPED_TEST(WindowContract, aWayThatIsTurnedRoundEndsWhereTheLastOneLeads) {
    this->window().setFrame({40, 200, 400, 200}, Animate::yes);
    this->limitHeight(200);
    this->window().setFrame(this->kStart, Animate::yes);
    this->limitHeight(100);
    EXPECT_EQ(this->settledFrame(), this->kStart);
}

TEST(LazyWindow, isMadeOnceWhenItIsNeeded) {
    QWidget widget;
    QtWindow whole(widget);
    int made = 0;
    LazyWindow window([&]() -> QtWindow& {
        ++made;
        return whole;
    });
    window.setExcludedFromWindowsMenu(true);
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(made, 0);
    window.makeKeyAndOrderFront();
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(WidgetWindow::of(&window), &widget);
    EXPECT_TRUE(widget.property(kExcludedFromWindowsMenu).toBool()) << "as was said before";
    EXPECT_EQ(made, 1);
}

} // namespace
} // namespace quillow
