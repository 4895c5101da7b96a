#include "cli/Batch.h"

#include <gtest/gtest.h>

#include <atomic>
#include <barrier>
#include <string>
#include <thread>
#include <vector>

namespace quillow::cli {
namespace {

Result textOf(std::size_t index, std::size_t length = 1) {
    Result result;
    result.reason = Reason::ok;
    result.text = std::string(length, static_cast<char>('a' + index % 26));
    result.textBytes = index;
    return result;
}

std::size_t mostWaiting(std::size_t jobs) {
    return std::max(jobs, std::min(jobs * kWaitingPerJob, kMaximumWaiting));
}

/// A job that does an item when it ends it.
class WorkJob final : public Job {
public:
    explicit WorkJob(std::function<Result(std::size_t)> work)
        : work_(std::move(work)) {}
    [[nodiscard]] bool mayBeginEarly(std::size_t) const override { return false; }
    void begin(std::size_t) override {}
    [[nodiscard]] Result end(std::size_t index) override { return work_(index); }

private:
    std::function<Result(std::size_t)> work_;
};

void runBatch(std::size_t count, unsigned jobs, const std::function<Result(std::size_t)>& work,
              const std::function<Next(std::size_t, Result, Following)>& deliver) {
    cli::runBatch(
        count, jobs, [&work] { return std::make_unique<WorkJob>(work); }, deliver);
}

class EveryJobs : public testing::TestWithParam<unsigned> {};

TEST_P(EveryJobs, deliversEachResultOnceAndInOrder) {
    std::vector<std::uint64_t> delivered;

    runBatch(
        1000, GetParam(), [](std::size_t i) { return textOf(i); },
        [&](std::size_t i, const Result& result, Following) {
            EXPECT_EQ(result.textBytes, i);
            delivered.push_back(i);
            return Next::goOn;
        });

    ASSERT_EQ(delivered.size(), 1000U);
    for (std::size_t i = 0; i < delivered.size(); ++i)
        EXPECT_EQ(delivered[i], i);
}

TEST_P(EveryJobs, stopsWhenToldTo) {
    std::atomic<std::size_t> begun = 0;
    std::size_t delivered = 0;

    runBatch(
        100'000, GetParam(),
        [&](std::size_t i) {
            ++begun;
            return textOf(i);
        },
        [&](std::size_t, const Result&, Following) { return ++delivered == 3 ? Next::stop : Next::goOn; });

    EXPECT_EQ(delivered, 3U);
    EXPECT_LE(begun, 3 + mostWaiting(GetParam()));
}

TEST_P(EveryJobs, nothingToDoReturns) {
    runBatch(
        0, GetParam(), [](std::size_t i) { return textOf(i); },
        [](std::size_t, const Result&, Following) {
            ADD_FAILURE();
            return Next::goOn;
        });
}

TEST_P(EveryJobs, neverRunsFarAheadOfTheDelivery) {
    std::atomic<std::size_t> delivered = 0;
    std::atomic<std::size_t> furthest = 0;

    runBatch(
        500, GetParam(),
        [&](std::size_t i) {
            const std::size_t ahead = i - delivered;
            if (ahead > furthest) furthest = ahead;
            return textOf(i);
        },
        [&](std::size_t i, const Result&, Following) {
            delivered = i; // one less than the number delivered so far, never more
            return Next::goOn;
        });

    EXPECT_LE(furthest, mostWaiting(GetParam()) + 1);
}

INSTANTIATE_TEST_SUITE_P(Batch, EveryJobs, testing::Values(1U, 2U, 8U));

TEST_P(EveryJobs, theLastResultIsFollowedByNone) {
    Following last = Following::arrived;
    runBatch(
        100, GetParam(), [](std::size_t i) { return textOf(i); },
        [&](std::size_t, const Result&, Following following) {
            last = following;
            return Next::goOn;
        });
    EXPECT_EQ(last, Following::none);
}

TEST(Batch, readingGoesOnWhileAResultIsDelivered) {
    constexpr std::size_t kBehindFirst = 10;
    std::atomic<std::size_t> done = 0;
    runBatch(
        kBehindFirst + 1, 1,
        [&](std::size_t i) {
            ++done;
            return textOf(i);
        },
        [&](std::size_t i, const Result&, Following) {
            while (i == 0 && done <= kBehindFirst) // waits for ever if nothing goes on
                std::this_thread::yield();
            return Next::goOn;
        });
}

TEST(Batch, aResultThatWaitsIsAnnounced) {
    std::atomic<std::size_t> done = 0;
    std::vector<Following> followings;
    runBatch(
        3, 1,
        [&](std::size_t i) {
            ++done;
            return textOf(i);
        },
        [&](std::size_t i, const Result&, Following following) {
            if (i > 0) followings.push_back(following);
            // The last one counts as done a moment before it arrives.
            while (i == 0 && done < 3)
                std::this_thread::yield();
            std::this_thread::sleep_for(std::chrono::milliseconds(i == 0 ? 100 : 0));
            return Next::goOn;
        });
    EXPECT_EQ(followings, (std::vector<Following>{Following::arrived, Following::none}));
}

TEST(Batch, waitingTextsAreBoundedInBytes) {
    constexpr std::size_t kText = kWaitingBytes / 2;
    constexpr unsigned kJobs = 4;
    std::atomic<std::size_t> held = 0;
    std::atomic<std::size_t> most = 0;

    runBatch(
        24, kJobs,
        [&](std::size_t i) {
            const std::size_t now = held += kText;
            if (now > most) most = now;
            return textOf(i, kText);
        },
        [&](std::size_t, const Result&, Following) {
            held -= kText;
            return Next::goOn;
        });

    EXPECT_LE(most, kWaitingBytes + (kJobs + 1) * kText);
}

/// Notes the order in which items begin and end. All may begin early.
class EarlyJob final : public Job {
public:
    explicit EarlyJob(std::vector<std::string>& order)
        : order_(order) {}
    [[nodiscard]] bool mayBeginEarly(std::size_t index) const override { return index != 2; }
    void begin(std::size_t index) override { order_.push_back("begin " + std::to_string(index)); }
    [[nodiscard]] Result end(std::size_t index) override {
        order_.push_back("end " + std::to_string(index));
        return textOf(index);
    }

private:
    std::vector<std::string>& order_;
};

TEST(Batch, anItemThatMayBeginEarlyBeginsBeforeTheLastOneEnds) {
    std::vector<std::string> order;
    std::vector<std::uint64_t> delivered;
    cli::runBatch(
        5, 1, [&] { return std::make_unique<EarlyJob>(order); },
        [&](std::size_t, const Result& result, Following) {
            delivered.push_back(result.textBytes);
            return Next::goOn;
        });
    EXPECT_EQ(order, (std::vector<std::string>{"begin 0", "begin 1", "end 0", "end 1", "begin 2", "begin 3", "end 2",
                                               "begin 4", "end 3", "end 4"}));
    EXPECT_EQ(delivered, (std::vector<std::uint64_t>{0, 1, 2, 3, 4}));
}

/// Items that end only when all other threads have one too.
class TogetherJob final : public Job {
public:
    explicit TogetherJob(std::barrier<>& all)
        : all_(all) {}
    [[nodiscard]] bool mayBeginEarly(std::size_t) const override { return true; }
    void begin(std::size_t) override {}
    [[nodiscard]] Result end(std::size_t index) override {
        all_.arrive_and_wait();
        return textOf(index);
    }

private:
    std::barrier<>& all_;
};

TEST(Batch, theLastItemsAreLeftToThreadsThatHaveNone) {
    constexpr unsigned kJobs = 4;
    std::barrier<> all(kJobs);
    std::size_t delivered = 0;
    // A thread that began two of the items would wait for ever.
    cli::runBatch(
        kJobs, kJobs, [&] { return std::make_unique<TogetherJob>(all); },
        [&](std::size_t, const Result&, Following) {
            ++delivered;
            return Next::goOn;
        });
    EXPECT_EQ(delivered, kJobs);
}

} // namespace
} // namespace quillow::cli
