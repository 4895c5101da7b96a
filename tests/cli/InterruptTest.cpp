// End to end: the real program is interrupted or killed.
#include "cli/Program.h"
#include "tests/cli/Documents.h"
#include "tests/cli/RunConvert.h"
#include "tests/cli/TemporaryFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

namespace quillow::cli {
namespace {

using test::appears;
using test::kRtf;
using test::Outcome;
using test::run;
using test::Running;
using test::TemporaryFolder;
using Names = std::vector<std::string>;

TEST(Interrupt, interruptEndsItAtOnce) {
    const TemporaryFolder folder;
    ASSERT_EQ(::mkfifo(folder.at("never.rtf").c_str(), 0600), 0);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        Running running({"-j2", "-o", folder.at("out"), folder.put("a.rtf", kRtf), folder.at("never.rtf")}, {});
        EXPECT_TRUE(appears([&] { return std::filesystem::exists(folder.at("out/a.txt")); }));

        ::kill(running.process(), signal);

        EXPECT_EQ(running.wait().exitCode, kInterrupted);
        EXPECT_EQ(folder.names("out"), Names{"a.txt"});
        std::filesystem::remove_all(folder.at("out"));
    }
}

/// Ends a run in the middle of its writes, which are many and large.
void endInMidWrite(int signal, Names& leftOver) {
    constexpr std::size_t kText = 4 << 20;
    const TemporaryFolder folder;
    std::vector<std::string> arguments = {"-j4", "-o", folder.at("out")};
    const std::string first = folder.put("d0.rtf", "{\\rtf1 " + std::string(kText, 'x') + "}");
    arguments.push_back(first);
    for (int i = 1; i < 400; ++i) {
        arguments.push_back(folder.at("d" + std::to_string(i) + ".rtf"));
        std::filesystem::create_hard_link(first, arguments.back());
    }
    Running running(arguments, {});
    EXPECT_TRUE(appears([&] { return std::filesystem::exists(folder.at("out")) && folder.names("out").size() >= 3; }));

    ::kill(running.process(), signal);

    const Outcome done = running.wait();
    EXPECT_EQ(signal == SIGKILL ? done.signal : done.exitCode, signal == SIGKILL ? SIGKILL : kInterrupted);
    for (const std::string& name : folder.names("out")) {
        if (name.ends_with(".txt"))
            EXPECT_EQ(std::filesystem::file_size(folder.at("out/" + name)), kText + 1) << name;
        else
            leftOver.push_back(name);
    }
}

TEST(Interrupt, interruptInMidWriteLeavesWholeTextsAndNothingElse) {
    Names leftOver;
    endInMidWrite(SIGTERM, leftOver);
    EXPECT_EQ(leftOver, Names{});
}

TEST(Interrupt, killInMidWriteLeavesWholeTexts) {
    Names leftOver;
    endInMidWrite(SIGKILL, leftOver);
    const TemporaryFolder probe;
    const int nameless = ::open(probe.at("").c_str(), O_TMPFILE | O_WRONLY, 0600);
    if (nameless < 0) GTEST_SKIP() << "this file system has no nameless files: a temporary one may stay";
    ::close(nameless);
    EXPECT_EQ(leftOver, Names{});
}

} // namespace
} // namespace quillow::cli
