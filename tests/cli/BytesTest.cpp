// The two stores of a document's bytes: a growing buffer, and a mapping whose file may become shorter.
#include "cli/Input.h"
#include "tests/cli/TemporaryFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <optional>
#include <utility>

namespace quillow::cli {
namespace {

using test::TemporaryFolder;

constexpr std::size_t kPages = 4 * 4096;

MappedFile mapped(const std::string& path) {
    FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    struct stat status = {};
    EXPECT_EQ(::fstat(file.number(), &status), 0);
    return MappedFile::map(file, status).value();
}

/// Maps a file at the address `at`, or anywhere if that is null, and then truncates the file to 0 bytes.
const volatile std::byte* foreignMapping(const std::string& path, const void* at) {
    const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    const int fixed = at == nullptr ? 0 : MAP_FIXED_NOREPLACE;
    void* const begin = ::mmap(const_cast<void*>(at), kPages, PROT_READ, MAP_PRIVATE | fixed, file.number(), 0);
    EXPECT_NE(begin, MAP_FAILED);
    std::filesystem::resize_file(path, 0);
    return static_cast<const volatile std::byte*>(begin);
}

TEST(Bytes, growingKeepsWhatWasRead) {
    Bytes bytes;
    ASSERT_TRUE(bytes.grow(4));
    std::memcpy(bytes.room().data(), "text", 4);
    bytes.added(4);

    ASSERT_TRUE(bytes.grow(100'000));

    EXPECT_EQ(std::memcmp(bytes.view().data(), "text", 4), 0);
    EXPECT_EQ(bytes.view().size(), 4U);
    EXPECT_GE(bytes.room().size(), 99'996U);
}

TEST(MappedFile, staysGuardedWhenItTakesAnothersPlace) {
    const TemporaryFolder folder;
    const std::string path = folder.put("b", std::string(2 * kPages, 'x'));
    MappedFile kept = mapped(folder.put("a", std::string(kPages, 'x')));
    {
        MappedFile other = mapped(path);
        kept = std::move(other);
    }
    ASSERT_EQ(kept.view().size(), 2 * kPages);

    std::filesystem::resize_file(path, 0);

    EXPECT_EQ(kept.view().back(), std::byte{0});
    EXPECT_TRUE(kept.hasChanged());
}

TEST(MappedFile, guardsNoOtherMapping) {
    const TemporaryFolder folder;
    const MappedFile guarded = mapped(folder.put("a", std::string(kPages, 'x')));
    const volatile std::byte* const foreign = foreignMapping(folder.put("b", std::string(kPages, 'x')), nullptr);

    EXPECT_EXIT(static_cast<void>(foreign[0]), testing::KilledBySignal(SIGBUS), "");
}

TEST(MappedFile, guardsNothingOnceItIsGone) {
    const TemporaryFolder folder;
    std::optional<MappedFile> guarded = mapped(folder.put("a", std::string(kPages, 'x')));
    const void* const place = guarded->view().data();
    guarded.reset();
    const volatile std::byte* const foreign = foreignMapping(folder.put("b", std::string(kPages, 'x')), place);

    EXPECT_EXIT(static_cast<void>(foreign[0]), testing::KilledBySignal(SIGBUS), "");
}

} // namespace
} // namespace quillow::cli
