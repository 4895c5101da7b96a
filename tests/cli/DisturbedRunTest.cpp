// Disturbed runs of the real program: a signal that its parent ignores, and a document that changes while it is read.
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
