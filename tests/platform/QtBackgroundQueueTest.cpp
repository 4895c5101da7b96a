// Work on a thread other than the main thread.
#include "platform/qt/services/QtBackgroundQueue.h"

#include "tests/platform/Waiting.h"

#include <QThread>

#include <gtest/gtest.h>

#include <atomic>

namespace quillow {
namespace {

TEST(QtBackgroundQueue, runsOnAnotherThread) {
    std::atomic<QThread*> thread = nullptr;
    QtBackgroundQueue queue;
    queue.addOperation([&] { thread = QThread::currentThread(); });
    ASSERT_TRUE(waitUntil([&] { return thread != nullptr; }));
    EXPECT_NE(thread, QThread::currentThread());
}

TEST(QtBackgroundQueue, whatHasBegunRunsToItsEnd) {
    std::atomic<bool> hasBegun = false;
    std::atomic<bool> hasEnded = false;
    {
        QtBackgroundQueue queue;
        queue.addOperation([&] {
            hasBegun = true;
            QThread::msleep(50);
            hasEnded = true;
        });
        ASSERT_TRUE(waitUntil([&] { return hasBegun.load(); }));
    }
    EXPECT_TRUE(hasEnded);
}

TEST(QtBackgroundQueue, holdsOperationsUntilItIsReleased) {
    std::atomic<int> ran = 0;
    QtBackgroundQueue queue;
    queue.hold();
    queue.addOperation([&] { ++ran; });
    QThread::msleep(20);
    EXPECT_EQ(ran, 0);
    queue.release();
    queue.addOperation([&] { ++ran; });
    EXPECT_TRUE(waitUntil([&] { return ran == 2; }));
}

} // namespace
} // namespace quillow
