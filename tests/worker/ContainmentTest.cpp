// Attacks by documents: each is contained, gets its reason, and the next document is read.
#include "tests/worker/PoolFixture.h"

#include <fcntl.h>
#include <unistd.h>

#include <ostream>

namespace quillow::worker {
namespace {

using namespace test;

struct Attack {
    const char* document;
    const char* outcome;
};

[[maybe_unused]] void PrintTo(const Attack& attack, std::ostream* out) {
    *out << attack.document;
}

std::string nameOf(const testing::TestParamInfo<Attack>& info) {
    std::string name;
    for (const char c : std::string(info.param.document).substr(7))
        if (c != '-') name += c;
    return name;
}

class Containment : public testing::TestWithParam<Attack> {};

TEST_P(Containment, anAttackHasItsReasonAndTheNextDocumentIsRead) {
    Pool pool({kAttackWorker}, tightLimits());
    EXPECT_EQ(read(pool, GetParam().document), GetParam().outcome);
    EXPECT_EQ(read(pool, "{\\rtf1 next}"), "next\n");
}

constexpr const char* kSystemCall = "crashed: its reader made a system call that it may not make";
constexpr const char* kInvalid = "crashed: its reader gave an answer that is not valid";
constexpr const char* kLate = "timeout: it took longer than 3 seconds";
constexpr const char* kMemory = "crashed: its reader used memory that it does not have";

INSTANTIATE_TEST_SUITE_P(time, Containment,
                         testing::Values(Attack{"attack:loop", kLate}, Attack{"attack:sleep", kLate},
                                         Attack{"attack:drip", kLate}, Attack{"attack:promise-much", kLate}),
                         nameOf);
#if !defined(__SANITIZE_ADDRESS__)
INSTANTIATE_TEST_SUITE_P(memory, Containment,
                         testing::Values(Attack{"attack:allocate",
                                                "out-of-memory: the document needs more memory than it may use"},
                                         Attack{"attack:overflow", kMemory}, Attack{"attack:crash", kMemory}),
                         nameOf);
#endif
INSTANTIATE_TEST_SUITE_P(ends, Containment,
                         testing::Values(Attack{"attack:abort",
                                                "crashed: its reader found itself in a state that must not be"},
                                         Attack{"attack:exit", "crashed: its reader ended without an answer"},
                                         Attack{"attack:half", "crashed: its reader ended without an answer"}),
                         nameOf);
INSTANTIATE_TEST_SUITE_P(
    systemCalls, Containment,
    testing::Values(Attack{"attack:open", kSystemCall}, Attack{"attack:create", kSystemCall},
                    Attack{"attack:socket", kSystemCall}, Attack{"attack:fork", kSystemCall},
                    Attack{"attack:thread", kSystemCall}, Attack{"attack:clone-thread", kSystemCall},
                    Attack{"attack:exec", kSystemCall}, Attack{"attack:executable-memory", kSystemCall},
                    Attack{"attack:make-executable", kSystemCall}, Attack{"attack:ptrace", kSystemCall},
                    Attack{"attack:signal-parent", kSystemCall}, Attack{"attack:read-parent", kSystemCall},
                    Attack{"attack:raise-limit", kSystemCall}, Attack{"attack:change-mode", kSystemCall}),
    nameOf);
INSTANTIATE_TEST_SUITE_P(answers, Containment,
                         testing::Values(Attack{"attack:garbage", kInvalid}, Attack{"attack:promise", kInvalid},
                                         Attack{"attack:flood", kInvalid}, Attack{"attack:no-text-form", kInvalid},
                                         Attack{"attack:not-utf-8", kInvalid},
                                         Attack{"attack:forbidden-reason", kInvalid},
                                         Attack{"attack:long-text", "too-large: the text is longer than 1 MiB"},
                                         Attack{"attack:forged", kInvalid}),
                         nameOf);

#if !defined(__SANITIZE_ADDRESS__) // its runtime needs to write
TEST(Containment, aDocumentsDescriptorCannotBeWritten) {
    const std::string path = testing::TempDir() + "attacked-document-" + std::to_string(::getpid());
    const int file = ::open(path.c_str(), O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    constexpr std::string_view kDocument = "attack:write-document with bytes";
    ASSERT_EQ(::write(file, kDocument.data(), kDocument.size()), static_cast<ssize_t>(kDocument.size()));
    ::close(file);
    const FileDescriptor reading(::open(path.c_str(), O_RDONLY | O_CLOEXEC));

    Pool pool({kAttackWorker}, tightLimits());
    const Extraction extraction = pool.read({{}, reading.number(), kDocument.size()}, DocumentKind::rtf);

    EXPECT_EQ(extraction.text, "refused\n");
    std::string now(kDocument.size(), '\0');
    EXPECT_EQ(::pread(reading.number(), now.data(), now.size(), 0), static_cast<ssize_t>(now.size()));
    EXPECT_EQ(now, kDocument);
    ::unlink(path.c_str());
}
#endif

std::string readByThreads(Pool& pool, std::string_view bytes, unsigned threads) {
    Options options;
    options.threads = threads;
    const Extraction extraction = pool.read(inMemory(bytes), DocumentKind::rtf, options);
    return extraction.text.value_or(std::string(reasonName(extraction.reason)) + ": " + extraction.detail);
}

TEST(Containment, aHelpingThreadIsLockedInToo) {
    Limits limits = tightLimits();
    limits.memory = std::size_t{1} << 30;
    limits.threads = 2;
    Pool pool({kAttackWorker}, limits);
    EXPECT_EQ(readByThreads(pool, "attack:helper-open", 2), kSystemCall);
    EXPECT_EQ(readByThreads(pool, "attack:helper-abort", 2),
              "crashed: its reader found itself in a state that must not be");
    EXPECT_EQ(readByThreads(pool, "attack:helper-loop", 2), kLate);
#if !defined(__SANITIZE_ADDRESS__)
    EXPECT_EQ(readByThreads(pool, "attack:helper-overflow", 2), kMemory);
#endif
    EXPECT_EQ(readByThreads(pool, "{\\rtf1 next}", 2), "next\n");
}

TEST(Containment, withoutLandlockTheSystemCallFilterStillHolds) {
    Pool pool({kAttackWorker}, tightLimits(), LandlockUse::off);
    EXPECT_EQ(read(pool, "attack:open"), kSystemCall);
    EXPECT_EQ(read(pool, "attack:socket"), kSystemCall);
    EXPECT_EQ(read(pool, "{\\rtf1 next}"), "next\n");
    EXPECT_EQ(std::get<Isolation>(pool.isolation()).landlockAbi, 0U);
}

} // namespace
} // namespace quillow::worker
