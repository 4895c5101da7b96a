// The pool over its whole life: workers that end, are replaced and are used by many threads.
#include "tests/worker/PoolFixture.h"

#include <fcntl.h>
#include <grp.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <atomic>
#include <fstream>
#include <limits>
#include <string>
#include <thread>

namespace quillow::worker {
namespace {

using namespace test;

constexpr std::string_view kDocument = "{\\rtf1 text}";

/// Waits until the process has ended; a test that waits for nothing runs into its own time limit.
void waitForEnd(pid_t process) {
    while (::kill(process, 0) == 0)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

/// Runs the function in a process of its own. Returns its exit code.
int inChild(const std::function<int()>& function) {
    const pid_t child = ::fork();
    if (child == 0) ::_exit(function());
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 1000 + WTERMSIG(status);
}

TEST(Pool, readsADocumentInMemory) {
    Pool pool({kWorker});
    const Extraction extraction = pool.read(inMemory(kDocument), DocumentKind::rtf);
    EXPECT_EQ(extraction.reason, Reason::ok);
    EXPECT_EQ(extraction.text, "text\n");
}

TEST(Pool, readsADocumentFromADescriptor) {
    const std::string path = testing::TempDir() + "worker-document-" + std::to_string(::getpid());
    std::ofstream(path) << kDocument;
    const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    Pool pool({kWorker});
    EXPECT_EQ(pool.read({{}, file.number(), kDocument.size()}, DocumentKind::rtf).text, "text\n");
    ::unlink(path.c_str());
}

TEST(Pool, readsADocumentThatFillsTheChannelManyTimes) {
    const std::string inside(std::size_t{20} << 20, 'x');
    Pool pool({kWorker});
    const Extraction extraction = pool.read(inMemory("{\\rtf1 " + inside + "}"), DocumentKind::rtf);
    ASSERT_TRUE(extraction.text);
    EXPECT_TRUE(*extraction.text == inside + "\n");
}

#if !defined(__SANITIZE_ADDRESS__) // its runtime handles the signal
TEST(Pool, aFileThatBecomesShorterMeanwhileIsUnreadable) {
    const std::string path = testing::TempDir() + "truncated-document-" + std::to_string(::getpid());
    std::ofstream(path) << "x";
    const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    Pool pool({kWorker});
    // The parent has seen a larger size than the file has by now.
    const Extraction extraction = pool.read({{}, file.number(), std::size_t{1} << 20}, DocumentKind::rtf);
    EXPECT_EQ(extraction.reason, Reason::unreadable);
    EXPECT_EQ(extraction.detail, "it was changed while it was read, or its disk failed");
    ::unlink(path.c_str());
}
#endif

TEST(Pool, oneWorkerReadsManyDocuments) {
    Pool pool({kWorker});
    static_cast<void>(read(pool, kDocument));
    const std::vector<pid_t> before = pool.idleWorkers();
    for (unsigned i = 1; i < kDocumentsPerWorker - 1; ++i)
        static_cast<void>(read(pool, kDocument));
    EXPECT_EQ(pool.idleWorkers(), before);
}

TEST(Pool, aWornOutWorkerIsReplaced) {
    Pool pool({kWorker});
    static_cast<void>(read(pool, kDocument));
    const std::vector<pid_t> before = pool.idleWorkers();
    for (unsigned i = 0; i < kDocumentsPerWorker; ++i)
        EXPECT_EQ(read(pool, kDocument), "text\n");
    EXPECT_NE(pool.idleWorkers(), before);
}

TEST(Pool, aPreparedWorkerReadsTheFirstDocument) {
    Pool pool({kWorker});
    pool.prepare();
    EXPECT_EQ(read(pool, kDocument), "text\n");
    EXPECT_EQ(pool.idleWorkers().size(), 1U);
}

TEST(Pool, aWorkerKilledWhileIdleCostsNoDocument) {
    Pool pool({kWorker});
    for (int i = 0; i < 20; ++i) {
        static_cast<void>(read(pool, kDocument));
        ::kill(pool.idleWorkers().at(0), SIGKILL); // before the next document, or just when it is sent
        EXPECT_EQ(read(pool, kDocument), "text\n");
    }
}

TEST(Pool, aDocumentThatKillsItsWorkerIsNotTriedAgain) {
    Pool pool({kAttackWorker}, tightLimits());
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(read(pool, "attack:loop"), "timeout: it took longer than 3 seconds");
    // A second attempt would take as long again.
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(5900));
}

TEST(Pool, aMissingProgramMakesDocumentsUnreadable) {
    Pool pool({"/nonexistent/quillow-worker"});
    EXPECT_EQ(read(pool, kDocument), "unreadable: no process can be started to read it: No such file or directory");
    EXPECT_EQ(std::get<std::string>(pool.isolation()), "No such file or directory");
}

TEST(Pool, aProgramThatIsNoWorkerMakesDocumentsUnreadable) {
    Pool pool({"/bin/true"});
    EXPECT_EQ(read(pool, kDocument), "unreadable: no process can be started to read it: it ends before it begins");
}

TEST(Pool, withoutThreadsAndProcessesADocumentIsUnreadable) {
    EXPECT_EQ(inChild([] {
                  if (::geteuid() == 0 && (::setgroups(0, nullptr) != 0 || ::setresuid(65534, 65534, 65534) != 0))
                      return 2;
                  const rlimit none{1, 1};
                  ::setrlimit(RLIMIT_NPROC, &none);
                  bool isRefused = false;
                  try {
                      std::thread([] {}).join();
                  } catch (const std::system_error&) {
                      isRefused = true;
                  }
                  if (!isRefused) return 3;
                  Pool pool({kWorker});
                  // Nor can the system make a process then.
                  return pool.read(inMemory(kDocument), DocumentKind::rtf).reason == Reason::unreadable ? 0 : 1;
              }),
              0);
}

TEST(Pool, worksAsAUserWithoutRights) {
    if (::geteuid() != 0) GTEST_SKIP() << "only root can become another user";
    EXPECT_EQ(inChild([] {
                  if (::setgroups(0, nullptr) != 0 || ::setresgid(65534, 65534, 65534) != 0 ||
                      ::setresuid(65534, 65534, 65534) != 0)
                      return 2;
                  Pool pool({kAttackWorker}, tightLimits());
                  if (read(pool, kDocument) != "text\n") return 3;
                  if (pool.read(inMemory("attack:open"), DocumentKind::rtf).reason != Reason::crashed) return 4;
                  if (pool.read(inMemory("attack:loop"), DocumentKind::rtf).reason != Reason::timeout) return 5;
                  return read(pool, kDocument) == "text\n" ? 0 : 6;
              }),
              0);
}

TEST(Pool, aParentThatIgnoresTheEndOfChildrenStillGetsTexts) {
    EXPECT_EQ(inChild([] {
                  ::signal(SIGCHLD, SIG_IGN);
                  Pool pool({kAttackWorker}, tightLimits());
                  if (pool.read(inMemory("attack:crash"), DocumentKind::rtf).reason != Reason::crashed) return 1;
                  return read(pool, kDocument) == "text\n" ? 0 : 2;
              }),
              0);
}

/// Waits until the process has used so much of the processor that it must be in a loop.
void waitForLoop(pid_t process) {
    constexpr unsigned long kTicks = 3; // an ordinary document takes none
    for (unsigned long ticks = 0; ticks < kTicks;) {
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
        std::ifstream status("/proc/" + std::to_string(process) + "/stat");
        status.ignore(std::numeric_limits<std::streamsize>::max(), ')');
        constexpr int kFieldsBefore = 11; // state to cmajflt; then utime
        std::string field;
        for (int i = 0; i < kFieldsBefore; ++i)
            status >> field;
        ASSERT_TRUE(status >> ticks);
    }
}

TEST(Pool, noWorkerOutlivesItsParent) {
    int ends[2];
    ASSERT_EQ(::pipe2(ends, O_CLOEXEC), 0);
    const pid_t parent = ::fork();
    if (parent == 0) {
        Limits limits;
        limits.time = std::chrono::seconds(100);
        Pool pool({kAttackWorker}, limits);
        static_cast<void>(read(pool, kDocument));
        const pid_t worker = pool.idleWorkers().at(0);
        static_cast<void>(::write(ends[1], &worker, sizeof worker));
        static_cast<void>(read(pool, "attack:loop"));
        ::_exit(0);
    }
    pid_t worker = -1;
    ASSERT_EQ(::read(ends[0], &worker, sizeof worker), static_cast<ssize_t>(sizeof worker));
    waitForLoop(worker);
    // Orphans become children of this process, so that their end can be seen.
    ::prctl(PR_SET_CHILD_SUBREAPER, 1);
    ::kill(parent, SIGKILL);
    ::waitpid(parent, nullptr, 0);
    int status = 0;
    while (::waitpid(worker, &status, 0) < 0 && errno == EINTR) {
    }
    ::prctl(PR_SET_CHILD_SUBREAPER, 0);
    EXPECT_TRUE(WIFSIGNALED(status));
    ::close(ends[0]);
    ::close(ends[1]);
}

TEST(Pool, aWorkerSurvivesTheThreadThatAskedFirst) {
    Pool pool({kWorker});
    std::thread([&] { static_cast<void>(read(pool, kDocument)); }).join();
    const std::vector<pid_t> before = pool.idleWorkers();
    EXPECT_EQ(read(pool, kDocument), "text\n");
    EXPECT_EQ(pool.idleWorkers(), before);
}

TEST(Pool, tenThousandDocumentsLeaveNoDescriptorAndNoProcess) {
    const std::size_t before = openDescriptors();
    {
        Pool pool({kWorker});
        std::size_t texts = 0;
        for (int i = 0; i < 10'000; ++i)
            texts += read(pool, kDocument) == "text\n";
        EXPECT_EQ(texts, 10'000U);
        EXPECT_LE(pool.idleWorkers().size(), 1U);
    }
    EXPECT_EQ(openDescriptors(), before);
    EXPECT_FALSE(hasChildren());
}

TEST(Pool, workersThatCrashLeaveNoDescriptorAndNoProcess) {
    const std::size_t before = openDescriptors();
    {
        Pool pool({kAttackWorker}, tightLimits());
        for (int i = 0; i < 50; ++i)
            EXPECT_EQ(pool.read(inMemory(i % 2 == 0 ? "attack:crash" : "attack:garbage"), DocumentKind::rtf).reason,
                      Reason::crashed);
    }
    EXPECT_EQ(openDescriptors(), before);
    EXPECT_FALSE(hasChildren());
}

TEST(Pool, eightThreadsGetTheirOwnTexts) {
    Pool pool({kAttackWorker}, tightLimits());
    std::atomic<int> wrong = 0;
    std::vector<std::thread> threads;
    for (int t = 0; t < 8; ++t)
        threads.emplace_back([&, t] {
            for (int i = 0; i < 100; ++i) {
                const std::string own = std::to_string(t) + " " + std::to_string(i);
                if (i % 20 == 7) wrong += !read(pool, "attack:crash").starts_with("crashed");
                wrong += read(pool, "{\\rtf1 " + own + "}") != own + "\n";
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(wrong, 0);
    EXPECT_LE(pool.idleWorkers().size(), 8U);
}

TEST(Pool, saysWhatProtectsTheSystem) {
    Pool pool({kWorker});
    const Isolation isolation = std::get<Isolation>(pool.isolation());
    EXPECT_TRUE(isolation.limits);
    EXPECT_TRUE(isolation.privileges);
    EXPECT_EQ(read(pool, kDocument), "text\n");
    EXPECT_EQ(pool.idleWorkers().size(), 1U);
}

#if !defined(__SANITIZE_ADDRESS__) // its runtime keeps standard error
TEST(Pool, aWorkerHasNoEnvironmentAndNoDescriptorsButItsChannels) {
    ::setenv("QUILLOW_TEST_SECRET", "secret", 1);
    const FileDescriptor inheritable(::open("/dev/null", O_RDONLY)); // without O_CLOEXEC
    Pool pool({kWorker});
    static_cast<void>(read(pool, kDocument));
    const std::string process = "/proc/" + std::to_string(pool.idleWorkers().at(0));
    if (::geteuid() != 0) GTEST_SKIP() << "only root can look into a worker";
    std::ifstream environment(process + "/environ", std::ios::binary);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(environment), {}), "");
    const std::filesystem::directory_iterator descriptors(process + "/fd");
    EXPECT_EQ(std::distance(begin(descriptors), end(descriptors)), kChannels);
}
#endif

Limits withThreads(unsigned threads) {
    Limits limits;
    limits.threads = threads;
    return limits;
}

std::string threadsThatRead(const Limits& limits, unsigned wanted) {
    Pool pool({kAttackWorker}, limits);
    Options options;
    options.threads = wanted;
    return pool.read(inMemory("attack:threads"), DocumentKind::rtf, options).text.value_or("none");
}

TEST(Pool, aWorkerHasTheThreadsOfItsLimits) {
    for (const unsigned threads : {1U, 2U, 5U})
        EXPECT_EQ(threadsThatRead(withThreads(threads), threads), std::to_string(threads) + "\n");
    EXPECT_EQ(threadsThatRead(withThreads(5), 2), "2\n");
}

TEST(Pool, aWorkerWithLittleMemoryHasFewThreads) {
    Limits limits = withThreads(kMaximumThreads);
    limits.memory = 3 * kAddressesOfAThread;
    EXPECT_EQ(threadsThatRead(limits, 3), "3\n");
    Pool pool({kAttackWorker}, limits);
    pool.prepare(kMaximumThreads);
    EXPECT_EQ(read(pool, kDocument), "text\n");
    const std::filesystem::directory_iterator tasks("/proc/" + std::to_string(pool.idleWorkers().at(0)) + "/task");
    EXPECT_EQ(std::distance(begin(tasks), end(tasks)), 3);
}

TEST(Pool, aWorkerWithMoreThreadsServesADocumentThatNeedsOne) {
    Pool pool({kAttackWorker}, withThreads(3));
    Options options;
    options.threads = 3;
    static_cast<void>(pool.read(inMemory("attack:threads"), DocumentKind::rtf, options));
    const std::vector<pid_t> before = pool.idleWorkers();
    EXPECT_EQ(read(pool, kDocument), "text\n");
    EXPECT_EQ(pool.idleWorkers(), before);
}

TEST(Pool, aWorkerWithTooFewThreadsWaitsForAnotherDocument) {
    Pool pool({kAttackWorker}, withThreads(3));
    static_cast<void>(read(pool, kDocument));
    Options options;
    options.threads = 3;
    EXPECT_EQ(pool.read(inMemory("attack:threads"), DocumentKind::rtf, options).text, "3\n");
    EXPECT_EQ(pool.idleWorkers().size(), 2U);
}

TEST(Pool, onlyLongPdfsGainBySeveralThreads) {
    EXPECT_EQ(usefulThreads(DocumentKind::pdf, std::size_t{10} << 20, 4), 4U);
    EXPECT_EQ(usefulThreads(DocumentKind::pdf, 1000, 4), 1U);
    EXPECT_EQ(usefulThreads(DocumentKind::html, std::size_t{10} << 20, 4), 1U);
}

TEST(Pool, noThreadOfAWorkerHasRights) {
    Pool pool({kWorker}, withThreads(3));
    pool.prepare(3);
    static_cast<void>(read(pool, kDocument));
    int threads = 0;
    for (const auto& task :
         std::filesystem::directory_iterator("/proc/" + std::to_string(pool.idleWorkers().at(0)) + "/task")) {
        std::ifstream file(task.path() / "status");
        const std::string status(std::istreambuf_iterator<char>(file), {});
        EXPECT_NE(status.find("CapEff:\t0000000000000000\n"), std::string::npos) << status;
        EXPECT_NE(status.find("NoNewPrivs:\t1\n"), std::string::npos) << status;
        EXPECT_NE(status.find("Seccomp:\t2\n"), std::string::npos) << status;
        ++threads;
    }
    EXPECT_EQ(threads, 3);
}

TEST(Pool, aWorkerEndsWithItsPool) {
    pid_t worker = -1;
    {
        Pool pool({kWorker});
        static_cast<void>(read(pool, kDocument));
        worker = pool.idleWorkers().at(0);
    }
    waitForEnd(worker);
    EXPECT_FALSE(hasChildren());
}

} // namespace
} // namespace quillow::worker
