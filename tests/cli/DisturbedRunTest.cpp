// Disturbed runs of the real program: a signal that its parent ignores, a reader that is gone, and documents that are
// slow or change while they are read.
#include "cli/Input.h"
#include "cli/Program.h"
#include "tests/cli/RunConvert.h"
#include "tests/cli/TemporaryFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <thread>

namespace quillow::cli {
namespace {

using test::Outcome;
using test::run;
using test::Running;
using test::TemporaryFolder;

TEST(DisturbedRun, aSignalThatWasIgnoredAtTheStartStaysIgnored) {
    const TemporaryFolder folder;
    const std::string pipe = folder.at("a.rtf");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    test::RunSetting setting;
    setting.prefix = {"env", "--ignore-signal=HUP"};
    Running running({pipe}, setting);
    const int writing = ::open(pipe.c_str(), O_WRONLY); // waits until the program reads

    ::kill(running.process(), SIGHUP);

    EXPECT_EQ(::write(writing, "{\\rtf1 text}", 12), 12);
    ::close(writing);
    const Outcome done = running.wait();
    EXPECT_EQ(done.exitCode, kAllConverted);
    EXPECT_EQ(done.output, "text\n");
}

TEST(DisturbedRun, aReaderThatIsGoneEndsItByThePipeSignal) {
    const TemporaryFolder folder;
    const std::string document = folder.put("a.rtf", "{\\rtf1 text}");
    const std::string output = folder.at("output");
    const std::string gate = folder.at("gate");
    ASSERT_EQ(::mkfifo(output.c_str(), 0600), 0);
    ASSERT_EQ(::mkfifo(gate.c_str(), 0600), 0);
    test::RunSetting setting;
    setting.outputPath = output;
    setting.prefix = {"env", "--default-signal=PIPE", "sh", "-c", R"(read -r go <"$0"; exec "$@")", gate};
    for (const std::string& argument : {std::string("--help"), document}) {
        const int reading = ::open(output.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
        Running running({argument}, setting);
        ::close(reading);

        std::ofstream(gate) << "go\n";

        const Outcome done = running.wait();
        EXPECT_EQ(done.signal, SIGPIPE) << argument;
        EXPECT_EQ(done.errors, "") << argument;
    }
}

TEST(DisturbedRun, theNextDocumentIsReadBesideASlowOne) {
    if (std::thread::hardware_concurrency() < 2) GTEST_SKIP() << "one processor takes one document after the other";
    const TemporaryFolder folder;
    const std::string slow = folder.at("slow.rtf");
    const std::string next = folder.at("next.rtf");
    for (const std::string& pipe : {slow, next})
        ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    Running running({slow, next});

    std::ofstream(next) << "{\\rtf1 next}"; // waits until the program reads
    std::ofstream(slow) << "{\\rtf1 slow}";

    const Outcome done = running.wait();
    EXPECT_EQ(done.exitCode, kAllConverted);
    EXPECT_EQ(done.output, "slow\nnext\n");
}

TEST(DisturbedRun, aDocumentThatChangesWhileItIsReadIsUnreadable) {
    const TemporaryFolder folder;
    const std::string path = folder.put("a.rtf", "{\\rtf1 " + std::string(2 * kMappedFrom, 'x') + "}");
    std::atomic<bool> isOver = false;
    std::thread changing([&] {
        auto time = std::filesystem::last_write_time(path);
        while (!isOver)
            std::filesystem::last_write_time(path, time += std::chrono::seconds(1));
    });

    // Repeat until a change falls between the first byte read and the last.
    Outcome done = run({path});
    for (int i = 0; i < 1000 && done.exitCode == kAllConverted; ++i)
        done = run({path});

    isOver = true;
    changing.join();
    EXPECT_EQ(done.exitCode, kSomeFailed);
    EXPECT_EQ(done.output, "");
    EXPECT_EQ(done.errors, "quillow-convert: " + path + ": unreadable (it was changed while it was read)\n");
}

} // namespace
} // namespace quillow::cli
