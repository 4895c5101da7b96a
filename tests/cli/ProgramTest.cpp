// End to end: runs the real program with arguments, and checks its exit code, output and files.
#include "cli/Program.h"

#include "tests/cli/RunConvert.h"
#include "tests/cli/TemporaryFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <fstream>
#include <functional>
#include <thread>

namespace quillow::cli {
namespace {

using test::Outcome;
using test::readFile;
using test::run;
using test::Running;
using test::TemporaryFolder;
using Names = std::vector<std::string>;

constexpr std::string_view kRtf = "{\\rtf1\\ansi Hello\\par World}";
constexpr std::string_view kRtfText = "Hello\nWorld\n";
constexpr std::string_view kHtml = "<!DOCTYPE html><title>t</title><p>One</p><p>Two</p>";
constexpr std::string_view kHtmlText = "One\n\nTwo\n";

constexpr std::string_view kWebArchive =
    "From: <Saved>\r\nMIME-Version: 1.0\r\nContent-Type: multipart/related; boundary=x\r\n\r\n--x\r\n<p>a=20b";

std::string pdfPath(const std::string& name) {
    return QUILLOW_SOURCE_DIR "/tests/data/pdf/" + name + ".in";
}

std::string pdf(const std::string& name) {
    return readFile(pdfPath(name));
}

std::size_t linesOf(const std::string& text) {
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

TEST(Program, textsGoToStandardOutputInOrder) {
    const TemporaryFolder folder;
    const std::string rtf = folder.put("a.rtf", kRtf);
    const std::string html = folder.put("b.HTM", kHtml);

    const Outcome both = run({html, rtf, html});

    EXPECT_EQ(both.exitCode, kAllConverted);
    EXPECT_EQ(both.output, std::string(kHtmlText) + std::string(kRtfText) + std::string(kHtmlText));
    EXPECT_EQ(both.errors, "");
}

TEST(Program, textsGoIntoTheFolderThatIsMadeForThem) {
    const TemporaryFolder folder;
    const Outcome done = run({"-o", folder.at("out"), folder.put("a.rtf", kRtf), folder.put("b.html", kHtml)});

    EXPECT_EQ(done.exitCode, kAllConverted);
    EXPECT_EQ(done.output, "");
    EXPECT_EQ(folder.names("out"), (Names{"a.txt", "b.txt"}));
    EXPECT_EQ(readFile(folder.at("out/a.txt")), kRtfText);
    EXPECT_EQ(readFile(folder.at("out/b.txt")), kHtmlText);
}

TEST(Program, standardInputIsSniffedOrTakenAsTold) {
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

TEST(Program, emptyStandardInputFails) {
    EXPECT_EQ(run({"-"}).exitCode, kSomeFailed);
    EXPECT_EQ(run({"--type", "rtf", "-"}).errors, "quillow-convert: -: damaged (the file is empty)\n");
    EXPECT_EQ(run({"--type", "html", "-"}).exitCode, kAllConverted);
}

TEST(Program, standardInputsTextIsNamedStdin) {
    const TemporaryFolder folder;
    test::RunSetting setting;
    setting.input = kRtf;

    EXPECT_EQ(run({"-o", folder.at("out"), "-"}, setting).exitCode, kAllConverted);

    EXPECT_EQ(folder.names("out"), Names{"stdin.txt"});
}

TEST(Program, everyFailureSaysItsReasonOnOneLine) {
    const TemporaryFolder folder;
    folder.put("folder/inside.rtf", kRtf);
    folder.put("x.rtfd/picture.png", "");
    struct Case {
        std::string path;
        std::string line;
    };
    const Case cases[] = {
        {folder.at("none.rtf"), "unreadable (No such file or directory)"},
        {folder.at("none.docx"), "unreadable (No such file or directory)"},
        {folder.at("folder"), "unreadable (is a folder; -r takes the documents in it)"},
        {folder.put("empty.rtf", ""), "damaged (the file is empty)"},
        {folder.put("empty.pdf", ""), "damaged (the file is empty)"},
        {folder.put("pdf.rtf", pdf("plain")), "wrong-type (the content is a PDF)"},
        {folder.put("html.pdf", kHtml), "wrong-type (the content is an HTML page)"},
        {folder.put("rtf.html", kRtf), "wrong-type (the content is an RTF document)"},
        {folder.put("mime.html", kWebArchive), "wrong-type (the content is a MIME web archive)"},
        {folder.put("png.html", "\x89PNG\r\n\x1A\n"), "wrong-type (the content is a PNG image)"},
        {folder.put("locked.pdf", pdf("needsPassword")), "locked (a password is needed)"},
        {folder.put("pictures.pdf", pdf("picturesOnly")), "no-text-layer (the pages hold no characters)"},
        {folder.put("cut.pdf", "%PDF-1.7\n1 0 obj"), "damaged (the document has no pages)"},
        {folder.at("x.rtfd"), "damaged (the bundle holds no RTF text)"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.path);
        const Outcome failed = run({c.path});

        EXPECT_EQ(failed.exitCode, kSomeFailed);
        EXPECT_EQ(failed.output, "");
        EXPECT_EQ(failed.errors, "quillow-convert: " + c.path + ": " + c.line + "\n");
    }
}

TEST(Program, failureWritesNoFileAndTheOthersGoOn) {
    const TemporaryFolder folder;
    const Outcome done = run({"-o", folder.at("out"), folder.at("none.rtf"), folder.put("bad.pdf", "x"),
                              folder.put("a.rtf", kRtf), folder.put("locked.pdf", pdf("needsPassword"))});

    EXPECT_EQ(done.exitCode, kSomeFailed);
    EXPECT_EQ(linesOf(done.errors), 3U);
    EXPECT_EQ(folder.names("out"), Names{"a.txt"});
}

TEST(Program, emptyTextIsConverted) {
    const TemporaryFolder folder;
    const Outcome done = run({"-o", folder.at("out"), folder.put("a.html", ""), folder.put("b.rtf", "{\\rtf1 }")});

    EXPECT_EQ(done.exitCode, kAllConverted);
    EXPECT_EQ(folder.names("out"), (Names{"a.txt", "b.txt"}));
    EXPECT_EQ(readFile(folder.at("out/a.txt")), "");
    EXPECT_EQ(readFile(folder.at("out/b.txt")), "");
}

TEST(Program, partOfADocumentIsWrittenAndWarnedOf) {
    const TemporaryFolder folder;
    const std::string path = folder.put("a.pdf", pdf("missingPage"));

    const Outcome lenient = run({path});
    const Outcome strict = run({"--strict", path});

    EXPECT_EQ(lenient.exitCode, kAllConverted);
    EXPECT_EQ(lenient.errors, "quillow-convert: " + path + ": partial (1 of 3 pages cannot be read)\n");
    EXPECT_EQ(strict.exitCode, kSomeFailed);
    EXPECT_EQ(strict.output, lenient.output);
    EXPECT_EQ(linesOf(lenient.output), 3U);
}

TEST(Program, quietSaysNothingAndVerboseSpeaksOfEveryDocument) {
    const TemporaryFolder folder;
    const std::string good = folder.put("a.rtf", kRtf);
    const std::string partial = folder.put("b.pdf", pdf("missingPage"));

    const Outcome quiet = run({"-q", good, partial, folder.at("none.rtf")});
    EXPECT_EQ(quiet.exitCode, kSomeFailed);
    EXPECT_EQ(quiet.errors, "");

    const Outcome verbose = run({"-v", good});
    EXPECT_EQ(verbose.errors, "quillow-convert: " + good + ": ok (12 bytes)\n");
    const Outcome filed = run({"-v", "-o", folder.at("out"), good});
    EXPECT_EQ(filed.errors, "quillow-convert: " + good + ": ok (12 bytes, a.txt)\n");
    const std::string two = folder.put("two.pdf", pdf("plain"));
    EXPECT_EQ(run({"-v", two}).errors, "quillow-convert: " + two + ": ok (47 bytes, 2 pages)\n");
}

TEST(Program, mistakesInTheArgumentsExitWithUsage) {
    EXPECT_EQ(run({}).exitCode, kUsage);
    EXPECT_EQ(run({"--colour", "x.rtf"}).exitCode, kUsage);
    EXPECT_EQ(run({"--type", "doc", "-"}).exitCode, kUsage);
    EXPECT_EQ(run({"-", "-"}).exitCode, kUsage);
    EXPECT_EQ(run({"--colour"}).errors, "quillow-convert: unknown option '--colour'; see --help\n");
    EXPECT_EQ(run({"-j", "99999999999", "x.rtf"}).errors,
              "quillow-convert: the number of jobs must be from 1 to 256, not '99999999999'; see --help\n");
}

TEST(Program, helpAndVersionGoToStandardOutput) {
    const Outcome help = run({"--help"});
    EXPECT_EQ(help.exitCode, kAllConverted);
    EXPECT_TRUE(help.output.starts_with("Usage: quillow-convert"));
    EXPECT_TRUE(run({"--version"}).output.starts_with("quillow-convert "));
}

TEST(Program, helpTellsOfEveryOptionThatItTakes) {
    const std::string help = run({"--help"}).output;
    for (const char* option : {"--output", "--recursive",   "--files-from",      "--null",
                               "--mirror", "--if-exists",   "--no-clobber",      "--type",
                               "--jobs",   "--page-marks",  "--cells",           "--no-list-markers",
                               "--links",  "--hidden-text", "--headers-footers", "--threads",
                               "--reflow", "--strict",      "--quiet",           "--verbose",
                               "--pages",  "--help",        "--version"})
        EXPECT_NE(help.find(option), std::string::npos) << option;
}

TEST(Program, everyTextOptionChangesSomeText) {
    const TemporaryFolder folder;
    const std::string rtf =
        folder.put("a.rtf", "{\\rtf1{\\header Head}A{\\v hidden}{\\listtext 1.\\tab}\\line b\\page "
                            "c\\par\\trowd\\intbl x\\cell y\\cell\\row"
                            "{\\field{\\*\\fldinst HYPERLINK \"http://example.org/\"}{\\fldrslt link}}\\par}");
    const std::string plain = run({rtf}).output;
    for (const char* option : {"--page-marks=ff", "--cells=line", "--no-list-markers", "--links", "--hidden-text",
                               "--headers-footers", "--reflow"}) {
        const Outcome done = run({option, rtf});
        EXPECT_EQ(done.exitCode, kAllConverted) << option;
        EXPECT_NE(done.output, plain) << option;
    }
}

TEST(Program, nothingOfAnAcceptedTypeExitsWithItsOwnCode) {
    const TemporaryFolder folder;
    const std::string word = folder.put("a.docx", "PK\x03\x04");
    const std::string text = folder.put("plain", "hello");

    EXPECT_EQ(run({word}).exitCode, kNothingAccepted);
    EXPECT_EQ(run({word, text}).exitCode, kNothingAccepted);
    EXPECT_EQ(run({word, folder.put("a.rtf", kRtf)}).exitCode, kSomeFailed);
    EXPECT_EQ(run({word, text}).errors,
              "quillow-convert: " + word + ": wrong-type (the content is a ZIP archive or an office document)\n" +
                  "quillow-convert: " + text +
                  ": wrong-type (neither name nor content is that of an RTF, HTML or PDF document)\n");
    EXPECT_EQ(run({folder.put("a.mht", kWebArchive)}).exitCode, kNothingAccepted);
}

TEST(Program, nameThatTellsNoKindIsReadByItsContent) {
    const TemporaryFolder folder;

    EXPECT_EQ(run({folder.put("plain", kRtf)}).output, kRtfText);
    EXPECT_EQ(run({folder.put("a.doc", kRtf)}).output, kRtfText);
    EXPECT_EQ(run({"--type", "html", folder.put("a.php", "no tags")}).output, "no tags\n");
}

TEST(Program, bundleIsOneDocument) {
    const TemporaryFolder folder;
    folder.put("Note.RTFD/TXT.rtf", kRtf);
    folder.put("Note.RTFD/picture.png", "picture");

    const Outcome done = run({"-o", folder.at("out"), folder.at("Note.RTFD/")});

    EXPECT_EQ(done.exitCode, kAllConverted);
    EXPECT_EQ(folder.names("out"), Names{"Note.txt"});
    EXPECT_EQ(readFile(folder.at("out/Note.txt")), kRtfText);
}

TEST(Program, outputNamesAFileAFolderOrStandardOutput) {
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

TEST(Program, oneFileTakesOneDocument) {
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

TEST(Program, inputsThatWouldMeetInOneTextAreAllConverted) {
    const TemporaryFolder folder;
    const Outcome done = run({"-o", folder.at("out"), folder.put("z.rtf", kRtf), folder.put("a.rtf", kRtf),
                              folder.put("a.html", kHtml), folder.put("x/a.rtf", "{\\rtf1 x}")});

    EXPECT_EQ(done.exitCode, kAllConverted);
    EXPECT_EQ(done.errors, "quillow-convert: 3 texts get another name, so that none replaces another file: a.rtf.txt, "
                           "a.html.txt, a.rtf-2.txt\n");
    EXPECT_EQ(folder.names("out"), (Names{"a.html.txt", "a.rtf-2.txt", "a.rtf.txt", "z.txt"}));
    EXPECT_EQ(readFile(folder.at("out/a.rtf-2.txt")), "x\n");
}

TEST(Program, inputIsNeverReplacedByAText) {
    const TemporaryFolder folder;
    const std::string input = folder.put("a.txt", kRtf);

    const Outcome beside = run({"--type", "rtf", "-o", folder.at(""), input});
    const Outcome itself = run({"--type", "rtf", "-o", input, input});

    EXPECT_EQ(beside.exitCode, kAllConverted);
    EXPECT_EQ(itself.exitCode, kDestinationUnwritable);
    EXPECT_EQ(readFile(input), kRtf);
    EXPECT_EQ(readFile(folder.at("a.txt.txt")), kRtfText);
}

TEST(Program, foldersAreWalkedAndTheirTreeIsMirrored) {
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

TEST(Program, mirrorNeedsFolders) {
    const TemporaryFolder folder;
    const std::string rtf = folder.put("a.rtf", kRtf);

    EXPECT_EQ(run({"--mirror", folder.at("none"), "-o", folder.at("out"), rtf}).exitCode, kUsage);
    EXPECT_EQ(run({"--mirror", folder.at(""), "-o", folder.at("out.txt"), rtf}).exitCode, kUsage);
    EXPECT_EQ(folder.names(), Names{"a.rtf"});
}

TEST(Program, runWithoutAnyDocumentExitsWithItsOwnCode) {
    const TemporaryFolder folder;
    folder.put("empty/note.txt", "");

    const Outcome walked = run({"-r", folder.at("empty")});

    EXPECT_EQ(walked.exitCode, kNothingAccepted);
    EXPECT_EQ(walked.errors, "quillow-convert: no RTF, HTML or PDF document is found\n");
    EXPECT_EQ(run({"--files-from", "-"}).exitCode, kNothingAccepted);
}

TEST(Program, namesComeFromStandardInput) {
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

TEST(Program, existingTextKeepsItsModeAndItsProtection) {
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

TEST(Program, existingTextIsDealtWithAsSaid) {
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

TEST(Program, textThatComesWhileADocumentIsReadIsNotReplacedEither) {
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

TEST(Program, destinationThatCannotBeWrittenExitsWithItsOwnCode) {
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

TEST(Program, fullStandardOutputIsAFailure) {
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

TEST(Program, readerThatGoesAwayEndsTheRunQuietly) {
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

TEST(Program, endlessStandardInputIsGivenUp) {
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

TEST(Program, closedStandardStreamsNeverBecomeOutputFiles) {
    const TemporaryFolder folder;
    const std::string rtf = folder.put("a.rtf", kRtf);
    test::RunSetting setting;

    setting.prefix = {"bash", "-c", "\"$@\" >&-; echo $? >&2", "bash"};
    EXPECT_TRUE(run({rtf}, setting).errors.ends_with("\n4\n"));

    setting.prefix = {"bash", "-c", "\"$@\" <&- >&- 2>&-", "bash"};
    EXPECT_EQ(run({"-v", "-o", folder.at("out"), rtf, folder.at("none.rtf")}, setting).exitCode, kSomeFailed);
    EXPECT_EQ(readFile(folder.at("out/a.txt")), kRtfText);
}

TEST(Program, oddFileNamesWork) {
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

TEST(Program, namedPipeIsRead) {
    const TemporaryFolder folder;
    test::RunSetting setting;
    setting.prefix = {"bash", "-c", "\"$1\" <(cat \"$2\")", "bash"};

    EXPECT_EQ(run({folder.put("a.rtf", kRtf)}, setting).output, kRtfText);
}

TEST(Program, jobsChangeNeitherTextsNorMessages) {
    const TemporaryFolder folder;
    std::vector<std::string> arguments = {"-v", "-j1"};
    for (int i = 0; i < 60; ++i) {
        const std::string n = std::to_string(i);
        arguments.push_back(
            folder.put(n + ".rtf", "{\\rtf1 " + std::string(static_cast<std::size_t>(i) * 997, 'r') + n + "}"));
        arguments.push_back(folder.put(n + ".html", "<p>" + n + "</p>"));
        arguments.push_back(folder.put(n + ".pdf", pdf(i % 3 == 0   ? "plain"
                                                       : i % 3 == 1 ? "missingPage"
                                                                    : "truncated")));
        arguments.push_back(folder.at("missing" + n + ".rtf"));
    }

    const Outcome one = run(arguments);
    arguments[1] = "-j8";
    const Outcome eight = run(arguments);

    EXPECT_EQ(one.exitCode, kSomeFailed);
    EXPECT_EQ(eight.exitCode, one.exitCode);
    EXPECT_EQ(eight.output, one.output);
    EXPECT_EQ(eight.errors, one.errors);
    EXPECT_EQ(linesOf(one.errors), 240U);
}

TEST(Program, tenThousandDocumentsInOneRun) {
    const TemporaryFolder folder;
    std::vector<std::string> arguments = {"-q"};
    for (int i = 0; i < 10'000; ++i)
        arguments.push_back(i % 100 == 0
                                ? folder.at("none.rtf")
                                : folder.put("d" + std::to_string(i) + ".rtf", "{\\rtf1 " + std::to_string(i) + "}"));

    const Outcome done = run(arguments);

    EXPECT_EQ(done.exitCode, kSomeFailed);
    EXPECT_EQ(linesOf(done.output), 9'900U);
    EXPECT_TRUE(done.output.ends_with("\n9999\n"));
}

bool appears(const std::function<bool()>& condition) {
    for (int i = 0; i < 2000; ++i) {
        if (condition()) return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return false;
}

TEST(Program, interruptEndsItAtOnce) {
    const TemporaryFolder folder;
    ASSERT_EQ(::mkfifo(folder.at("never.rtf").c_str(), 0600), 0);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        Running running({"-j2", "-o", folder.at("out"), folder.put("a.rtf", kRtf), folder.at("never.rtf")}, {});
        EXPECT_TRUE(appears([&] { return std::filesystem::exists(folder.at("out/a.txt")); }));

        ::kill(running.process(), signal);

        EXPECT_EQ(running.wait().exitCode, kInterrupted);
        EXPECT_EQ(folder.names("out"), Names{"a.txt"});
        std::filesystem::remove_all(folder.at("out"));
    }
}

/// Ends a run in the middle of its writes, which are many and large.
void endInMidWrite(int signal, Names& leftOver) {
    constexpr std::size_t kText = 4 << 20;
    const TemporaryFolder folder;
    std::vector<std::string> arguments = {"-j4", "-o", folder.at("out")};
    const std::string first = folder.put("d0.rtf", "{\\rtf1 " + std::string(kText, 'x') + "}");
    arguments.push_back(first);
    for (int i = 1; i < 400; ++i) {
        arguments.push_back(folder.at("d" + std::to_string(i) + ".rtf"));
        std::filesystem::create_hard_link(first, arguments.back());
    }
    Running running(arguments, {});
    EXPECT_TRUE(appears([&] { return std::filesystem::exists(folder.at("out")) && folder.names("out").size() >= 3; }));

    ::kill(running.process(), signal);

    const Outcome done = running.wait();
    EXPECT_EQ(signal == SIGKILL ? done.signal : done.exitCode, signal == SIGKILL ? SIGKILL : kInterrupted);
    for (const std::string& name : folder.names("out")) {
        if (name.ends_with(".txt"))
            EXPECT_EQ(std::filesystem::file_size(folder.at("out/" + name)), kText + 1) << name;
        else
            leftOver.push_back(name);
    }
}

TEST(Program, interruptInMidWriteLeavesWholeTextsAndNothingElse) {
    Names leftOver;
    endInMidWrite(SIGTERM, leftOver);
    EXPECT_EQ(leftOver, Names{});
}

TEST(Program, killInMidWriteLeavesWholeTexts) {
    Names leftOver;
    endInMidWrite(SIGKILL, leftOver);
    const TemporaryFolder probe;
    const int nameless = ::open(probe.at("").c_str(), O_TMPFILE | O_WRONLY, 0600);
    if (nameless < 0) GTEST_SKIP() << "this file system has no nameless files: a temporary one may stay";
    ::close(nameless);
    EXPECT_EQ(leftOver, Names{});
}

TEST(Program, onlyThePagesThatAreAskedForAreWritten) {
    EXPECT_EQ(run({"--pages", "2", pdfPath("plain")}).output, "Page two.\n");
    EXPECT_EQ(run({"--pages=2,1", "--page-marks=ff", pdfPath("plain")}).output,
              "Page one, line one.\nLine two: caf\u00E9.\fPage two.\n");

    const Outcome none = run({"--pages", "3-", pdfPath("plain")});
    EXPECT_EQ(none.exitCode, kSomeFailed);
    EXPECT_EQ(none.output, "");
    EXPECT_NE(none.errors.find("unreadable (the document has no such page: it has 2)"), std::string::npos)
        << none.errors;
}

TEST(Program, pagesOfOtherKindsAreNotSelected) {
    const TemporaryFolder folder;
    EXPECT_EQ(run({"--pages", "7", folder.put("a.rtf", kRtf)}).output, kRtfText);
}

} // namespace
} // namespace quillow::cli
