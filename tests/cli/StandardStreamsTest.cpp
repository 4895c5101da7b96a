// End to end: standard input, standard output and standard error of the real program, and their odd cases.
#include "cli/Program.h"
#include "tests/cli/Documents.h"
#include "tests/cli/RunConvert.h"
#include "tests/cli/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace quillow::cli {
namespace {

using test::kHtml;
using test::kHtmlText;
using test::kRtf;
using test::kRtfText;
using test::Outcome;
using test::pdf;
using test::readFile;
using test::run;
using test::TemporaryFolder;
using Names = std::vector<std::string>;

TEST(StandardStreams, standardInputIsSniffedOrTakenAsTold) {
    test::RunSetting setting;
    setting.input = kRtf;
    EXPECT_EQ(run({"-"}, setting).output, kRtfText);
    setting.input = kHtml;
    EXPECT_EQ(run({"-"}, setting).output, kHtmlText);
    setting.input = pdf("plain");
    EXPECT_EQ(run({"-"}, setting).output, readFile(QUILLOW_SOURCE_DIR "/tests/data/pdf/plain.txt"));
    setting.input = "no tags at all";
    EXPECT_EQ(run({"--type", "html", "-"}, setting).output, "no tags at all\n");
    EXPECT_EQ(run({"-"}, setting).exitCode, kNothingAccepted);
}

TEST(StandardStreams, emptyStandardInputFails) {
    EXPECT_EQ(run({"-"}).exitCode, kSomeFailed);
    EXPECT_EQ(run({"--type", "rtf", "-"}).errors, "quillow-convert: -: damaged (the file is empty)\n");
    EXPECT_EQ(run({"--type", "html", "-"}).exitCode, kAllConverted);
}

TEST(StandardStreams, standardInputsTextIsNamedStdin) {
    const TemporaryFolder folder;
    test::RunSetting setting;
    setting.input = kRtf;

    EXPECT_EQ(run({"-o", folder.at("out"), "-"}, setting).exitCode, kAllConverted);

    EXPECT_EQ(folder.names("out"), Names{"stdin.txt"});
}

TEST(StandardStreams, namesComeFromStandardInput) {
    const TemporaryFolder folder;
    test::RunSetting setting;
    setting.folder = folder.at("");
    folder.put("new\nline.rtf", kRtf);
    folder.put("b.html", kHtml);

    setting.input = std::string("new\nline.rtf\0b.html\0", 20);
    EXPECT_EQ(run({"-0", "--files-from", "-"}, setting).output, std::string(kRtfText) + std::string(kHtmlText));
    setting.input = "b.html\nb.html\n";
    EXPECT_EQ(run({"--files-from=-"}, setting).output, std::string(kHtmlText) + std::string(kHtmlText));
    EXPECT_EQ(run({"--files-from", "none"}, setting).exitCode, kSomeFailed);
}

TEST(StandardStreams, fullStandardOutputIsAFailure) {
    const TemporaryFolder folder;
    test::RunSetting setting;
    setting.outputPath = "/dev/full";
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{folder.put("a.rtf", kRtf)}, {"--help"}, {"--version"}}) {
        const Outcome done = run(arguments, setting);
        EXPECT_EQ(done.exitCode, kDestinationUnwritable);
        EXPECT_EQ(done.errors, "quillow-convert: standard output: unwritable (No space left on device)\n");
    }
}

TEST(StandardStreams, readerThatGoesAwayEndsTheRunQuietly) {
    const TemporaryFolder folder;
    const std::string rtf = folder.put("a.rtf", kRtf);
    // The reader may go before or after the first text, so there are enough texts to fill any pipe. The missing
    // document after them must not be reported.
    std::vector<std::string> arguments(20'000, rtf);
    arguments.push_back(folder.at("none.rtf"));
    test::RunSetting setting;

    setting.prefix = {"bash", "-c", "{ \"$@\"; echo $? >&2; } | head -1", "bash"};
    const Outcome done = run(arguments, setting);
    EXPECT_EQ(done.output, "Hello\n");
    EXPECT_EQ(done.errors, "141\n");

    setting.prefix = {"bash", "-c", "trap '' PIPE; { \"$@\"; echo $? >&2; } | head -1", "bash"};
    EXPECT_EQ(run(arguments, setting).errors, "141\n");
}

TEST(StandardStreams, endlessStandardInputIsGivenUp) {
    const TemporaryFolder folder;
    test::RunSetting setting;
    setting.prefix = {"bash", "-c", "yes | \"$@\"", "bash"};
    EXPECT_EQ(run({"-"}, setting).exitCode, kNothingAccepted);

#if !defined(__SANITIZE_ADDRESS__)
    setting.prefix = {"bash", "-c", "yes | prlimit --as=629145600 \"$@\"", "bash"}; // 600 MiB
    const Outcome typed = run({"--type", "html", "-"}, setting);
    EXPECT_EQ(typed.exitCode, kSomeFailed);
    EXPECT_EQ(typed.errors, "quillow-convert: -: too-large (over 256 MiB, the most from standard input or a pipe)\n");
#endif
}

TEST(StandardStreams, closedStandardStreamsNeverBecomeOutputFiles) {
    const TemporaryFolder folder;
    const std::string rtf = folder.put("a.rtf", kRtf);
    test::RunSetting setting;

    setting.prefix = {"bash", "-c", "\"$@\" >&-; echo $? >&2", "bash"};
    EXPECT_TRUE(run({rtf}, setting).errors.ends_with("\n4\n"));

    setting.prefix = {"bash", "-c", "\"$@\" <&- >&- 2>&-", "bash"};
    EXPECT_EQ(run({"-v", "-o", folder.at("out"), rtf, folder.at("none.rtf")}, setting).exitCode, kSomeFailed);
    EXPECT_EQ(readFile(folder.at("out/a.txt")), kRtfText);
}

TEST(StandardStreams, namedPipeIsRead) {
    const TemporaryFolder folder;
    test::RunSetting setting;
    setting.prefix = {"bash", "-c", "\"$1\" <(cat \"$2\")", "bash"};

    EXPECT_EQ(run({folder.put("a.rtf", kRtf)}, setting).output, kRtfText);
}

} // namespace
} // namespace quillow::cli
