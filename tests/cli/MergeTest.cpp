// End to end: the results of several runs become one file.
#include "cli/Program.h"
#include "cli/results/ResultLines.h"
#include "tests/cli/Documents.h"
#include "tests/cli/RunConvert.h"
#include "tests/cli/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

namespace quillow::cli {
namespace {

using test::Outcome;
using test::readFile;
using test::run;
using test::TemporaryFolder;

class Merge : public testing::Test {
protected:
    /// A file of results of documents that have no texts in files.
    std::string results(const std::string& name, const std::vector<std::pair<std::string, Reason>>& documents) {
        std::string lines;
        for (const auto& [path, status] : documents) {
            ResultRecord record;
            record.path = path;
            record.status = status;
            record.textHash = status == Reason::ok ? std::optional("hash of " + path) : std::nullopt;
            record.engine = "1.0";
            lines += lineOf(record);
        }
        return folder_.put(name, lines);
    }
    Outcome merge(std::vector<std::string> words) {
        words.insert(words.begin(), "--merge-results=" + merged_);
        return run(words);
    }
    [[nodiscard]] std::vector<std::string> mergedPaths() const {
        std::vector<std::string> paths;
        const auto read = readResults(merged_, 1000, [&](const ResultRecord& record, const ResultLine&) {
            paths.push_back(record.path + " " + std::string(reasonName(record.status)));
        });
        EXPECT_TRUE(std::holds_alternative<LastLine>(read));
        return paths;
    }

    using Names = std::vector<std::string>;
    TemporaryFolder folder_;
    std::string merged_ = folder_.at("merged.jsonl");
};

TEST_F(Merge, shardsOfARealRunBecomeItsResults) {
    Names documents;
    std::string list;
    for (int i = 0; i < 20; ++i) {
        documents.push_back(folder_.put("in/" + std::to_string(i) + ".rtf", "{\\rtf1 " + std::to_string(i) + "}"));
        list += documents.back() + "\n";
    }
    const std::string listed = folder_.put("list", list);
    Names shards;
    for (const char* const part : {"1/3", "2/3", "3/3"}) {
        shards.push_back(folder_.at(std::string("results-") + part[0]));
        ASSERT_EQ(run({"--files-from", listed, "-o", folder_.at("out"), "--shard", part, "--results", shards.back()})
                      .exitCode,
                  kAllConverted);
    }

    const Outcome outcome = merge({"--files-from", listed, shards[0], shards[1], shards[2]});

    EXPECT_EQ(outcome.exitCode, kAllConverted) << outcome.errors;
    EXPECT_EQ(outcome.errors, "quillow-convert: 20 results: 20 ok\n");
    EXPECT_EQ(mergedPaths().size(), 20U);
    EXPECT_EQ(readFile(merged_), readFile(shards[0]) + readFile(shards[1]) + readFile(shards[2]));
}

TEST_F(Merge, aDocumentOfTheListWithoutAResultMakesTheResultsIncomplete) {
    const std::string shard = results("1", {{"a.rtf", Reason::ok}});

    const Outcome outcome = merge({"--files-from", folder_.put("list", "a.rtf\nb.rtf\n"), shard});

    EXPECT_EQ(outcome.exitCode, kIncomplete);
    EXPECT_EQ(outcome.errors, "quillow-convert: b.rtf: has no result\nquillow-convert: 1 results: 1 ok\n");
    EXPECT_EQ(mergedPaths(), Names{"a.rtf ok"});
}

TEST_F(Merge, aDocumentThatIsNotInTheListMakesTheResultsIncomplete) {
    const std::string shard = results("1", {{"a.rtf", Reason::ok}, {"b.rtf", Reason::ok}});

    const Outcome outcome = merge({"--files-from", folder_.put("list", "a.rtf\n"), shard});

    EXPECT_EQ(outcome.exitCode, kIncomplete);
    EXPECT_NE(outcome.errors.find("b.rtf: is not in the list"), std::string::npos);
    EXPECT_EQ(mergedPaths(), Names{"a.rtf ok"});
}

TEST_F(Merge, aFailedDocumentMakesTheWholeFail) {
    EXPECT_EQ(merge({results("1", {{"a.rtf", Reason::ok}}), results("2", {{"b.rtf", Reason::damaged}})}).exitCode,
              kSomeFailed);
    EXPECT_EQ(mergedPaths(), (Names{"a.rtf ok", "b.rtf damaged"}));
}

TEST_F(Merge, partialCountsAsFailedWithStrictOnly) {
    const std::string shard = results("1", {{"a.rtf", Reason::partial}});

    EXPECT_EQ(merge({shard}).exitCode, kAllConverted);
    EXPECT_EQ(merge({"--strict", shard}).exitCode, kSomeFailed);
}

TEST_F(Merge, aDocumentHasOneResultAndAConvertedOneCounts) {
    const Outcome outcome =
        merge({results("1", {{"a.rtf", Reason::timeout}, {"b.rtf", Reason::ok}}),
               results("2", {{"b.rtf", Reason::ok}, {"a.rtf", Reason::ok}, {"b.rtf", Reason::crashed}})});

    EXPECT_EQ(outcome.exitCode, kAllConverted);
    EXPECT_EQ(outcome.errors, "quillow-convert: 2 results: 2 ok; 3 repeated\n");
    EXPECT_EQ(mergedPaths(), (Names{"b.rtf ok", "a.rtf ok"}));
}

TEST_F(Merge, resultsWithDifferentTextsContradictThemselves) {
    ResultRecord other;
    other.path = "a.rtf";
    other.status = Reason::ok;
    other.textHash = "another hash";

    const Outcome outcome = merge({results("1", {{"a.rtf", Reason::ok}}), folder_.put("2", lineOf(other))});

    EXPECT_EQ(outcome.exitCode, kIncomplete);
    EXPECT_NE(outcome.errors.find("a.rtf: has two results with different texts"), std::string::npos);
    EXPECT_EQ(mergedPaths(), Names{"a.rtf ok"});
}

TEST_F(Merge, aTextThatIsGoneOrHasAnotherSizeMakesTheResultsIncomplete) {
    const std::string document = folder_.put("a.rtf", "{\\rtf1 one}");
    const std::string shard = folder_.at("results");
    ASSERT_EQ(run({"-o", folder_.at("out"), "--results", shard, document}).exitCode, kAllConverted);
    EXPECT_EQ(merge({shard}).exitCode, kAllConverted);

    folder_.put("out/a.txt", "shorter");
    EXPECT_EQ(merge({shard}).exitCode, kIncomplete);
    std::filesystem::remove(folder_.at("out/a.txt"));
    const Outcome outcome = merge({shard});
    EXPECT_EQ(outcome.exitCode, kIncomplete);
    EXPECT_NE(outcome.errors.find("out/a.txt: the text is missing or has another size"), std::string::npos);
}

TEST_F(Merge, aCutLastLineIsSaidAndItsDocumentHasNoResult) {
    const std::string whole = results("whole", {{"a.rtf", Reason::ok}, {"b.rtf", Reason::ok}});
    const std::string lines = readFile(whole);
    const std::string cut = folder_.put("cut", std::string_view(lines).substr(0, lines.size() - 20));

    const Outcome outcome = merge({"--files-from", folder_.put("list", "a.rtf\nb.rtf\n"), cut});

    EXPECT_EQ(outcome.exitCode, kIncomplete);
    EXPECT_NE(outcome.errors.find("the last line is incomplete"), std::string::npos);
    EXPECT_NE(outcome.errors.find("b.rtf: has no result"), std::string::npos);
}

TEST_F(Merge, membersThatAreNotOfAResultAreLeftOut) {
    std::string line = readFile(results("1", {{"a.rtf", Reason::ok}}));
    line.replace(line.find("{\"schema\":1,"), 12, "{\"schema\":1,\"text\":\"" + std::string(200'000, 'x') + "\",");

    EXPECT_EQ(merge({folder_.put("2", line)}).exitCode, kAllConverted);
    EXPECT_EQ(readFile(merged_), readFile(folder_.at("1")));
}

TEST_F(Merge, aFileWithoutResultsIsNotTouchedAndNotRead) {
    const std::string shard = results("1", {{"a.rtf", Reason::ok}});
    folder_.put("merged.jsonl", "a letter");
    EXPECT_EQ(merge({shard}).exitCode, kDestinationUnwritable);
    EXPECT_EQ(readFile(merged_), "a letter");

    std::filesystem::remove(merged_);
    EXPECT_EQ(merge({shard, folder_.put("2", "a letter\n")}).exitCode, kIncomplete);
    EXPECT_EQ(merge({folder_.at("nowhere")}).exitCode, kIncomplete);
    EXPECT_EQ(merge({"--files-from", folder_.at("nowhere"), shard}).exitCode, kIncomplete);
    EXPECT_FALSE(std::filesystem::exists(merged_));
}

TEST_F(Merge, itsOwnInputIsNotReplaced) {
    results("merged.jsonl", {{"a.rtf", Reason::ok}});

    EXPECT_EQ(merge({merged_}).exitCode, kUsage);
    EXPECT_EQ(mergedPaths(), Names{"a.rtf ok"});
}

TEST_F(Merge, manyMissingDocumentsAreCounted) {
    std::string list;
    for (int i = 0; i < 50; ++i)
        list += std::to_string(i) + ".rtf\n";

    const Outcome outcome = merge({"--files-from", folder_.put("list", list), results("1", {})});

    EXPECT_EQ(std::count(outcome.errors.begin(), outcome.errors.end(), '\n'), 22);
    EXPECT_NE(outcome.errors.find("30 more documents have no result"), std::string::npos);
}

TEST_F(Merge, optionsOfARunAreAMistake) {
    const std::string shard = results("1", {{"a.rtf", Reason::ok}});
    for (const Names& words : {Names{"-o", "out"}, Names{"-r"}, Names{"--shard=1/2"}, Names{"--worker"}}) {
        Names all = words;
        all.push_back(shard);
        EXPECT_EQ(merge(all).exitCode, kUsage) << words.front();
    }
    EXPECT_EQ(merge({}).exitCode, kUsage);
}

} // namespace
} // namespace quillow::cli
