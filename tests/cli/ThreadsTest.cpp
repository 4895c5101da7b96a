// How a run shares the cores: the text does not depend on it, only the time.
#include "cli/Threads.h"

#include <gtest/gtest.h>

#include <thread>

namespace quillow::cli {
namespace {

using Threads = std::vector<unsigned>;

Threads shared(const Arguments& arguments, std::size_t documents) {
    Plan plan;
    plan.documents.resize(documents);
    shareThreads(arguments, plan);
    Threads threads;
    for (const PlannedDocument& document : plan.documents)
        threads.push_back(document.threads);
    return threads;
}

TEST(Threads, everyDocumentHasAsManyAsTheUserWants) {
    Arguments arguments;
    arguments.threads = 3;
    EXPECT_EQ(shared(arguments, 2), (Threads{3, 3}));
    EXPECT_EQ(maximumThreads(arguments), 3U);
}

TEST(Threads, theLastDocumentsShareTheCoresOfTheJobs) {
    if (std::thread::hardware_concurrency() < 2) GTEST_SKIP() << "one core is not shared";
    Arguments arguments;
    arguments.jobs = 2;
    EXPECT_EQ(shared(arguments, 1), (Threads{2}));
    EXPECT_EQ(shared(arguments, 4), (Threads{1, 1, 1, 2}));
}

TEST(Threads, oneJobIsOneThread) {
    Arguments arguments;
    arguments.jobs = 1;
    EXPECT_EQ(shared(arguments, 2), (Threads{1, 1}));
}

TEST(Threads, thereAreNoMoreThanCoresUnlessTheUserWantsThem) {
    Arguments arguments;
    arguments.jobs = kMaximumJobs;
    EXPECT_LE(maximumThreads(arguments), std::max(std::thread::hardware_concurrency(), 1U));
}

} // namespace
} // namespace quillow::cli
