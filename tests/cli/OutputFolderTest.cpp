#include "cli/OutputFolder.h"

#include "tests/cli/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <thread>

namespace quillow::cli {
namespace {

using test::readFile;
using test::TemporaryFolder;
using Names = std::vector<std::string>;

OutputFolder opened(const std::string& path) {
    return std::get<OutputFolder>(OutputFolder::open(path));
}

std::string failureOf(const std::string& path) {
    const auto outcome = OutputFolder::open(path);
    const auto* const failure = std::get_if<OutputFailure>(&outcome);
    return failure == nullptr ? std::string() : failure->detail;
}

TEST(OutputFolder, isMadeWhenItsParentExists) {
    const TemporaryFolder folder;

    EXPECT_EQ(failureOf(folder.at("out")), "");
    EXPECT_TRUE(std::filesystem::is_directory(folder.at("out")));
    EXPECT_EQ(failureOf(folder.at("none/out")), "No such file or directory");
    EXPECT_EQ(failureOf(folder.put("file", "")), "Not a directory");
}

TEST(OutputFolder, holdsTheFileAndNothingElse) {
    const TemporaryFolder folder;

    EXPECT_FALSE(opened(folder.at("")).write("a.txt", "text\n"));

    EXPECT_EQ(folder.names(), Names{"a.txt"});
    EXPECT_EQ(readFile(folder.at("a.txt")), "text\n");
}

TEST(OutputFolder, replacesWhatIsThere) {
    const TemporaryFolder folder;
    folder.put("a.txt", "a much longer text from before\n");

    EXPECT_FALSE(opened(folder.at("")).write("a.txt", ""));

    EXPECT_EQ(folder.names(), Names{"a.txt"});
    EXPECT_EQ(readFile(folder.at("a.txt")), "");
}

TEST(OutputFolder, replacesALinkAndNotItsTarget) {
    const TemporaryFolder folder;
    folder.put("target", "kept");
    std::filesystem::create_symlink("target", folder.at("a.txt"));

    EXPECT_FALSE(opened(folder.at("")).write("a.txt", "text\n"));

    EXPECT_EQ(readFile(folder.at("target")), "kept");
    EXPECT_FALSE(std::filesystem::is_symlink(folder.at("a.txt")));
}

TEST(OutputFolder, failureLeavesNothing) {
    const TemporaryFolder folder;
    folder.put("a.txt/inside", "kept");
    const OutputFolder output = opened(folder.at(""));

    EXPECT_TRUE(output.write("a.txt", "text\n"));
    EXPECT_TRUE(output.write(std::string(300, 'n'), "text\n"));

    EXPECT_EQ(folder.names(), Names{"a.txt"});
    EXPECT_EQ(readFile(folder.at("a.txt/inside")), "kept");
}

TEST(OutputFolder, fileModeFollowsTheMask) {
    const TemporaryFolder folder;
    const mode_t before = ::umask(027);

    EXPECT_FALSE(opened(folder.at("")).write("a.txt", "text\n"));

    ::umask(before);
    struct stat status = {};
    ASSERT_EQ(::stat(folder.at("a.txt").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0640U);
}

TEST(OutputFolder, manyWritersOfOneNameLeaveOneWholeText) {
    const TemporaryFolder folder;
    const OutputFolder output = opened(folder.at(""));
    std::vector<std::thread> writers;

    for (const char letter : {'a', 'b', 'c', 'd'})
        writers.emplace_back([&output, letter] {
            for (int i = 0; i < 20; ++i)
                EXPECT_FALSE(output.write("a.txt", std::string(100'000, letter)));
        });
    for (std::thread& writer : writers)
        writer.join();

    const std::string text = readFile(folder.at("a.txt"));
    EXPECT_EQ(folder.names(), Names{"a.txt"});
    EXPECT_EQ(text, std::string(100'000, text.empty() ? '?' : text[0]));
}

} // namespace
} // namespace quillow::cli
