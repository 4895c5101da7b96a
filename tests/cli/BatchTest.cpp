#include "cli/Batch.h"

#include <gtest/gtest.h>

#include <atomic>
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

class EveryJobs : public testing::TestWithParam<unsigned> {};

TEST_P(EveryJobs, deliversEachResultOnceAndInOrder) {
    std::vector<std::uint64_t> delivered;

    runBatch(
        1000, GetParam(), [](std::size_t i) { return textOf(i); },
        [&](std::size_t i, const Result& result) {
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
        [&](std::size_t, const Result&) { return ++delivered == 3 ? Next::stop : Next::goOn; });

    EXPECT_EQ(delivered, 3U);
    EXPECT_LE(begun, 3 + GetParam() * kWaitingPerJob);
}

TEST_P(EveryJobs, nothingToDoReturns) {
    runBatch(
        0, GetParam(), [](std::size_t i) { return textOf(i); },
        [](std::size_t, const Result&) {
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
        [&](std::size_t i, const Result&) {
            delivered = i; // one less than the number delivered so far, never more
            return Next::goOn;
        });

    EXPECT_LE(furthest, GetParam() * kWaitingPerJob + 1);
}

INSTANTIATE_TEST_SUITE_P(Batch, EveryJobs, testing::Values(1U, 2U, 8U));

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
        [&](std::size_t, const Result&) {
            held -= kText;
            return Next::goOn;
        });

    EXPECT_LE(most, kWaitingBytes + (kJobs + 1) * kText);
}

} // namespace
} // namespace quillow::cli
