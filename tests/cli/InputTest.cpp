#include "cli/Input.h"

#include "posix/FileDescriptor.h"
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

    EXPECT_EQ(textOf(readInput(folder.put("a.rtf", "hello"), Reading::whole)), "hello");
    EXPECT_EQ(textOf(readInput(folder.put("b.rtf", ""), Reading::whole)), "");
    EXPECT_EQ(textOf(readInput(folder.put("c.rtf", large), Reading::whole)), large);
}

TEST(Input, readsFilesThatDoNotSayTheirSize) {
    EXPECT_NE(textOf(readInput("/proc/self/status", Reading::whole)).find("Name:"), std::string::npos);
}

TEST(Input, errorInReadingIsTold) {
    EXPECT_EQ(failureOf(readInput("/proc/self/mem", Reading::whole)).reason, Reason::unreadable);
}

TEST(Input, largeRtfIsMapped) {
    const TemporaryFolder folder;
    const std::string rtf = "{\\rtf1 " + std::string(kMappedFrom, 'x') + "}";

    EXPECT_EQ(textOf(readInput(folder.put("a.rtf", rtf), Reading::whole)), rtf);
}

TEST(Input, mappedFileThatIsCutShortEndsInZerosAndSaysSo) {
    const TemporaryFolder folder;
    const std::string path = folder.put("a.rtf", "{\\rtf1 " + std::string(2 * kMappedFrom, 'x') + "}");
    const InputOutcome outcome = readInput(path, Reading::whole);
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
    const InputOutcome outcome = readInput(path, Reading::whole);

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

    const InputFailure missing = failureOf(readInput(folder.at("none.rtf"), Reading::whole));
    EXPECT_EQ(missing.reason, Reason::unreadable);
    EXPECT_EQ(missing.detail, "No such file or directory");
    const InputFailure plainFolder = failureOf(readInput(folder.at(""), Reading::whole));
    EXPECT_EQ(plainFolder.reason, Reason::unreadable);
    EXPECT_EQ(plainFolder.detail, "is a folder; -r takes the documents in it");
}

TEST(Input, hugeFileIsTooLargeBeforeItIsRead) {
    const TemporaryFolder folder;
    const std::string path = folder.put("a.rtf", "");
    std::filesystem::resize_file(path, kMaximumInput + 1);

    EXPECT_EQ(failureOf(readInput(path, Reading::whole)).reason, Reason::tooLarge);
}

TEST(Input, whatDoesNotSayItsSizeHasAnEarlierLimit) {
    static_assert(kMaximumStream < kMaximumInput);

    const InputFailure failure = failureOf(readInput("/dev/zero", Reading::whole));

    EXPECT_EQ(failure.reason, Reason::tooLarge);
    EXPECT_EQ(failure.detail, "over 256 MiB, the most from standard input or a pipe");
}

TEST(Input, whatIsNotRecognisedIsReadNoFurther) {
    const TemporaryFolder folder;
    const std::string page = "<html>" + std::string(1 << 20, 'x');
    const std::string noise(1 << 20, 'x');

    EXPECT_LT(textOf(readInput(folder.put("a", noise), Reading::recognised)).size(), noise.size() / 2);
    EXPECT_EQ(textOf(readInput(folder.put("b", page), Reading::recognised)), page);
    EXPECT_EQ(textOf(readInput(folder.put("c", "short"), Reading::recognised)), "short");
    EXPECT_EQ(textOf(readInput("/dev/zero", Reading::recognised)).substr(0, 1), std::string(1, '\0'));
}

TEST(Input, listIsReadWhateverItsName) {
    const TemporaryFolder folder;

    EXPECT_EQ(textOf(readList(folder.put("names.rtfd", "a.rtf\n"))), "a.rtf\n");
    EXPECT_EQ(failureOf(readList(folder.at(""))).detail, "is a folder");
}

TEST(Input, changeOfABundleIsThatOfItsText) {
    const TemporaryFolder folder;
    const std::string text = folder.put("a.rtfd/TXT.rtf", "");
    const std::string file = folder.put("b.rtf", "");

    const timespec old[] = {{1000, 0}, {2000, 7}};
    ASSERT_EQ(::utimensat(AT_FDCWD, text.c_str(), old, 0), 0);
    ASSERT_EQ(::utimensat(AT_FDCWD, file.c_str(), old, 0), 0);

    for (const std::string& path : {folder.at("a.rtfd"), file}) {
        const auto changed = changeTime(path);
        ASSERT_TRUE(changed);
        EXPECT_EQ(changed->tv_sec, 2000);
        EXPECT_EQ(changed->tv_nsec, 7);
    }
    EXPECT_FALSE(changeTime(folder.at("none")));
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

    const InputOutcome outcome = readInput(folder.at("A.rtfd"), Reading::whole);
    EXPECT_EQ(textOf(outcome), "text");
    EXPECT_EQ(std::get<InputDocument>(outcome).kind, InputKind::bundle);
    EXPECT_EQ(textOf(readInput(folder.at("B.RTFD"), Reading::whole)), "other case");
    EXPECT_EQ(textOf(readInput(folder.at("c.rtfd"), Reading::whole)), "only");
}

TEST(Input, bundleWithoutOneTextIsDamaged) {
    const TemporaryFolder folder;
    folder.put("none.rtfd/picture.png", "");
    folder.put("two.rtfd/a.rtf", "");
    folder.put("two.rtfd/b.rtf", "");
    std::filesystem::create_directories(folder.at("folder.rtfd/TXT.rtf"));

    EXPECT_EQ(failureOf(readInput(folder.at("none.rtfd"), Reading::whole)).detail, "the bundle holds no RTF text");
    EXPECT_EQ(failureOf(readInput(folder.at("two.rtfd"), Reading::whole)).detail,
              "the bundle holds several RTF files and no TXT.rtf");
    EXPECT_EQ(failureOf(readInput(folder.at("folder.rtfd"), Reading::whole)).reason, Reason::damaged);
}

TEST(Input, bundleNeverWaitsForAPipe) {
    const TemporaryFolder folder;
    folder.put("a.rtfd/x", "");
    ASSERT_EQ(::mkfifo(folder.at("a.rtfd/TXT.rtf").c_str(), 0600), 0);

    EXPECT_EQ(failureOf(readInput(folder.at("a.rtfd"), Reading::whole)).reason, Reason::damaged);
}

TEST(Input, fileWithTheBundlesExtensionIsAFile) {
    const TemporaryFolder folder;

    const InputOutcome outcome = readInput(folder.put("a.rtfd", "text"), Reading::whole);

    EXPECT_EQ(textOf(outcome), "text");
    EXPECT_EQ(std::get<InputDocument>(outcome).kind, InputKind::file);
}

} // namespace
} // namespace quillow::cli
