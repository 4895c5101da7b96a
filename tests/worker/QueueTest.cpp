// A queue: a document waits in the worker that reads another one.
#include "worker/Queue.h"

#include "tests/worker/PoolFixture.h"

#include <atomic>
#include <ostream>
#include <string>
#include <thread>
#include <vector>

namespace quillow::worker {
namespace {

using namespace test;

constexpr std::string_view kDocument = "{\\rtf1 text}";

void give(Queue& queue, std::string_view document, unsigned threads = 1) {
    Options options;
    options.threads = threads;
    queue.give(inMemory(document), {DocumentKind::rtf, options});
}

std::string take(Queue& queue) {
    const Extraction extraction = queue.take();
    return extraction.text.value_or(std::string(reasonName(extraction.reason)) + ": " + extraction.detail);
}

TEST(Queue, documentsAreReadInTheirOrderByOneWorker) {
    Pool pool({kWorker});
    std::vector<std::string> documents;
    for (int i = 0; i < 50; ++i)
        documents.push_back("{\\rtf1 " + std::to_string(i) + "}");
    {
        Queue queue(pool);
        give(queue, documents[0]);
        for (std::size_t i = 0; i < documents.size(); ++i) {
            if (i + 1 < documents.size()) give(queue, documents[i + 1]);
            EXPECT_EQ(take(queue), std::to_string(i) + "\n");
        }
    }
    EXPECT_EQ(pool.idleWorkers().size(), 1U);
}

struct End {
    const char* document;
    const char* outcome;
};

[[maybe_unused]] void PrintTo(const End& end, std::ostream* out) {
    *out << end.document;
}

std::string nameOf(const testing::TestParamInfo<End>& info) {
    std::string name = std::string(info.param.document).substr(7);
    std::erase(name, '-');
    return name;
}

class QueueAttack : public testing::TestWithParam<End> {};

TEST_P(QueueAttack, costsOnlyTheDocumentThatIsRead) {
    Pool pool({kAttackWorker}, tightLimits());
    Queue queue(pool);
    give(queue, GetParam().document);
    give(queue, kDocument);
    EXPECT_EQ(take(queue), GetParam().outcome);
    EXPECT_EQ(take(queue), "text\n");
}

TEST_P(QueueAttack, costsOnlyTheDocumentThatWaited) {
    Pool pool({kAttackWorker}, tightLimits());
    Queue queue(pool);
    give(queue, kDocument);
    give(queue, GetParam().document);
    EXPECT_EQ(take(queue), "text\n");
    give(queue, kDocument);
    EXPECT_EQ(take(queue), GetParam().outcome);
    EXPECT_EQ(take(queue), "text\n");
}

TEST_P(QueueAttack, countsForEachOfTwoDocuments) {
    Pool pool({kAttackWorker}, tightLimits());
    Queue queue(pool);
    give(queue, GetParam().document);
    give(queue, GetParam().document);
    EXPECT_EQ(take(queue), GetParam().outcome);
    EXPECT_EQ(take(queue), GetParam().outcome);
}

INSTANTIATE_TEST_SUITE_P(
    ends, QueueAttack,
    testing::Values(End{"attack:loop", "timeout: it took longer than 3 seconds"},
                    End{"attack:abort", "crashed: its reader found itself in a state that must not be"},
                    End{"attack:exit", "crashed: its reader ended without an answer"},
                    End{"attack:open", "crashed: its reader made a system call that it may not make"},
                    End{"attack:not-utf-8", "crashed: its reader gave an answer that is not valid"}),
    nameOf);
#if !defined(__SANITIZE_ADDRESS__)
INSTANTIATE_TEST_SUITE_P(memory, QueueAttack,
                         testing::Values(End{"attack:allocate",
                                             "out-of-memory: the document needs more memory than it may use"},
                                         End{"attack:crash", "crashed: its reader used memory that it does not have"}),
                         nameOf);
#endif

TEST(Queue, theTimeOfADocumentBeginsWhenTheOneBeforeItHasEnded) {
    Pool pool({kAttackWorker}, tightLimits());
    Queue queue(pool);
    // Together they take longer than a document may.
    give(queue, "attack:work-two-seconds");
    give(queue, "attack:work-two-seconds");
    EXPECT_EQ(take(queue), "done\n");
    EXPECT_EQ(take(queue), "done\n");
}

TEST(Queue, anAnswerThatCameInTimeMayBeTakenLate) {
    Limits limits = tightLimits();
    limits.time = std::chrono::seconds(1);
    Pool pool({kWorker}, limits);
    Queue queue(pool);
    give(queue, kDocument);
    give(queue, kDocument);
    std::this_thread::sleep_for(std::chrono::milliseconds(1200));
    EXPECT_EQ(take(queue), "text\n");
    EXPECT_EQ(take(queue), "text\n");
}

TEST(Queue, aWorkerKilledByOthersCostsNoDocument) {
    Pool pool({kWorker});
    for (int i = 0; i < 20; ++i) {
        static_cast<void>(read(pool, kDocument));
        const pid_t worker = pool.idleWorkers().at(0);
        Queue queue(pool);
        give(queue, kDocument);
        give(queue, kDocument);
        ::kill(worker, SIGKILL);
        EXPECT_EQ(take(queue), "text\n");
        EXPECT_EQ(take(queue), "text\n");
    }
}

TEST(Queue, aLongDocumentBehindALongTextWaitsForNothing) {
    const std::string inside(std::size_t{20} << 20, 'x');
    const std::string document = "{\\rtf1 " + inside + "}";
    Pool pool({kWorker});
    Queue queue(pool);
    give(queue, document);
    give(queue, document);
    EXPECT_TRUE(take(queue) == inside + "\n");
    EXPECT_TRUE(take(queue) == inside + "\n");
}

TEST(Queue, aDocumentThatWantsMoreThreadsThanTheWorkerHasGoesToAnother) {
    Limits limits;
    limits.threads = 3;
    Pool pool({kAttackWorker}, limits);
    Queue queue(pool);
    give(queue, kDocument, 1);
    give(queue, "attack:threads", 3);
    EXPECT_EQ(take(queue), "text\n");
    EXPECT_EQ(take(queue), "3\n");
}

TEST(Queue, aWornOutWorkerIsReplaced) {
    Pool pool({kWorker});
    static_cast<void>(read(pool, kDocument));
    const std::vector<pid_t> before = pool.idleWorkers();
    {
        Queue queue(pool);
        give(queue, kDocument);
        for (unsigned i = 0; i < kDocumentsPerWorker; ++i) {
            give(queue, kDocument);
            EXPECT_EQ(take(queue), "text\n");
        }
        EXPECT_EQ(take(queue), "text\n");
    }
    EXPECT_EQ(pool.idleWorkers().size(), 1U);
    EXPECT_NE(pool.idleWorkers(), before);
}

TEST(Queue, oneThatEndsEarlyLeavesNoProcessAndNoDescriptor) {
    const std::size_t before = openDescriptors();
    {
        Pool pool({kAttackWorker}, tightLimits());
        Queue queue(pool);
        give(queue, "attack:loop");
        give(queue, kDocument);
    }
    EXPECT_EQ(openDescriptors(), before);
    EXPECT_FALSE(hasChildren());
}

TEST(Queue, withoutAProgramEachDocumentSaysSo) {
    Pool pool({"/nonexistent/quillow-worker"});
    Queue queue(pool);
    for (int i = 0; i < 2; ++i)
        give(queue, kDocument);
    for (int i = 0; i < 2; ++i)
        EXPECT_EQ(take(queue), "unreadable: no process can be started to read it: No such file or directory");
}

TEST(Queue, eightThreadsGetTheirOwnTexts) {
    Pool pool({kAttackWorker}, tightLimits());
    std::atomic<int> wrong = 0;
    std::vector<std::thread> threads;
    for (int t = 0; t < 8; ++t)
        threads.emplace_back([&, t] {
            Queue queue(pool);
            for (int i = 0; i < 100; ++i) {
                const std::string own = std::to_string(t) + " " + std::to_string(i);
                const std::string document = "{\\rtf1 " + own + "}";
                give(queue, i % 20 == 7 ? "attack:crash" : document);
                give(queue, document);
                const std::string first = take(queue);
                wrong += i % 20 == 7 ? !first.starts_with("crashed") : first != own + "\n";
                wrong += take(queue) != own + "\n";
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(wrong, 0);
}

} // namespace
} // namespace quillow::worker
