// The contract of the main queue port, for all implementations.
#include "platform/qt/services/QtMainQueue.h"
#include "tests/fakes/FakeMainQueue.h"
#include "tests/platform/Waiting.h"

#include <QEventLoop>
#include <QTimer>

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace quillow {
namespace {

struct FakeQueueWorld {
    FakeMainQueue queue;
    void run() { queue.runAll(); }
};

struct QtQueueWorld {
    QtMainQueue queue;
    void run() { runEvents(); }
};

template <class World>
class MainQueueContract : public testing::Test {
protected:
    World world_;
    std::vector<int> order_;
};
using Worlds = testing::Types<FakeQueueWorld, QtQueueWorld>;
TYPED_TEST_SUITE(MainQueueContract, Worlds);

TYPED_TEST(MainQueueContract, nothingRunsBeforeTheCallbackHasReturned) {
    this->world_.queue.addOperation([this] { this->order_.push_back(1); });
    EXPECT_TRUE(this->order_.empty());
    this->world_.run();
    EXPECT_EQ(this->order_, std::vector<int>{1});
}

TYPED_TEST(MainQueueContract, operationsRunInTheOrderAdded) {
    for (int i = 0; i < 3; ++i)
        this->world_.queue.addOperation([this, i] { this->order_.push_back(i); });
    this->world_.run();
    EXPECT_EQ(this->order_, (std::vector<int>{0, 1, 2}));
}

TYPED_TEST(MainQueueContract, anOperationAddedByOneRunsAfterIt) {
    this->world_.queue.addOperation([this] {
        this->world_.queue.addOperation([this] { this->order_.push_back(3); });
        this->order_.push_back(1);
    });
    this->world_.queue.addOperation([this] { this->order_.push_back(2); });
    this->world_.run();
    EXPECT_EQ(this->order_, (std::vector<int>{1, 2, 3}));
}

TEST(QtMainQueue, aModalLoopCarriesOperationsOn) {
    QtMainQueue queue;
    QEventLoop modal;
    queue.addOperation([&modal] { modal.quit(); });
    // This would wait forever if the loop did not run operations.
    EXPECT_EQ(modal.exec(), 0);
}

TEST(QtMainQueue, noOperationRunsInsideAnother) {
    QtMainQueue queue;
    std::vector<int> order;
    queue.addOperation([&] {
        queue.addOperation([&] { order.push_back(2); });
        runEvents(); // as a modal alert in the operation would
        order.push_back(1);
    });
    runEvents();
    EXPECT_EQ(order, (std::vector<int>{1, 2}));
}

TEST(QtMainQueue, runsAllAtTheEndOfTheProgram) {
    QtMainQueue queue;
    std::vector<int> order;
    QTimer::singleShot(0, [&] {
        queue.addOperation([&] {
            order.push_back(1);
            queue.addOperation([&] { order.push_back(3); });
        });
        queue.addOperation([&] { order.push_back(2); });
        queue.runAllAtEnd();
    });
    EXPECT_EQ(QCoreApplication::exec(), 0);
    EXPECT_EQ(order, (std::vector<int>{1, 2, 3}));
    runEvents();
    EXPECT_EQ(order.size(), 3U);
}

TEST(QtMainQueue, operationsOfOtherThreadsRunOnTheMainThread) {
    QtMainQueue queue;
    std::thread::id where;
    std::thread other([&] { queue.addOperation([&] { where = std::this_thread::get_id(); }); });
    other.join();
    runEvents();
    EXPECT_EQ(where, std::this_thread::get_id());
}

} // namespace
} // namespace quillow
