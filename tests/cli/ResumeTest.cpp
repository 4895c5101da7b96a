// End to end: runs of the real program that write results, and runs that go on from them. kill_test.py beside this file
// kills them at random moments.
#include "cli/Program.h"
#include "cli/results/ResultRecord.h"
#include "tests/cli/Documents.h"
#include "tests/cli/RunConvert.h"
#include "tests/cli/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

namespace quillow::cli {
namespace {

using test::kHtml;
using test::kRtf;
using test::kRtfText;
using test::Outcome;
using test::pdf;
using test::readFile;
using test::run;
using test::TemporaryFolder;
using Names = std::vector<std::string>;

std::vector<ResultRecord> recordsIn(const std::string& lines) {
    std::vector<ResultRecord> records;
    std::istringstream in(lines);
    for (std::string line; std::getline(in, line);) {
        const auto record = recordOf(line);
        if (!record) ADD_FAILURE() << line;
        records.push_back(record.value_or(ResultRecord()));
    }
    return records;
}

class Results : public testing::Test {
protected:
    Results() {
        setting_.folder = folder_.at("");
        folder_.put("a.rtf", kRtf);
        folder_.put("b.pdf", "no PDF");
        folder_.put("c.pdf", pdf("missingPage"));
        folder_.put("d.html", kHtml);
    }
    Outcome convert(std::vector<std::string> options, const Names& documents = {"a.rtf", "b.pdf", "c.pdf", "d.html"}) {
        options.insert(options.end(), {"-o", "out"});
        options.insert(options.end(), documents.begin(), documents.end());
        return run(options, setting_);
    }
    [[nodiscard]] std::vector<ResultRecord> records() const { return recordsIn(readFile(folder_.at("r"))); }
    /// Cuts the file after that many lines and bytes, as a kill does.
    void cutResults(std::size_t lines, std::size_t bytes) const {
        const std::string whole = readFile(folder_.at("r"));
        std::size_t end = 0;
        for (std::size_t i = 0; i < lines; ++i)
            end = whole.find('\n', end) + 1;
        folder_.put("r", whole.substr(0, end + bytes));
    }

    TemporaryFolder folder_;
    test::RunSetting setting_;
};

TEST_F(Results, sayWhatBecameOfEachDocumentInOrder) {
    const Outcome done = convert({"--results", "r", "-j8"});

    EXPECT_EQ(done.exitCode, kSomeFailed);
    const auto found = records();
    ASSERT_EQ(found.size(), 4U);
    EXPECT_EQ(found[0].path, "a.rtf");
    EXPECT_EQ(found[0].output, "out/a.txt");
    EXPECT_EQ(found[0].status, Reason::ok);
    EXPECT_EQ(found[0].characters, 12U);
    EXPECT_EQ(found[0].textBytes, 12U);
    // From sha256sum.
    EXPECT_EQ(found[0].documentHash, "c865c3b76d139a907e9de135cd2dd79b4554acf9e5bfa49818e7be626c755c7e");
    EXPECT_EQ(found[0].textHash, "cc37937f1366919e300be784838d0f648684e2934fde66cd97e333ae51239761");
    EXPECT_EQ(found[1].status, Reason::damaged);
    EXPECT_FALSE(found[1].output);
    EXPECT_FALSE(found[1].textHash);
    EXPECT_TRUE(found[1].documentHash);
    EXPECT_EQ(found[2].status, Reason::partial);
    EXPECT_EQ(found[2].pages, 3U);
    EXPECT_EQ(found[2].loss.partsSkipped, 1U);
    EXPECT_EQ(found[2].detail, "1 of 3 pages cannot be read");
    EXPECT_EQ(found[3].path, "d.html");
}

TEST_F(Results, ofATextForStandardOutputNameNoFile) {
    const Outcome done = run({"--results", "r", "a.rtf"}, setting_);

    EXPECT_EQ(done.output, kRtfText);
    ASSERT_EQ(records().size(), 1U);
    EXPECT_FALSE(records()[0].output);
    EXPECT_TRUE(records()[0].textHash);
}

TEST_F(Results, goToStandardOutput) {
    const Outcome done = convert({"--results", "-"});

    EXPECT_EQ(recordsIn(done.output).size(), 4U);
    EXPECT_EQ(folder_.names("out"), (Names{"a.txt", "c.txt", "d.txt"}));
}

TEST_F(Results, areNotReadAnyMoreAndTheRunEndsQuietly) {
    Names many(5000, "a.rtf");
    for (std::size_t i = 0; i < many.size(); ++i)
        many[i] = folder_.put("many/" + std::to_string(i) + ".rtf", "");
    setting_.prefix = {"bash", "-c", "{ \"$@\"; echo $? >&2; } | head -1", "bash"};

    const Outcome done = convert({"-q", "--results", "-"}, many);

    EXPECT_EQ(recordsIn(done.output).size(), 1U);
    EXPECT_EQ(done.errors, "141\n");
}

TEST_F(Results, ofSkippedAndUnwritableDocumentsAreNoted) {
    folder_.put("out/a.txt", "old");

    EXPECT_EQ(convert({"--results", "r", "--if-exists", "skip"}, {"a.rtf"}).exitCode, kAllConverted);
    EXPECT_EQ(records()[0].status, Reason::skipped);
    EXPECT_EQ(convert({"--results", "r", "--if-exists", "error"}, {"a.rtf"}).exitCode, kDestinationUnwritable);
    EXPECT_EQ(records()[0].status, Reason::unwritable);
    EXPECT_FALSE(records()[0].output);
}

TEST_F(Results, neverReplaceADocument) {
    const Outcome input = convert({"--results", "a.rtf"});
    EXPECT_EQ(input.exitCode, kUsage);
    EXPECT_EQ(input.errors, "quillow-convert: the results would replace the document 'a.rtf'; see --help\n");
    const Outcome other = convert({"--results", "b.pdf"}, {"a.rtf"});
    EXPECT_EQ(other.exitCode, kDestinationUnwritable);
    EXPECT_EQ(other.errors, "quillow-convert: b.pdf: unwritable (exists and does not hold results)\n");
    EXPECT_EQ(readFile(folder_.at("a.rtf")), kRtf);
    EXPECT_EQ(readFile(folder_.at("b.pdf")), "no PDF");
}

TEST_F(Results, areNotReplacedByAText) {
    EXPECT_EQ(convert({"--results", "out.txt"}).exitCode, kSomeFailed);
    std::filesystem::create_directory(folder_.at("here"));
    EXPECT_EQ(run({"--results", "here/a.txt", "-o", "here", "a.rtf"}, setting_).exitCode, kAllConverted);
    EXPECT_EQ(recordsIn(readFile(folder_.at("here/a.txt"))).at(0).output, "here/a.rtf.txt");
}

TEST_F(Results, thatCannotBeWrittenEndTheRun) {
    setting_.prefix = {"prlimit", "--fsize=600"};
    const Outcome done = convert({"--results", "r", "-j1"});

    EXPECT_EQ(done.exitCode, kDestinationUnwritable);
    EXPECT_TRUE(done.errors.ends_with("quillow-convert: r: unwritable (File too large)\n")) << done.errors;
    setting_.prefix.clear();
    EXPECT_EQ(convert({"--resume", "r"}).exitCode, kSomeFailed);
    EXPECT_EQ(records().size(), 4U);
}

TEST_F(Results, resumedRunDoesTheRestOnly) {
    convert({"--results", "r"});
    const std::string whole = readFile(folder_.at("r"));
    for (std::size_t lines = 0; lines <= 4; ++lines) {
        for (const std::size_t bytes : {std::size_t{0}, std::size_t{30}}) {
            if (lines == 4 && bytes > 0) continue;
            cutResults(lines, bytes);

            const Outcome done = convert({"--resume", "r", "-v"});

            EXPECT_EQ(done.exitCode, kSomeFailed);
            EXPECT_EQ(records().size(), 4U);
            EXPECT_EQ(test::linesOf(done.errors), 4 - lines);
            EXPECT_EQ(records()[3].path, "d.html");
            folder_.put("r", whole);
        }
    }
}

TEST_F(Results, exitCodeCountsWhatEarlierRunsFound) {
    struct Case {
        Names documents;
        int exitCode;
    };
    folder_.put("word.doc", "hello");
    folder_.put("out/e.txt/x", "");
    folder_.put("e.rtf", kRtf);
    for (const Case& c : {Case{{"a.rtf"}, kAllConverted}, Case{{"a.rtf", "b.pdf"}, kSomeFailed},
                          Case{{"word.doc"}, kNothingAccepted}, Case{{"a.rtf", "e.rtf"}, kDestinationUnwritable}}) {
        EXPECT_EQ(convert({"--results", "r"}, c.documents).exitCode, c.exitCode);
        EXPECT_EQ(convert({"--resume", "r"}, c.documents).exitCode, c.exitCode);
    }
    EXPECT_EQ(convert({"--results", "r"}, {"c.pdf"}).exitCode, kAllConverted);
    EXPECT_EQ(convert({"--resume", "r", "--strict"}, {"c.pdf"}).exitCode, kSomeFailed);
}

TEST_F(Results, failedDocumentsAreRetriedOnRequest) {
    convert({"--results", "r"});
    folder_.put("b.pdf", pdf("plain"));

    EXPECT_EQ(convert({"--resume", "r"}).exitCode, kSomeFailed);
    const Outcome retried = convert({"--resume", "r", "--retry-failed", "-v"});

    EXPECT_EQ(retried.exitCode, kAllConverted);
    EXPECT_EQ(retried.errors, "quillow-convert: b.pdf: ok (47 bytes, 2 pages, b.txt)\n");
    EXPECT_EQ(records().size(), 4U);
}

TEST_F(Results, textThatIsGoneIsMadeAgain) {
    convert({"--results", "r"});
    std::filesystem::remove(folder_.at("out/a.txt"));

    EXPECT_EQ(convert({"--resume", "r"}).exitCode, kSomeFailed);

    EXPECT_EQ(readFile(folder_.at("out/a.txt")), kRtfText);
    EXPECT_EQ(records().size(), 4U);
}

// A killed run has written the text, but not its result.
TEST_F(Results, textOfAKilledRunIsRecognised) {
    for (const char* ifExists : {"error", "rename"}) {
        std::filesystem::remove_all(folder_.at("out"));
        std::filesystem::remove(folder_.at("r"));
        folder_.put("out/a.txt", kRtfText);

        EXPECT_EQ(convert({"--resume", "r", "--if-exists", ifExists}, {"a.rtf"}).exitCode, kAllConverted) << ifExists;

        EXPECT_EQ(folder_.names("out"), Names{"a.txt"});
        EXPECT_EQ(records()[0].output, "out/a.txt");
    }
}

TEST_F(Results, anotherTextInItsPlaceIsTreatedAsInANewRun) {
    folder_.put("out/a.txt", "something else");
    EXPECT_EQ(convert({"--resume", "r", "--if-exists", "error"}, {"a.rtf"}).exitCode, kDestinationUnwritable);
    EXPECT_EQ(convert({"--resume", "r", "--retry-failed", "--if-exists", "rename"}, {"a.rtf"}).exitCode, kAllConverted);
    EXPECT_EQ(folder_.names("out"), (Names{"a-2.txt", "a.txt"}));
    EXPECT_EQ(convert({"--resume", "r", "--if-exists", "rename"}, {"a.rtf"}).exitCode, kAllConverted);
    EXPECT_EQ(folder_.names("out"), (Names{"a-2.txt", "a.txt"}));
    EXPECT_EQ(records().size(), 1U);
}

TEST_F(Results, leftTemporaryFilesAreRemoved) {
    folder_.put("out/.quillow-convert.0000000000000001.tmp", "half a te");
    folder_.put(".quillow-convert.0000000000000002.tmp", "half a result");

    convert({"--resume", "r"});

    EXPECT_EQ(folder_.names("out"), (Names{"a.txt", "c.txt", "d.txt"}));
    EXPECT_FALSE(std::filesystem::exists(folder_.at(".quillow-convert.0000000000000002.tmp")));
}

TEST_F(Results, shardsTogetherMakeAWholeRun) {
    std::size_t documents = 0;
    int failures = 0;
    for (const char* shard : {"1/3", "2/3", "3/3"}) {
        const int exitCode = convert({"--results", "r", "--shard", shard}).exitCode;
        failures += exitCode;
        documents += records().size();
    }
    EXPECT_EQ(documents, 4U);
    EXPECT_EQ(failures, kSomeFailed) << "a shard without documents succeeds";
    EXPECT_EQ(folder_.names("out"), (Names{"a.txt", "c.txt", "d.txt"}));
}

TEST_F(Results, areNotForWorkers) {
    EXPECT_EQ(run({"--worker", "--results", "r"}, setting_).exitCode, kUsage);
}

} // namespace
} // namespace quillow::cli
