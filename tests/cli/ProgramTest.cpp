// End to end: runs the real program with arguments, and checks its exit code, output and messages.
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
using test::linesOf;
using test::Outcome;
using test::pdf;
using test::pdfPath;
using test::readFile;
using test::run;
using test::TemporaryFolder;
using Names = std::vector<std::string>;

constexpr std::string_view kWebArchive =
    "From: <Saved>\r\nMIME-Version: 1.0\r\nContent-Type: multipart/related; boundary=x\r\n\r\n--x\r\n<p>a=20b";

TEST(Program, textsGoToStandardOutputInOrder) {
    const TemporaryFolder folder;
    const std::string rtf = folder.put("a.rtf", kRtf);
    const std::string html = folder.put("b.HTM", kHtml);

    const Outcome both = run({html, rtf, html});

    EXPECT_EQ(both.exitCode, kAllConverted);
    EXPECT_EQ(both.output, std::string(kHtmlText) + std::string(kRtfText) + std::string(kHtmlText));
    EXPECT_EQ(both.errors, "");
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

TEST(Program, runWithoutAnyDocumentExitsWithItsOwnCode) {
    const TemporaryFolder folder;
    folder.put("empty/note.txt", "");

    const Outcome walked = run({"-r", folder.at("empty")});

    EXPECT_EQ(walked.exitCode, kNothingAccepted);
    EXPECT_EQ(walked.errors, "quillow-convert: no RTF, HTML or PDF document is found\n");
    EXPECT_EQ(run({"--files-from", "-"}).exitCode, kNothingAccepted);
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
