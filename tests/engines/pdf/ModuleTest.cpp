#include "engines/pdf/Module.h"

#include "engines/pdf/Reader.h"
#include "tests/engines/DataFiles.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <array>
#include <fstream>
#include <functional>
#include <future>
#include <new>

namespace quillow::pdf {
namespace {

using test::asBytes;
using test::dataFile;
using test::fileContent;

TEST(Module, opensDocumentsFromSeveralThreadsAtOnce) {
    const std::string document = fileContent(dataFile("pdf/plain.in"));
    std::array<std::future<std::size_t>, 4> counts;
    for (auto& count : counts)
        count = std::async(std::launch::async, [&] { return Module::installed().open(asBytes(document))->count(); });

    for (auto& count : counts)
        EXPECT_EQ(count.get(), 2U);
    EXPECT_EQ(Module::installed().failure(), "");
}

TEST(Module, saysWhyItCouldNotBeLoaded) {
    const Module missing("/nowhere/no-such-module.so");

    EXPECT_EQ(missing.open(asBytes("%PDF-1.7\n")), nullptr);
    EXPECT_NE(missing.failure().find("no-such-module.so"), std::string::npos);
}

TEST(Module, libraryWithoutTheEntryPointIsNone) {
    const Module other("libm.so.6");

    EXPECT_EQ(other.open(asBytes("%PDF-1.7\n")), nullptr);
    EXPECT_NE(other.failure().find("quillowOpenPdf"), std::string::npos);
}

TEST(Module, withoutItNoPdfIsReadAndTheReasonSaysSo) {
    const Extraction extraction =
        readWith(Module("/nowhere/no-such-module.so"), asBytes(fileContent(dataFile("pdf/plain.in"))), {});

    EXPECT_EQ(extraction.reason, Reason::unreadable);
    EXPECT_FALSE(extraction.text);
    EXPECT_TRUE(extraction.detail.starts_with("what reads PDFs is not installed: ")) << extraction.detail;
}

#if !defined(__SANITIZE_ADDRESS__)
/// Runs it in a process that may have only so much more memory than it has.
template <typename Call>
void withRoomFor(std::size_t bytes, const Call& call) {
    std::ifstream sizes("/proc/self/statm");
    std::size_t pages = 0;
    sizes >> pages;
    const rlim_t limit = pages * static_cast<std::size_t>(::sysconf(_SC_PAGESIZE)) + bytes;
    const rlimit limits = {limit, limit};
    ::setrlimit(RLIMIT_AS, &limits);
    call();
}

/// 0 where the call says that memory has ended, 1 where it does something else.
int saysThatMemoryEnded(const std::function<void()>& call) {
    try {
        call();
    } catch (const std::bad_alloc&) {
        return 0;
    }
    return 1;
}

TEST(Module, isNotLoadedWhereMemoryIsShort) {
    const auto load = [] { static_cast<void>(Module("libm.so.6")); };

    EXPECT_EXIT(withRoomFor(kRoomToLoad - (4 << 20), [&] { ::_exit(saysThatMemoryEnded(load)); }),
                testing::ExitedWithCode(0), "");
    EXPECT_EXIT(withRoomFor(kRoomToLoad + (4 << 20), [&] { ::_exit(saysThatMemoryEnded(load)); }),
                testing::ExitedWithCode(1), "");
}

TEST(Module, documentIsNotBegunWhereMemoryIsShort) {
    const std::string document = fileContent(dataFile("pdf/plain.in"));
    const Module& module = Module::installed();
    const auto open = [&] { static_cast<void>(module.open(asBytes(document))); };

    EXPECT_EXIT(withRoomFor(kRoomToRead - (4 << 20), [&] { ::_exit(saysThatMemoryEnded(open)); }),
                testing::ExitedWithCode(0), "");
    EXPECT_EXIT(withRoomFor(kRoomToRead + (4 << 20), [&] { ::_exit(saysThatMemoryEnded(open)); }),
                testing::ExitedWithCode(1), "");
}
#endif

} // namespace
} // namespace quillow::pdf
