// End to end: the files that the real program writes, their names and what becomes of those that exist already.
#include "cli/Program.h"
#include "tests/cli/Documents.h"
#include "tests/cli/RunConvert.h"
#include "tests/cli/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <chrono>
#include <filesystem>
#include <fstream>

namespace quillow::cli {
namespace {

using test::kHtml;
using test::kHtmlText;
using test::kRtf;
using test::kRtfText;
using test::linesOf;
using test::Outcome;
using test::readFile;
using test::run;
using test::Running;
using test::TemporaryFolder;
using Names = std::vector<std::string>;

TEST(TextFiles, textsGoIntoTheFolderThatIsMadeForThem) {
    const TemporaryFolder folder;
    const Outcome done = run({"-o", folder.at("out"), folder.put("a.rtf", kRtf), folder.put("b.html", kHtml)});

    EXPECT_EQ(done.exitCode, kAllConverted);
    EXPECT_EQ(done.output, "");
    EXPECT_EQ(folder.names("out"), (Names{"a.txt", "b.txt"}));
    EXPECT_EQ(readFile(folder.at("out/a.txt")), kRtfText);
    EXPECT_EQ(readFile(folder.at("out/b.txt")), kHtmlText);
}

TEST(TextFiles, outputNamesAFileAFolderOrStandardOutput) {
    const TemporaryFolder folder;
    const std::string rtf = folder.put("a.rtf", kRtf);

    EXPECT_EQ(run({"-o", "-", rtf}).output, kRtfText);
    EXPECT_EQ(run({"-o", folder.at("b.txt"), rtf}).exitCode, kAllConverted);
    EXPECT_EQ(run({"-o", folder.at("c.txt/"), rtf}).exitCode, kAllConverted);
    EXPECT_EQ(run({"-o", folder.at("c.txt"), rtf}).exitCode, kAllConverted);

    EXPECT_EQ(readFile(folder.at("b.txt")), kRtfText);
    EXPECT_EQ(folder.names("c.txt"), Names{"a.txt"});
    EXPECT_EQ(folder.names(), (Names{"a.rtf", "b.txt", "c.txt"}));
}

TEST(TextFiles, oneFileTakesOneDocument) {
    const TemporaryFolder folder;
    const std::string rtf = folder.put("a.rtf", kRtf);
    const std::string out = folder.at("out.txt");

    const Outcome done = run({"-o", out, rtf, rtf});

    EXPECT_EQ(done.exitCode, kUsage);
    EXPECT_EQ(done.errors, "quillow-convert: the texts of several documents cannot go into the one file '" + out +
                               "': name a folder; see --help\n");
    EXPECT_EQ(run({"-o", folder.at("none/out.txt"), rtf}).exitCode, kDestinationUnwritable);
    EXPECT_EQ(folder.names(), Names{"a.rtf"});
}

TEST(TextFiles, inputsThatWouldMeetInOneTextAreAllConverted) {
    const TemporaryFolder folder;
    const Outcome done = run({"-o", folder.at("out"), folder.put("z.rtf", kRtf), folder.put("a.rtf", kRtf),
                              folder.put("a.html", kHtml), folder.put("x/a.rtf", "{\\rtf1 x}")});

    EXPECT_EQ(done.exitCode, kAllConverted);
    EXPECT_EQ(done.errors, "quillow-convert: 3 texts get another name, so that none replaces another file: a.rtf.txt, "
                           "a.html.txt, a.rtf-2.txt\n");
    EXPECT_EQ(folder.names("out"), (Names{"a.html.txt", "a.rtf-2.txt", "a.rtf.txt", "z.txt"}));
    EXPECT_EQ(readFile(folder.at("out/a.rtf-2.txt")), "x\n");
}

TEST(TextFiles, inputIsNeverReplacedByAText) {
    const TemporaryFolder folder;
    const std::string input = folder.put("a.txt", kRtf);

    const Outcome beside = run({"--type", "rtf", "-o", folder.at(""), input});
    const Outcome itself = run({"--type", "rtf", "-o", input, input});

    EXPECT_EQ(beside.exitCode, kAllConverted);
    EXPECT_EQ(itself.exitCode, kDestinationUnwritable);
    EXPECT_EQ(readFile(input), kRtf);
    EXPECT_EQ(readFile(folder.at("a.txt.txt")), kRtfText);
}

TEST(TextFiles, foldersAreWalkedAndTheirTreeIsMirrored) {
    const TemporaryFolder folder;
    folder.put("docs/a.rtf", kRtf);
    folder.put("docs/x/a.html", kHtml);
    folder.put("docs/x/y/b.rtfd/TXT.rtf", kRtf);
    folder.put("docs/x/picture.png", "");
    test::RunSetting setting;
    setting.folder = folder.at("");

    const Outcome together = run({"-r", "docs"}, setting);
    const Outcome mirrored = run({"-r", "--mirror", "docs", "-o", "out", "docs"}, setting);

    EXPECT_EQ(together.exitCode, kAllConverted);
    EXPECT_EQ(together.output, std::string(kRtfText) + std::string(kHtmlText) + std::string(kRtfText));
    EXPECT_EQ(mirrored.exitCode, kAllConverted) << mirrored.errors;
    EXPECT_EQ(mirrored.errors, "");
    EXPECT_EQ(readFile(folder.at("out/a.txt")), kRtfText);
    EXPECT_EQ(readFile(folder.at("out/x/a.txt")), kHtmlText);
    EXPECT_EQ(readFile(folder.at("out/x/y/b.txt")), kRtfText);
    EXPECT_EQ(folder.names("out/x"), (Names{"a.txt", "y"}));
}

TEST(TextFiles, mirrorNeedsFolders) {
    const TemporaryFolder folder;
    const std::string rtf = folder.put("a.rtf", kRtf);

    EXPECT_EQ(run({"--mirror", folder.at("none"), "-o", folder.at("out"), rtf}).exitCode, kUsage);
    EXPECT_EQ(run({"--mirror", folder.at(""), "-o", folder.at("out.txt"), rtf}).exitCode, kUsage);
    EXPECT_EQ(folder.names(), Names{"a.rtf"});
}

TEST(TextFiles, existingTextKeepsItsModeAndItsProtection) {
    const TemporaryFolder folder;
    const std::string rtf = folder.put("a.rtf", kRtf);
    const std::string open = folder.put("out/a.txt", "old");
    ASSERT_EQ(::chmod(open.c_str(), 0600), 0);

    EXPECT_EQ(run({"-o", folder.at("out"), rtf}).exitCode, kAllConverted);
    struct stat status = {};
    ASSERT_EQ(::stat(open.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600U);

    ASSERT_EQ(::chmod(open.c_str(), 0400), 0);
    const Outcome refused = run({"-o", folder.at("out"), folder.put("x/a.rtf", "{\\rtf1 x}")});
    EXPECT_EQ(refused.exitCode, kDestinationUnwritable);
    EXPECT_TRUE(refused.errors.ends_with("unwritable (a.txt: is read-only)\n")) << refused.errors;
    EXPECT_EQ(readFile(open), kRtfText);
}

TEST(TextFiles, existingTextIsDealtWithAsSaid) {
    const TemporaryFolder folder;
    const std::string rtf = folder.put("a.rtf", kRtf);
    const std::string text = folder.put("out/a.txt", "old");
    const auto convert = [&](const std::vector<std::string>& options) {
        std::vector<std::string> arguments = {"-v", "-o", folder.at("out"), rtf};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const Outcome done = run(arguments);
        return std::to_string(done.exitCode) + " " + done.errors.substr(done.errors.find(rtf) + rtf.size() + 2);
    };

    EXPECT_EQ(convert({"--no-clobber"}), "0 skipped (a.txt already exists)\n");
    EXPECT_EQ(convert({"--if-exists", "skip"}), "0 skipped (a.txt already exists)\n");
    EXPECT_EQ(convert({"--if-exists", "error"}), "4 unwritable (a.txt: File exists)\n");
    EXPECT_EQ(convert({"--if-exists", "rename"}), "0 ok (12 bytes, a-2.txt)\n");
    EXPECT_EQ(readFile(folder.at("out/a-2.txt")), kRtfText);
    std::filesystem::last_write_time(rtf, std::filesystem::last_write_time(text) - std::chrono::hours(1));
    EXPECT_EQ(convert({"--if-exists", "newer"}), "0 skipped (a.txt is not older)\n");
    EXPECT_EQ(readFile(text), "old");
    std::filesystem::last_write_time(rtf, std::filesystem::last_write_time(text) + std::chrono::hours(1));
    EXPECT_EQ(convert({"--if-exists", "newer"}), "0 ok (12 bytes, a.txt)\n");
    EXPECT_EQ(readFile(text), kRtfText);
    std::filesystem::remove(text);
    for (const char* answer : {"skip", "error", "rename", "newer"}) {
        EXPECT_EQ(convert({"--if-exists", answer}), "0 ok (12 bytes, a.txt)\n") << answer;
        std::filesystem::remove(text);
    }
}

TEST(TextFiles, textThatComesWhileADocumentIsReadIsNotReplacedEither) {
    const TemporaryFolder folder;
    folder.put("out/a.rtf", "");
    const std::string input = folder.at("a.rtf");
    ASSERT_EQ(::mkfifo(input.c_str(), 0600), 0);
    Running running({"-v", "--no-clobber", "-o", folder.at("out"), input}, {});
    std::ofstream feed(input); // opens once the program reads; it has then seen that there is no text yet
    const std::string text = folder.put("out/a.txt", "kept");

    feed << kRtf << std::flush;
    feed.close();

    const Outcome done = running.wait();
    EXPECT_EQ(done.exitCode, kAllConverted);
    EXPECT_EQ(done.errors, "quillow-convert: " + input + ": skipped (a.txt already exists)\n");
    EXPECT_EQ(readFile(text), "kept");
    EXPECT_EQ(folder.names("out"), (Names{"a.rtf", "a.txt"}));
}

TEST(TextFiles, destinationThatCannotBeWrittenExitsWithItsOwnCode) {
    const TemporaryFolder folder;
    const std::string rtf = folder.put("a.rtf", kRtf);

    EXPECT_EQ(run({"-o", folder.at("none/out"), rtf}).exitCode, kDestinationUnwritable);
    const std::string file = folder.put("file", "");
    EXPECT_EQ(run({"-o", file, rtf}).errors,
              "quillow-convert: " + file + ": unwritable (is neither a folder nor a file that ends in .txt)\n");
    EXPECT_EQ(run({"-o", file, rtf}).exitCode, kDestinationUnwritable);
    EXPECT_EQ(run({"-o", "/proc", rtf}).exitCode, kDestinationUnwritable);
    folder.put("out/a.txt/inside", "");
    const Outcome onFolder = run({"-o", folder.at("out"), rtf});
    EXPECT_EQ(onFolder.exitCode, kDestinationUnwritable);
    EXPECT_EQ(onFolder.errors, "quillow-convert: " + rtf + ": unwritable (a.txt: Is a directory)\n");
}

TEST(TextFiles, oddFileNamesWork) {
    const TemporaryFolder folder;
    test::RunSetting setting;
    setting.folder = folder.at("");
    for (const std::string_view name : {"-o.rtf", "caf\xE9 \xFF.rtf", "new\nline.rtf", "a b  .rtf", "-"})
        folder.put(name, kRtf);

    const Outcome done =
        run({"-o", "out", "--", "-o.rtf", "caf\xE9 \xFF.rtf", "new\nline.rtf", "a b  .rtf", "-"}, setting);

    EXPECT_EQ(done.exitCode, kAllConverted) << done.errors;
    EXPECT_EQ(folder.names("out"), (Names{"-.txt", "-o.txt", "a b  .txt", "caf\xE9 \xFF.txt", "new\nline.txt"}));
    EXPECT_EQ(linesOf(run({"no\nfile.rtf"}).errors), 1U);
}

} // namespace
} // namespace quillow::cli
