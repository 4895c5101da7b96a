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
    return std::get<OutputFolder>(OutputFolder::open(path, OutputFolder::Missing::made));
}

std::string failureOf(const std::string& path) {
    const auto outcome = OutputFolder::open(path, OutputFolder::Missing::made);
    const auto* const failure = std::get_if<OutputFailure>(&outcome);
    return failure == nullptr ? std::string() : failure->detail;
}

std::optional<OutputFailure> write(const OutputFolder& folder, const std::string& name, std::string_view content,
                                   Present present) {
    auto written = folder.write(name, content, present);
    if (auto* const failure = std::get_if<OutputFailure>(&written)) return std::move(*failure);
    UnnamedText& text = *std::get<std::shared_ptr<UnnamedText>>(written);
    if (auto failure = text.sync(UnnamedText::Together::no)) return failure;
    return text.place();
}

TEST(OutputFolder, isMadeWhenItsParentExists) {
    const TemporaryFolder folder;

    EXPECT_EQ(failureOf(folder.at("out")), "");
    EXPECT_TRUE(std::filesystem::is_directory(folder.at("out")));
    EXPECT_EQ(failureOf(folder.at("none/out")), "No such file or directory");
    EXPECT_EQ(failureOf(folder.put("file", "")), "Not a directory");
}

TEST(OutputFolder, aTextHasNoNameUntilItIsPlaced) {
    const TemporaryFolder folder;
    const OutputFolder output = opened(folder.at(""));
    folder.put("a.txt", "old\n");

    auto dropped = output.write("b.txt", "text\n", Present::replaced);
    dropped = OutputFailure{};
    auto written = output.write("a.txt", "text\n", Present::replaced);
    UnnamedText& text = *std::get<std::shared_ptr<UnnamedText>>(written);
    EXPECT_EQ(readFile(folder.at("a.txt")), "old\n");
    const bool isTogether = output.syncTogether();
    EXPECT_FALSE(text.sync(isTogether ? UnnamedText::Together::yes : UnnamedText::Together::no));
    EXPECT_EQ(readFile(folder.at("a.txt")), "old\n");
    EXPECT_FALSE(text.place());

    EXPECT_EQ(readFile(folder.at("a.txt")), "text\n");
    EXPECT_FALSE(std::filesystem::exists(folder.at("b.txt")));
}

TEST(OutputFolder, holdsTheFileAndNothingElse) {
    const TemporaryFolder folder;

    EXPECT_FALSE(write(opened(folder.at("")), "a.txt", "text\n", Present::replaced));

    EXPECT_EQ(folder.names(), Names{"a.txt"});
    EXPECT_EQ(readFile(folder.at("a.txt")), "text\n");
}

TEST(OutputFolder, replacesWhatIsThere) {
    const TemporaryFolder folder;
    folder.put("a.txt", "a much longer text from before\n");

    EXPECT_FALSE(write(opened(folder.at("")), "a.txt", "", Present::replaced));

    EXPECT_EQ(folder.names(), Names{"a.txt"});
    EXPECT_EQ(readFile(folder.at("a.txt")), "");
}

TEST(OutputFolder, replacesALinkAndNotItsTarget) {
    const TemporaryFolder folder;
    folder.put("target", "kept");
    std::filesystem::create_symlink("target", folder.at("a.txt"));

    EXPECT_FALSE(write(opened(folder.at("")), "a.txt", "text\n", Present::replaced));

    EXPECT_EQ(readFile(folder.at("target")), "kept");
    EXPECT_FALSE(std::filesystem::is_symlink(folder.at("a.txt")));
}

TEST(OutputFolder, failureLeavesNothing) {
    const TemporaryFolder folder;
    folder.put("a.txt/inside", "kept");
    const OutputFolder output = opened(folder.at(""));

    EXPECT_TRUE(write(output, "a.txt", "text\n", Present::replaced));
    EXPECT_TRUE(write(output, std::string(300, 'n'), "text\n", Present::replaced));

    EXPECT_EQ(folder.names(), Names{"a.txt"});
    EXPECT_EQ(readFile(folder.at("a.txt/inside")), "kept");
}

TEST(OutputFolder, fileModeFollowsTheMask) {
    const TemporaryFolder folder;
    const mode_t before = ::umask(027);

    EXPECT_FALSE(write(opened(folder.at("")), "a.txt", "text\n", Present::replaced));

    ::umask(before);
    struct stat status = {};
    ASSERT_EQ(::stat(folder.at("a.txt").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0640U);
}

mode_t modeOf(const std::string& path) {
    struct stat status = {};
    return ::stat(path.c_str(), &status) == 0 ? status.st_mode & 07777 : 0;
}

std::string writeFailure(const OutputFolder& folder, const std::string& name, Present present = Present::replaced) {
    const auto failure = write(folder, name, "text\n", present);
    return failure ? failure->detail : std::string();
}

TEST(OutputFolder, replacedFileKeepsItsMode) {
    const TemporaryFolder folder;
    const OutputFolder output = opened(folder.at(""));
    for (const mode_t mode : {0600U, 0666U, 0640U, 0755U, 0200U}) {
        const std::string path = folder.put("a.txt", "old");
        ASSERT_EQ(::chmod(path.c_str(), mode), 0);

        EXPECT_EQ(writeFailure(output, "a.txt"), "");

        EXPECT_EQ(modeOf(path), mode);
        ASSERT_EQ(::chmod(path.c_str(), 0600), 0);
        EXPECT_EQ(readFile(path), "text\n");
    }
}

TEST(OutputFolder, replacedFileKeepsItsOwner) {
    if (::geteuid() != 0) GTEST_SKIP() << "only root gives files away";
    const TemporaryFolder folder;
    const std::string path = folder.put("a.txt", "old");
    ASSERT_EQ(::chown(path.c_str(), 12345, 54321), 0);

    EXPECT_EQ(writeFailure(opened(folder.at("")), "a.txt"), "");

    struct stat status = {};
    ASSERT_EQ(::stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_uid, 12345U);
    EXPECT_EQ(status.st_gid, 54321U);
}

TEST(OutputFolder, readOnlyFileIsNotReplacedWhoeverRuns) {
    const TemporaryFolder folder;
    const std::string path = folder.put("a.txt", "kept");
    ASSERT_EQ(::chmod(path.c_str(), 0444), 0);

    EXPECT_EQ(writeFailure(opened(folder.at("")), "a.txt"), "is read-only");

    EXPECT_EQ(readFile(path), "kept");
    EXPECT_EQ(folder.names(), Names{"a.txt"});
}

TEST(OutputFolder, pipeIsNotReplaced) {
    const TemporaryFolder folder;
    ASSERT_EQ(::mkfifo(folder.at("a.txt").c_str(), 0600), 0);
    ASSERT_EQ(::mkfifo(folder.at("readOnly.txt").c_str(), 0400), 0);

    EXPECT_EQ(writeFailure(opened(folder.at("")), "a.txt"), "is a device or a pipe");
    EXPECT_EQ(writeFailure(opened(folder.at("")), "readOnly.txt"), "is a device or a pipe");
}

TEST(OutputFolder, presentFileIsKeptWhereThatIsAskedFor) {
    const TemporaryFolder folder;
    folder.put("a.txt", "kept");
    const OutputFolder output = opened(folder.at(""));

    const auto failure = write(output, "a.txt", "text\n", Present::kept);

    ASSERT_TRUE(failure);
    EXPECT_TRUE(failure->nameIsInUse);
    EXPECT_EQ(readFile(folder.at("a.txt")), "kept");
    EXPECT_EQ(writeFailure(output, "b.txt", Present::kept), "");
    EXPECT_EQ(folder.names(), (Names{"a.txt", "b.txt"}));
}

TEST(OutputFolder, foldersBelowAreMadeForTheirTexts) {
    const TemporaryFolder folder;
    const OutputFolder output = opened(folder.at("out"));

    EXPECT_EQ(writeFailure(output, "a/b/c.txt"), "");
    EXPECT_EQ(writeFailure(output, "a/d.txt"), "");

    EXPECT_EQ(folder.names("out"), Names{"a"});
    EXPECT_EQ(readFile(folder.at("out/a/b/c.txt")), "text\n");
    EXPECT_EQ(readFile(folder.at("out/a/d.txt")), "text\n");
    EXPECT_FALSE(output.sync());
}

TEST(OutputFolder, noLinkLeadsOutOfTheFolder) {
    const TemporaryFolder folder;
    folder.put("outside/kept", "");
    folder.put("out/kept", "");
    folder.put("out/file", "");
    std::filesystem::create_directory_symlink("../outside", folder.at("out/a"));

    const OutputFolder output = opened(folder.at("out"));

    EXPECT_EQ(writeFailure(output, "a/x.txt"), "a: Not a directory");
    EXPECT_EQ(writeFailure(output, "a/b/x.txt"), "a: Not a directory");
    EXPECT_EQ(writeFailure(output, "file/x.txt"), "file: Not a directory");
    EXPECT_EQ(folder.names("outside"), Names{"kept"});
}

TEST(OutputFolder, folderThatMustBeThereIsNotMade) {
    const TemporaryFolder folder;

    const auto outcome = OutputFolder::open(folder.at("out"), OutputFolder::Missing::failure);

    EXPECT_TRUE(std::holds_alternative<OutputFailure>(outcome));
    EXPECT_EQ(folder.names(), Names{});
}

TEST(OutputFolder, manyWritersOfOneNameLeaveOneWholeText) {
    const TemporaryFolder folder;
    const OutputFolder output = opened(folder.at(""));
    std::vector<std::thread> writers;

    for (const char letter : {'a', 'b', 'c', 'd'})
        writers.emplace_back([&output, letter] {
            for (int i = 0; i < 20; ++i)
                EXPECT_FALSE(write(output, "a.txt", std::string(100'000, letter), Present::replaced));
        });
    for (std::thread& writer : writers)
        writer.join();

    const std::string text = readFile(folder.at("a.txt"));
    EXPECT_EQ(folder.names(), Names{"a.txt"});
    EXPECT_EQ(text, std::string(100'000, text.empty() ? '?' : text[0]));
}

TEST(OutputFolder, knowsWhetherAFileHasTheText) {
    const TemporaryFolder folder;
    const std::string text(100'000, 'x');
    folder.put("a.txt", text);
    folder.put("sub/b.txt", "b\n");
    folder.put("sub/empty.txt", "");
    std::filesystem::create_symlink("a.txt", folder.at("link.txt"));
    const OutputFolder output = opened(folder.at(""));

    EXPECT_TRUE(output.holds("a.txt", text));
    EXPECT_FALSE(output.holds("a.txt", text.substr(1) + "y"));
    EXPECT_FALSE(output.holds("a.txt", "y" + text.substr(1)));
    EXPECT_FALSE(output.holds("a.txt", text + "x"));
    EXPECT_TRUE(output.holds("sub/b.txt", "b\n"));
    EXPECT_TRUE(output.holds("sub/empty.txt", ""));
    EXPECT_FALSE(output.holds("none.txt", ""));
    EXPECT_FALSE(output.holds("sub", ""));
    EXPECT_FALSE(output.holds("link.txt", text));
}

TEST(OutputFolder, whatAKilledRunLeftIsRemovedBelowToo) {
    const TemporaryFolder folder;
    folder.put(".quillow-convert.1.tmp", "");
    folder.put("a/b/.quillow-convert.2.tmp", "");
    folder.put("other/.quillow-convert.3.tmp", "");

    opened(folder.at("")).removeLeftOver({"a/b", "none"});

    EXPECT_EQ(folder.names(), (Names{"a", "other"}));
    EXPECT_EQ(folder.names("a/b"), Names{});
    EXPECT_EQ(folder.names("other").size(), 1U);
}

} // namespace
} // namespace quillow::cli
