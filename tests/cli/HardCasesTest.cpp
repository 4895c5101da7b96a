// End to end: names and disks that make trouble.
#include "cli/Program.h"
#include "cli/results/ResultRecord.h"
#include "posix/FileDescriptor.h"
#include "tests/cli/Documents.h"
#include "tests/cli/RunConvert.h"
#include "tests/cli/TemporaryFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>

namespace quillow::cli {
namespace {

using test::appears;
using test::kRtf;
using test::kRtfText;
using test::Outcome;
using test::readFile;
using test::run;
using test::Running;
using test::TemporaryFolder;
using Names = std::vector<std::string>;

Names pathsIn(const std::string& lines) {
    Names paths;
    std::istringstream in(lines);
    for (std::string line; std::getline(in, line);)
        paths.push_back(recordOf(line).value_or(ResultRecord()).path);
    return paths;
}

TEST(HardCases, namesOfAnyBytesAreConvertedAndNoted) {
    const TemporaryFolder folder;
    const std::string longest = std::string(248, 'l') + "\xC3\xA9";
    const Names names = {"\"double\" 'single'", "new\nline\ttab", "caf\xE9 \xFF", "-dash",         "back\\slash",
                         "{\"json\": 1}",       "\x1B[31mred",    longest,        "$(id) `id` ; *"};
    Names paths;
    Names texts;
    for (const std::string& name : names) {
        folder.put("in/" + name + ".rtf", kRtf);
        paths.push_back("in/" + name + ".rtf");
        texts.push_back(name + ".txt");
    }
    std::sort(paths.begin(), paths.end());
    std::sort(texts.begin(), texts.end());
    test::RunSetting setting;
    setting.folder = folder.at("");

    const Outcome walked = run({"-r", "-o", "out", "--results", "r", "in"}, setting);
    EXPECT_EQ(walked.exitCode, kAllConverted) << walked.errors;
    EXPECT_EQ(folder.names("out"), texts);
    EXPECT_EQ(pathsIn(readFile(folder.at("r"))), paths);

    for (const std::string& path : paths)
        setting.input += path + '\0';
    const Outcome listed = run({"-0", "--files-from", "-", "-o", "out", "--resume", "r", "-v"}, setting);
    EXPECT_EQ(listed.exitCode, kAllConverted);
    EXPECT_EQ(listed.errors, "") << "all are recognised as finished";
}

TEST(HardCases, namesThatLeaveNoRoomForAnExtensionAreShortened) {
    const TemporaryFolder folder;
    const std::string longest(255, 'x');
    const std::string other = std::string(254, 'x') + "y";
    folder.put("in/" + longest, kRtf);
    folder.put("in/" + other, kRtf);

    const Outcome done = run({"-o", folder.at("out"), folder.at("in/" + longest), folder.at("in/" + other)});

    EXPECT_EQ(done.exitCode, kAllConverted) << done.errors;
    EXPECT_EQ(folder.names("out"), (Names{std::string(249, 'x') + "-2.txt", std::string(251, 'x') + ".txt"}));
}

TEST(HardCases, textThatIsTooLargeForTheDiskIsTheFailureOfItsDocument) {
    const TemporaryFolder folder;
    const std::string large = folder.put("large.rtf", "{\\rtf1 " + std::string(100'000, 'x') + "}");
    test::RunSetting setting;
    setting.prefix = {"prlimit", "--fsize=50000"};

    const Outcome done = run({"-o", folder.at("out"), large, folder.put("small.rtf", kRtf)}, setting);

    EXPECT_EQ(done.exitCode, kDestinationUnwritable);
    EXPECT_EQ(done.errors, "quillow-convert: " + large + ": unwritable (large.txt: File too large)\n");
    EXPECT_EQ(folder.names("out"), Names{"small.txt"});
}

TEST(HardCases, fullDiskLeavesWholeTexts) {
    const TemporaryFolder folder;
    test::RunSetting setting;
    setting.prefix = {"unshare", "-m"};
    if (run({"--version"}, setting).exitCode != 0) GTEST_SKIP() << "no right to mount";
    std::filesystem::create_directory(folder.at("out"));
    std::vector<std::string> arguments = {"-q", "-j2", "-o", folder.at("out"), "--results", folder.at("r")};
    for (int i = 0; i < 30; ++i)
        arguments.push_back(
            folder.put(std::to_string(i) + ".rtf", "{\\rtf1 " + std::string(20'000, 'x') + "}")); // 600 KB together
    setting.prefix = {"unshare",
                      "-m",
                      "sh",
                      "-c",
                      "mount -t tmpfs -o size=256k tmpfs \"$0\" && \"$@\"; code=$?; cd \"$0\"; "
                      "ls -A | grep -vc 'txt$'; find . -type f ! -size 20001c; exit $code",
                      folder.at("out")};

    const Outcome done = run(arguments, setting);

    EXPECT_EQ(done.exitCode, kDestinationUnwritable);
    EXPECT_EQ(done.output, "0\n") << "other files, or texts that are not whole";
    EXPECT_EQ(pathsIn(readFile(folder.at("r"))).size(), 30U);
    EXPECT_NE(readFile(folder.at("r")).find("No space left on device"), std::string::npos);
}

TEST(HardCases, folderWithoutTheRightToWriteExitsWithItsOwnCode) {
    const TemporaryFolder folder;
    ASSERT_EQ(::chmod(folder.at("").c_str(), 0755), 0);
    const std::string rtf = folder.put("a.rtf", kRtf);
    std::filesystem::create_directory(folder.at("out"));
    ASSERT_EQ(::chmod(folder.at("out").c_str(), 0555), 0);
    test::RunSetting setting;
    if (::geteuid() == 0) setting.prefix = {"setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"};
    if (run({"--version"}, setting).exitCode != 0) GTEST_SKIP() << "the program is in a folder of root";

    const Outcome done = run({"-o", folder.at("out"), rtf}, setting);
    EXPECT_EQ(done.exitCode, kDestinationUnwritable);
    EXPECT_EQ(done.errors, "quillow-convert: " + folder.at("out") + ": unwritable (Permission denied)\n");
    const Outcome results = run({"-o", folder.at("out"), "--results", folder.at("out/r"), rtf}, setting);
    EXPECT_EQ(results.exitCode, kDestinationUnwritable);
    EXPECT_EQ(results.errors, "quillow-convert: " + folder.at("out/r") + ": unwritable (Permission denied)\n");
}

TEST(HardCases, folderThatVanishesDuringTheRunIsAFailureOfEachFurtherDocument) {
    const TemporaryFolder folder;
    const std::string pipe = folder.at("b.rtf");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    Running running({"-j1", "-o", folder.at("out"), "--results", folder.at("r"), folder.put("a.rtf", kRtf), pipe,
                     folder.put("c.rtf", kRtf)});
    EXPECT_TRUE(appears([&] { return std::filesystem::exists(folder.at("out/a.txt")); }));
    std::filesystem::remove_all(folder.at("out"));

    std::ofstream(pipe) << kRtf;

    const Outcome done = running.wait();
    EXPECT_EQ(done.exitCode, kDestinationUnwritable);
    EXPECT_NE(done.errors.find("b.rtf: unwritable (b.txt: No such file or directory)"), std::string::npos)
        << done.errors;
    EXPECT_EQ(pathsIn(readFile(folder.at("r"))).size(), 3U);
    EXPECT_FALSE(std::filesystem::exists(folder.at("out")));
}

TEST(HardCases, closedStreamsBreakNeitherTextsNorResults) {
    const TemporaryFolder folder;
    test::RunSetting setting;
    setting.prefix = {"bash", "-c", "\"$@\" >&- 2>&-", "bash"};

    const Outcome done = run(
        {"-v", "-o", folder.at("out"), "--results", folder.at("r"), folder.put("a.rtf", kRtf), folder.at("none.rtf")},
        setting);

    EXPECT_EQ(done.exitCode, kSomeFailed);
    EXPECT_EQ(readFile(folder.at("out/a.txt")), kRtfText);
    EXPECT_EQ(pathsIn(readFile(folder.at("r"))).size(), 2U);
    EXPECT_EQ(run({"-o", folder.at("out"), "--results", "-", folder.at("a.rtf")}, setting).exitCode,
              kDestinationUnwritable);
}

/// A terminal, and what programs write to it.
class Terminal {
public:
    Terminal()
        : master_(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC)) {
        ::grantpt(master_.number());
        ::unlockpt(master_.number());
        path = ::ptsname(master_.number());
        const winsize size = {24, 60, 0, 0};
        ::ioctl(master_.number(), TIOCSWINSZ, &size);
    }
    /// Call it after the program has ended.
    [[nodiscard]] std::string content() const {
        ::fcntl(master_.number(), F_SETFL, O_NONBLOCK);
        std::string text(1 << 16, '\0');
        const ssize_t got = ::read(master_.number(), text.data(), text.size());
        text.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
        return text;
    }

    std::string path;

private:
    FileDescriptor master_;
};

TEST(HardCases, aBarShowsOnATerminalHowFarTheRunIs) {
    const TemporaryFolder folder;
    const Terminal terminal;
    test::RunSetting setting;
    setting.errorsPath = terminal.path;
    const FileDescriptor kept(
        ::open(terminal.path.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC)); // or what is written is lost
    const std::vector<std::string> arguments = {"-o", folder.at("out"), folder.put("a.rtf", kRtf),
                                                folder.at("none.rtf")};

    EXPECT_EQ(run(arguments, setting).exitCode, kSomeFailed);
    const std::string shown = terminal.content();
    EXPECT_NE(shown.find("] 1 of 2"), std::string::npos) << shown;
    EXPECT_NE(shown.find("\r\x1B[Kquillow-convert: " + folder.at("none.rtf")), std::string::npos) << shown;
    EXPECT_TRUE(shown.ends_with("\r\x1B[K")) << shown;

    EXPECT_EQ(run({"-q", arguments[0], arguments[1], arguments[2], arguments[3]}, setting).exitCode, kSomeFailed);
    EXPECT_EQ(terminal.content(), "");
}

} // namespace
} // namespace quillow::cli
