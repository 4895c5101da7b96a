#include "cli/results/ResultsFile.h"

#include "tests/cli/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace quillow::cli {
namespace {

using test::readFile;
using test::TemporaryFolder;
using Names = std::vector<std::string>;

ResultRecord recordFor(const std::string& path, Reason status = Reason::ok) {
    ResultRecord record;
    record.path = path;
    record.status = status;
    record.engine = "1.0";
    return record;
}

bool isFailure(Reason status) {
    return status == Reason::damaged;
}

class ResultsOfRuns : public testing::Test {
protected:
    void writeRun(const std::vector<ResultRecord>& records) {
        auto created = ResultsFile::create(path_);
        ASSERT_TRUE(std::holds_alternative<ResultsFile>(created));
        auto& file = std::get<ResultsFile>(created);
        for (const ResultRecord& record : records)
            EXPECT_FALSE(file.append(record));
        EXPECT_FALSE(file.close());
    }
    ResultsFile::Resumed resume(Retry retry = Retry::nothing) {
        auto resumed = ResultsFile::resume(path_, retry, isFailure);
        if (const auto* const failure = std::get_if<ResultsFailure>(&resumed)) ADD_FAILURE() << failure->detail;
        return std::move(std::get<ResultsFile::Resumed>(resumed));
    }
    [[nodiscard]] std::string content() const { return readFile(path_); }

    TemporaryFolder folder_;
    std::string path_ = folder_.at("results");
};

TEST_F(ResultsOfRuns, aNewRunReplacesTheLinesOfAnOlderOne) {
    writeRun({recordFor("old.rtf")});
    writeRun({recordFor("a.rtf"), recordFor("b.rtf")});

    EXPECT_EQ(content(), lineOf(recordFor("a.rtf")) + lineOf(recordFor("b.rtf")));
}

TEST_F(ResultsOfRuns, aResumedRunAddsToTheLines) {
    writeRun({recordFor("a.rtf"), recordFor("b.rtf", Reason::damaged)});

    ResultsFile::Resumed resumed = resume();

    EXPECT_EQ(resumed.earlier.take("a.rtf")->status, Reason::ok);
    EXPECT_EQ(resumed.earlier.take("b.rtf")->status, Reason::damaged);
    EXPECT_FALSE(resumed.earlier.take("c.rtf"));
    EXPECT_FALSE(resumed.file.append(recordFor("c.rtf")));
    EXPECT_FALSE(resumed.file.close());
    EXPECT_EQ(content(),
              lineOf(recordFor("a.rtf")) + lineOf(recordFor("b.rtf", Reason::damaged)) + lineOf(recordFor("c.rtf")));
    EXPECT_EQ(folder_.names(), (Names{"results"}));
}

TEST_F(ResultsOfRuns, aFileThatIsMissingBeginsANewRun) {
    ResultsFile::Resumed resumed = resume();

    EXPECT_FALSE(resumed.earlier.take("a.rtf"));
    EXPECT_FALSE(resumed.file.append(recordFor("a.rtf")));
    EXPECT_EQ(content(), lineOf(recordFor("a.rtf")));
}

TEST_F(ResultsOfRuns, aPathWithTwoResultsIsFinishedTwice) {
    writeRun({recordFor("a.rtf"), recordFor("a.rtf", Reason::damaged)});

    ResultsFile::Resumed resumed = resume();

    EXPECT_EQ(resumed.earlier.take("a.rtf")->status, Reason::ok);
    EXPECT_EQ(resumed.earlier.take("a.rtf")->status, Reason::damaged);
    EXPECT_FALSE(resumed.earlier.take("a.rtf"));
}

TEST_F(ResultsOfRuns, anIncompleteLastLineIsRemoved) {
    const std::string first = lineOf(recordFor("a.rtf"));
    const std::string second = lineOf(recordFor("b.rtf"));
    for (std::size_t length = 0; length + 1 < second.size(); length += 7) {
        folder_.put("results", first + second.substr(0, length));

        ResultsFile::Resumed resumed = resume();

        EXPECT_EQ(content(), first);
        EXPECT_FALSE(resumed.earlier.take("b.rtf"));
    }
}

TEST_F(ResultsOfRuns, aLastLineWithoutItsEndCounts) {
    const std::string line = lineOf(recordFor("a.rtf"));
    folder_.put("results", line.substr(0, line.size() - 1));

    ResultsFile::Resumed resumed = resume();

    EXPECT_TRUE(resumed.earlier.take("a.rtf"));
    EXPECT_EQ(content(), line);
}

TEST_F(ResultsOfRuns, failedDocumentsAreConvertedAgainOnRequest) {
    writeRun({recordFor("a.rtf"), recordFor("b.rtf", Reason::damaged)});

    ResultsFile::Resumed resumed = resume(Retry::failed);

    EXPECT_TRUE(resumed.earlier.take("a.rtf"));
    EXPECT_FALSE(resumed.earlier.take("b.rtf"));
    EXPECT_EQ(content(), lineOf(recordFor("a.rtf")));
}

TEST_F(ResultsOfRuns, aTextThatIsGoneOrHasAnotherSizeIsWrittenAgain) {
    ResultRecord whole = recordFor("a.rtf");
    whole.output = folder_.put("a.txt", "12345");
    whole.textBytes = 5;
    ResultRecord gone = recordFor("b.rtf");
    gone.output = folder_.at("b.txt");
    gone.textBytes = 5;
    ResultRecord cut = recordFor("c.rtf");
    cut.output = folder_.put("c.txt", "123");
    cut.textBytes = 5;
    writeRun({whole, gone, cut});

    ResultsFile::Resumed resumed = resume();

    EXPECT_TRUE(resumed.earlier.take("a.rtf"));
    EXPECT_FALSE(resumed.earlier.take("b.rtf"));
    EXPECT_FALSE(resumed.earlier.take("c.rtf"));
    EXPECT_EQ(content(), lineOf(whole));
}

TEST_F(ResultsOfRuns, aFileWithOtherLinesIsLeftAlone) {
    const std::string letter = lineOf(recordFor("a.rtf")) + "Dear Sir,\nplease do not overwrite this.\n";
    folder_.put("results", letter);

    const auto resumed = ResultsFile::resume(path_, Retry::nothing, isFailure);

    ASSERT_TRUE(std::holds_alternative<ResultsFailure>(resumed));
    EXPECT_EQ(std::get<ResultsFailure>(resumed).detail, "line 2 is not a result of this program");
    EXPECT_EQ(content(), letter);
    EXPECT_EQ(folder_.names(), (Names{"results"}));
}

TEST_F(ResultsOfRuns, theFileKeepsItsMode) {
    writeRun({recordFor("a.rtf")});
    ASSERT_EQ(::chmod(path_.c_str(), 0640), 0);

    static_cast<void>(resume());

    struct stat status = {};
    ASSERT_EQ(::stat(path_.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0640U);
}

TEST_F(ResultsOfRuns, whatCannotBeOpenedIsAFailure) {
    EXPECT_TRUE(std::holds_alternative<ResultsFailure>(ResultsFile::create(folder_.at("none/results"))));
    EXPECT_TRUE(std::holds_alternative<ResultsFailure>(ResultsFile::resume(folder_.at(""), Retry::nothing, isFailure)));
    EXPECT_TRUE(std::holds_alternative<ResultsFailure>(ResultsFile::resume("/dev/null", Retry::nothing, isFailure)));
}

TEST_F(ResultsOfRuns, aFullDiskIsReported) {
    auto created = ResultsFile::create("/dev/full");
    ASSERT_TRUE(std::holds_alternative<ResultsFile>(created));

    const auto failure = std::get<ResultsFile>(created).append(recordFor("a.rtf"));

    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->detail, "No space left on device");
}

TEST_F(ResultsOfRuns, aDocumentInTheirPlaceIsNotReplaced) {
    folder_.put("results", "{\\rtf1 text}");

    const auto created = ResultsFile::create(path_);

    ASSERT_TRUE(std::holds_alternative<ResultsFailure>(created));
    EXPECT_EQ(std::get<ResultsFailure>(created).detail, "exists and does not hold results");
    EXPECT_EQ(content(), "{\\rtf1 text}");
}

TEST_F(ResultsOfRuns, aTornFirstLineIsReplaced) {
    folder_.put("results", "{\"sch");
    writeRun({recordFor("a.rtf")});
    EXPECT_EQ(content(), lineOf(recordFor("a.rtf")));
}

TEST_F(ResultsOfRuns, twoRunsDoNotShareAFile) {
    writeRun({recordFor("a.rtf"), recordFor("b.rtf", Reason::damaged)});
    for (const Retry retry : {Retry::nothing, Retry::failed}) {
        const ResultsFile::Resumed first = resume(retry);

        const auto second = ResultsFile::resume(path_, Retry::nothing, isFailure);
        const auto third = ResultsFile::create(path_);

        ASSERT_TRUE(std::holds_alternative<ResultsFailure>(second));
        EXPECT_EQ(std::get<ResultsFailure>(second).detail, "is in use by another run");
        EXPECT_TRUE(std::holds_alternative<ResultsFailure>(third));
    }
}

TEST_F(ResultsOfRuns, aShortenedFileGrowsAtItsEnd) {
    writeRun({recordFor("a.rtf", Reason::damaged), recordFor("b.rtf")});

    ResultsFile::Resumed resumed = resume(Retry::failed);

    EXPECT_FALSE(resumed.file.append(recordFor("a.rtf")));
    EXPECT_EQ(content(), lineOf(recordFor("b.rtf")) + lineOf(recordFor("a.rtf")));
}

TEST_F(ResultsOfRuns, aLinkToTheFileStays) {
    writeRun({recordFor("a.rtf", Reason::damaged), recordFor("b.rtf")});
    std::filesystem::rename(path_, folder_.at("other"));
    std::filesystem::create_symlink("other", path_);

    static_cast<void>(resume(Retry::failed));

    EXPECT_TRUE(std::filesystem::is_symlink(path_));
    EXPECT_EQ(readFile(folder_.at("other")), lineOf(recordFor("b.rtf")));
}

} // namespace
} // namespace quillow::cli
