// End to end: many documents in one run of the real program.
#include "cli/Program.h"
#include "tests/cli/Documents.h"
#include "tests/cli/RunConvert.h"
#include "tests/cli/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace quillow::cli {
namespace {

using test::kRtf;
using test::linesOf;
using test::Outcome;
using test::pdf;
using test::run;
using test::TemporaryFolder;

TEST(LargeRun, jobsChangeNeitherTextsNorMessages) {
    const TemporaryFolder folder;
    std::vector<std::string> arguments = {"-v", "-j1"};
    for (int i = 0; i < 60; ++i) {
        const std::string n = std::to_string(i);
        arguments.push_back(
            folder.put(n + ".rtf", "{\\rtf1 " + std::string(static_cast<std::size_t>(i) * 997, 'r') + n + "}"));
        arguments.push_back(folder.put(n + ".html", "<p>" + n + "</p>"));
        arguments.push_back(folder.put(n + ".pdf", pdf(i % 3 == 0   ? "plain"
                                                       : i % 3 == 1 ? "missingPage"
                                                                    : "truncated")));
        arguments.push_back(folder.at("missing" + n + ".rtf"));
    }

    const Outcome one = run(arguments);
    arguments[1] = "-j8";
    const Outcome eight = run(arguments);

    EXPECT_EQ(one.exitCode, kSomeFailed);
    EXPECT_EQ(eight.exitCode, one.exitCode);
    EXPECT_EQ(eight.output, one.output);
    EXPECT_EQ(eight.errors, one.errors);
    EXPECT_EQ(linesOf(one.errors), 240U);
}

TEST(LargeRun, tenThousandDocumentsInOneRun) {
    const TemporaryFolder folder;
    std::vector<std::string> arguments = {"-q"};
    for (int i = 0; i < 10'000; ++i)
        arguments.push_back(i % 100 == 0
                                ? folder.at("none.rtf")
                                : folder.put("d" + std::to_string(i) + ".rtf", "{\\rtf1 " + std::to_string(i) + "}"));

    const Outcome done = run(arguments);

    EXPECT_EQ(done.exitCode, kSomeFailed);
    EXPECT_EQ(linesOf(done.output), 9'900U);
    EXPECT_TRUE(done.output.ends_with("\n9999\n"));
}

#if !defined(__SANITIZE_ADDRESS__)
// Names, plan and results of finished documents are in memory; nothing else grows with their number.
TEST(LargeRun, aDocumentMoreCostsLittleMemory) {
    constexpr long kMostBytes = 1500;
    const TemporaryFolder folder;
    const std::string original = folder.put("original", kRtf);
    std::filesystem::create_directory(folder.at("in"));
    const auto peakWith = [&](int from, int to) {
        for (int i = from; i < to; ++i)
            std::filesystem::create_hard_link(original, folder.at("in/document-" + std::to_string(i) + ".rtf"));
        // Every document is planned, few are converted.
        const Outcome done = run({"-r", "-o", folder.at("out"), "--shard", "1/1000", folder.at("in")});
        EXPECT_EQ(done.exitCode, kAllConverted);
        return done.peakMemory;
    };

    const long few = peakWith(0, 2'000);
    const long many = peakWith(2'000, 22'000);

    EXPECT_LT((many - few) * 1024 / 20'000, kMostBytes);
}
#endif

} // namespace
} // namespace quillow::cli
