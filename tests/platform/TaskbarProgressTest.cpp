// The signals for the taskbar, received on a private bus.
#include "platform/qt/life/TaskbarProgress.h"

#include "tests/fakes/FakeClock.h"
#include "tests/platform/FakeTaskbar.h"
#include "tests/platform/PrivateBus.h"

#include <gtest/gtest.h>

namespace quillow {
namespace {

class TaskbarProgressTest : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(bus_.isConnected());
        taskbar_.listenOn(bus_.service());
    }
    void wait(int milliseconds) { clock_.set(clock_.now().addMSecs(milliseconds)); }
    /// The signals so far.
    QStringList updates() {
        taskbar_.waitForEarlierSignals(bus_.client());
        return taskbar_.updates;
    }
    static QString update(const char* values) {
        return QStringLiteral("application://org.quillow.Quillow.desktop ") + QLatin1String(values);
    }

    PrivateBus bus_;
    FakeClock clock_;
    FakeTaskbar taskbar_;
    bool isBusUsed_ = false;
    TaskbarProgress progress_{clock_, [this] {
                                  isBusUsed_ = true;
                                  return bus_.client();
                              }};
    const int interval_ = TaskbarProgress::kIntervalMilliseconds;
};

TEST_F(TaskbarProgressTest, showsTheSharesOfABatchAndGoesAtItsEnd) {
    progress_.show(0, 4);
    for (int done = 1; done < 4; ++done) {
        wait(interval_);
        progress_.show(done, 4);
    }
    progress_.hide();
    progress_.hide();
    EXPECT_EQ(updates(),
              (QStringList{update("0.25 visible"), update("0.5 visible"), update("0.75 visible"), update("1 hidden")}));
}

TEST_F(TaskbarProgressTest, aShortBatchDoesNotUseTheBus) {
    for (int batch = 0; batch < 3; ++batch) {
        progress_.show(0, 2);
        wait(interval_ - 1);
        progress_.show(1, 2);
        progress_.hide();
    }
    EXPECT_FALSE(isBusUsed_);
}

TEST_F(TaskbarProgressTest, manyDocumentsMakeFewSignals) {
    for (int done = 0; done <= 100; ++done) {
        progress_.show(done, 101);
        wait(interval_ / 10);
    }
    EXPECT_EQ(updates().size(), 10);
}

TEST_F(TaskbarProgressTest, aClockThatIsSetBackDoesNotStopIt) {
    progress_.show(0, 2);
    wait(-3600000);
    progress_.show(1, 2);
    EXPECT_EQ(updates(), QStringList{update("0.5 visible")});
}

TEST(TaskbarProgress, withoutABusNothingIsShown) {
    FakeClock clock;
    TaskbarProgress progress(clock, [] { return QDBusConnection(QStringLiteral("none")); });
    progress.show(0, 2);
    clock.set(clock.now().addSecs(1));
    progress.show(1, 2);
    progress.hide();
}

} // namespace
} // namespace quillow
