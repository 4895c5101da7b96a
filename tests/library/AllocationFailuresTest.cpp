// Each allocation of the library fails once: the program goes on, and nothing leaks. This file replaces the allocation
// functions of the whole test program, which are those that the library calls. They are not inlined, or the compiler
// takes malloc and delete for a mistake.
#include "tests/library/Samples.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<long> untilFailure{-1}; ///< allocations that succeed before all others fail; negative: none fails
std::atomic<long> live{0};

} // namespace

[[gnu::noinline]] void* operator new(std::size_t size) {
    if (untilFailure.load() >= 0 && untilFailure.fetch_sub(1) <= 0) {
        untilFailure = 0;
        throw std::bad_alloc();
    }
    void* const place = std::malloc(size);
    if (place == nullptr) throw std::bad_alloc();
    ++live;
    return place;
}

[[gnu::noinline]] void operator delete(void* place) noexcept {
    if (place == nullptr) return;
    --live;
    std::free(place);
}

[[gnu::noinline]] void operator delete(void* place, std::size_t) noexcept {
    operator delete(place);
}

namespace quillow::test {
namespace {

struct Trial {
    std::int32_t reason;
    long leaked;
};

Trial tryWith(const Sample& sample, long allocations) {
    quillow_options options = QUILLOW_OPTIONS_INIT;
    options.kind = sample.kind;
    options.pages = "1-";
    options.password = "longer than what a string holds without memory";
    const long before = live;
    untilFailure = allocations;
    const quillow_result* const result = quillow_extract(sample.bytes.data(), sample.bytes.size(), &options);
    untilFailure = -1;
    const std::int32_t reason = result->reason;
    EXPECT_NE(result->detail, nullptr);
    EXPECT_EQ(result->text == nullptr, reason == QUILLOW_OUT_OF_MEMORY);
    quillow_free(result);
    return {reason, live - before};
}

TEST(AllocationFailuresTest, everyAllocationMayFail) {
    for (const Sample& sample : allSamples()) {
        ASSERT_EQ(tryWith(sample, -1).reason, QUILLOW_OK) << sample.name; // statics are made here
        // Every one of the first, then fewer and fewer of many thousand.
        long failures = 0;
        for (long allocations = 0;; allocations += 1 + allocations / 64) {
            const Trial trial = tryWith(sample, allocations);
            ASSERT_EQ(trial.leaked, 0) << sample.name << ", allocation " << allocations;
            if (trial.reason == QUILLOW_OK) break;
            ASSERT_EQ(trial.reason, QUILLOW_OUT_OF_MEMORY) << sample.name << ", allocation " << allocations;
            ++failures;
        }
        EXPECT_GT(failures, 5) << sample.name;
    }
}

} // namespace
} // namespace quillow::test
