#include "cli/Input.h"

#include "cli/FileDescriptor.h"
#include "tests/cli/TemporaryFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <optional>
#include <vector>

namespace quillow::cli {
namespace {

using test::TemporaryFolder;

std::string textOf(const InputOutcome& outcome) {
    const auto* const document = std::get_if<InputDocument>(&outcome);
    if (document == nullptr) return "failed: " + std::get<InputFailure>(outcome).detail;
    const auto bytes = document->bytes.view();
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

InputFailure failureOf(const InputOutcome& outcome) {
    const auto* const failure = std::get_if<InputFailure>(&outcome);
    return failure == nullptr ? InputFailure{Reason::ok, {}} : *failure;
}

TEST(Input, readsTheWholeFile) {
    const TemporaryFolder folder;
    const std::string large(300'000, 'x');

    EXPECT_EQ(textOf(readInput(folder.put("a.rtf", "hello"))), "hello");
    EXPECT_EQ(textOf(readInput(folder.put("b.rtf", ""))), "");
    EXPECT_EQ(textOf(readInput(folder.put("c.rtf", large))), large);
}

TEST(Input, readsFilesThatDoNotSayTheirSize) {
    EXPECT_NE(textOf(readInput("/proc/self/status")).find("Name:"), std::string::npos);
}

TEST(Input, errorInReadingIsTold) {
    EXPECT_EQ(failureOf(readInput("/proc/self/mem")).reason, Reason::unreadable);
}

TEST(Input, largeRtfIsMapped) {
    const TemporaryFolder folder;
    const std::string rtf = "{\\rtf1 " + std::string(kMappedFrom, 'x') + "}";

    EXPECT_EQ(textOf(readInput(folder.put("a.rtf", rtf))), rtf);
}

TEST(Input, mappedFileThatIsCutShortEndsInZerosAndSaysSo) {
    const TemporaryFolder folder;
    const std::string path = folder.put("a.rtf", "{\\rtf1 " + std::string(2 * kMappedFrom, 'x') + "}");
    const InputOutcome outcome = readInput(path);
    const auto& document = std::get<InputDocument>(outcome);
    const auto bytes = document.bytes.view();
    EXPECT_FALSE(document.bytes.haveChanged());

    std::filesystem::resize_file(path, kMappedFrom);

    EXPECT_EQ(bytes[kMappedFrom - 1], std::byte{'x'});
    EXPECT_EQ(bytes.back(), std::byte{0});
    EXPECT_EQ(bytes[kMappedFrom + kMappedFrom / 2], std::byte{0});
    EXPECT_EQ(bytes[0], std::byte{'{'});
    EXPECT_TRUE(document.bytes.haveChanged());
}

TEST(Input, mappedFileThatIsWrittenToHasChanged) {
    const TemporaryFolder folder;
    const std::string path = folder.put("a.rtf", "{\\rtf1 " + std::string(kMappedFrom, 'x') + "}");
    const InputOutcome outcome = readInput(path);

    std::filesystem::last_write_time(path, std::filesystem::file_time_type::clock::now() + std::chrono::hours(1));

    EXPECT_TRUE(std::get<InputDocument>(outcome).bytes.haveChanged());
}

std::optional<MappedFile> mapped(const std::string& path) {
    FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    struct stat status = {};
    if (::fstat(file.number(), &status) != 0) return std::nullopt;
    return MappedFile::map(file, status);
}

TEST(MappedFile, thereIsABoundToHowManyThereAre) {
    const TemporaryFolder folder;
    const std::string path = folder.put("a", "text");
    std::vector<MappedFile> mappings;
    while (auto mapping = mapped(path))
        mappings.push_back(std::move(*mapping));

    EXPECT_EQ(mappings.size(), MappedFile::kMostMappings);
    mappings.pop_back();
    EXPECT_TRUE(mapped(path));
}

TEST(MappedFile, busErrorsElsewhereEndTheProgram) {
    const TemporaryFolder folder;
    const auto mapping = mapped(folder.put("a", "text"));
    ASSERT_TRUE(mapping);

    EXPECT_EXIT(static_cast<void>(::kill(::getpid(), SIGBUS)); ::pause(), testing::KilledBySignal(SIGBUS), "");
}

TEST(Input, missingFileAndFolderSayWhatIsWrong) {
    const TemporaryFolder folder;

    const InputFailure missing = failureOf(readInput(folder.at("none.rtf")));
    EXPECT_EQ(missing.reason, Reason::unreadable);
    EXPECT_EQ(missing.detail, "No such file or directory");
    const InputFailure plainFolder = failureOf(readInput(folder.at("")));
    EXPECT_EQ(plainFolder.reason, Reason::unreadable);
    EXPECT_EQ(plainFolder.detail, "is a folder");
}

TEST(Input, hugeFileIsTooLargeBeforeItIsRead) {
    const TemporaryFolder folder;
    const std::string path = folder.put("a.rtf", "");
    std::filesystem::resize_file(path, kMaximumInput + 1);

    EXPECT_EQ(failureOf(readInput(path)).reason, Reason::tooLarge);
}

TEST(Input, bundleGivesItsText) {
    const TemporaryFolder folder;
    folder.put("A.rtfd/TXT.rtf", "text");
    folder.put("A.rtfd/txt.rtf", "other case");
    folder.put("A.rtfd/attached.rtf", "attachment");
    folder.put("B.RTFD/Txt.RTF", "other case");
    folder.put("B.RTFD/attached.rtf", "attachment");
    folder.put("c.rtfd/only.rtf", "only");
    folder.put("c.rtfd/picture.png", "picture");

    const InputOutcome outcome = readInput(folder.at("A.rtfd"));
    EXPECT_EQ(textOf(outcome), "text");
    EXPECT_EQ(std::get<InputDocument>(outcome).kind, InputKind::bundle);
    EXPECT_EQ(textOf(readInput(folder.at("B.RTFD"))), "other case");
    EXPECT_EQ(textOf(readInput(folder.at("c.rtfd"))), "only");
}

TEST(Input, bundleWithoutOneTextIsDamaged) {
    const TemporaryFolder folder;
    folder.put("none.rtfd/picture.png", "");
    folder.put("two.rtfd/a.rtf", "");
    folder.put("two.rtfd/b.rtf", "");
    std::filesystem::create_directories(folder.at("folder.rtfd/TXT.rtf"));

    EXPECT_EQ(failureOf(readInput(folder.at("none.rtfd"))).detail, "the bundle holds no RTF text");
    EXPECT_EQ(failureOf(readInput(folder.at("two.rtfd"))).detail, "the bundle holds several RTF files and no TXT.rtf");
    EXPECT_EQ(failureOf(readInput(folder.at("folder.rtfd"))).reason, Reason::damaged);
}

TEST(Input, bundleNeverWaitsForAPipe) {
    const TemporaryFolder folder;
    folder.put("a.rtfd/x", "");
    ASSERT_EQ(::mkfifo(folder.at("a.rtfd/TXT.rtf").c_str(), 0600), 0);

    EXPECT_EQ(failureOf(readInput(folder.at("a.rtfd"))).reason, Reason::damaged);
}

TEST(Input, fileWithTheBundlesExtensionIsAFile) {
    const TemporaryFolder folder;

    const InputOutcome outcome = readInput(folder.put("a.rtfd", "text"));

    EXPECT_EQ(textOf(outcome), "text");
    EXPECT_EQ(std::get<InputDocument>(outcome).kind, InputKind::file);
}

} // namespace
} // namespace quillow::cli
