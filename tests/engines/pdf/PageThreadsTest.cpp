#include "engines/pdf/PageThreads.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <new>
#include <string>
#include <thread>

namespace quillow::pdf {
namespace {

/// Pages with their numbers as texts. Some take longer than those after them.
class NumberedPages : public PageSource {
public:
    explicit NumberedPages(std::atomic<std::size_t>& reads)
        : reads_(reads) {}

    PageOutcome read(std::size_t page) override {
        ++reads_;
        if (page % 7 == 0) std::this_thread::sleep_for(std::chrono::milliseconds(1));
        PageOutcome outcome;
        outcome.text = std::to_string(page) + "\n";
        return outcome;
    }
    [[nodiscard]] double usedShare() const override { return 0; }

private:
    std::atomic<std::size_t>& reads_;
};

/// The result of reading, and the texts of the pages that were handed on.
struct Read {
    bool isValid = false;
    std::string text;
    std::size_t reads = 0;
};

template <class Source>
Read readWith(unsigned threads, std::size_t pages, std::size_t most = 1'000'000, double share = 0) {
    Read read;
    std::atomic<std::size_t> reads = 0;
    std::size_t added = 0;
    PageThreads reading(
        pages, [&] { return std::make_unique<Source>(reads); },
        [&](const PageOutcome& page) {
            if (added++ == most) return false;
            read.text += page.text;
            return true;
        });
    read.isValid = reading.read(threads, share);
    read.reads = reads;
    return read;
}

std::string numbersBelow(std::size_t end) {
    std::string text;
    for (std::size_t i = 0; i < end; ++i)
        text += std::to_string(i) + "\n";
    return text;
}

TEST(PageThreads, pagesComeInTheirOrderWhateverTheNumberOfThreads) {
    for (const unsigned threads : {1U, 2U, 3U, 8U}) {
        const Read read = readWith<NumberedPages>(threads, 300);
        EXPECT_TRUE(read.isValid) << threads;
        EXPECT_EQ(read.text, numbersBelow(300)) << threads;
    }
}

TEST(PageThreads, fewPagesNeedOneThread) {
    EXPECT_EQ(threadsFor(0, 8), 1U);
    EXPECT_EQ(threadsFor(2 * kPagesAThread - 1, 8), 1U);
    EXPECT_EQ(threadsFor(2 * kPagesAThread, 8), 2U);
    EXPECT_EQ(threadsFor(1'000'000, 8), 8U);
    EXPECT_EQ(threadsFor(1'000'000, 0), 1U);
}

TEST(PageThreads, readingEndsWhenNoMoreIsWanted) {
    const Read read = readWith<NumberedPages>(2, 100'000, 10);

    EXPECT_TRUE(read.isValid);
    EXPECT_EQ(read.text, numbersBelow(10));
    EXPECT_LT(read.reads, 100U);
}

/// The first page takes until no thread may begin another one.
class SlowFirstPage final : public NumberedPages {
public:
    using NumberedPages::NumberedPages;
    PageOutcome read(std::size_t page) override {
        if (page == 0) std::this_thread::sleep_for(std::chrono::milliseconds(50));
        return NumberedPages::read(page);
    }
};

TEST(PageThreads, pagesBehindASlowOneWaitInABoundedNumber) {
    std::atomic<std::size_t> reads = 0;
    std::size_t readsBeforeFirst = 0;
    PageThreads reading(
        10'000, [&] { return std::make_unique<SlowFirstPage>(reads); },
        [&](const PageOutcome&) {
            if (readsBeforeFirst == 0) readsBeforeFirst = reads;
            return true;
        });

    EXPECT_TRUE(reading.read(2, 0));

    EXPECT_LE(readsBeforeFirst, 16U);
}

class DamagedPage final : public NumberedPages {
public:
    using NumberedPages::NumberedPages;
    PageOutcome read(std::size_t page) override {
        PageOutcome outcome = NumberedPages::read(page);
        outcome.loss.partsSkipped = page == 20 ? 1 : 0;
        return outcome;
    }
};

TEST(PageThreads, aPageWithALossMakesTheResultVoid) {
    const Read read = readWith<DamagedPage>(2, 10'000);

    EXPECT_FALSE(read.isValid);
    EXPECT_LT(read.reads, 100U);
}

/// Uses a hundredth of the limits for each page.
class CostlyPages final : public NumberedPages {
public:
    using NumberedPages::NumberedPages;
    PageOutcome read(std::size_t page) override {
        ++pages_;
        return NumberedPages::read(page);
    }
    [[nodiscard]] double usedShare() const override { return 0.01 * pages_; }

private:
    int pages_ = 0;
};

TEST(PageThreads, limitsHoldForAllThreadsTogether) {
    EXPECT_TRUE(readWith<CostlyPages>(2, 90).isValid);
    EXPECT_FALSE(readWith<CostlyPages>(2, 110).isValid);
    EXPECT_FALSE(readWith<CostlyPages>(4, 90, 1'000'000, 0.2).isValid); // a part was used before
}

class GreedyPages final : public NumberedPages {
public:
    using NumberedPages::NumberedPages;
    PageOutcome read(std::size_t page) override {
        if (page == 30) throw std::bad_alloc();
        return NumberedPages::read(page);
    }
};

TEST(PageThreads, lackOfMemoryInAThreadReachesTheCaller) {
    EXPECT_THROW((void)readWith<GreedyPages>(3, 10'000), std::bad_alloc);
}

} // namespace
} // namespace quillow::pdf
