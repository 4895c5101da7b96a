// End to end: --explain draws a page of a PDF.
#include "cli/Program.h"
#include "tests/cli/RunConvert.h"
#include "tests/cli/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace quillow::cli {
namespace {

using test::Outcome;
using test::readFile;
using test::run;
using test::TemporaryFolder;

std::string pdfPath(const std::string& name) {
    return QUILLOW_SOURCE_DIR "/tests/data/pdf/" + name + ".in";
}

TEST(Explain, pictureGoesToStandardOutput) {
    const Outcome done = run({"--explain", "2", pdfPath("plain")});

    EXPECT_EQ(done.exitCode, kAllConverted);
    EXPECT_TRUE(done.output.starts_with("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg "));
    EXPECT_TRUE(done.output.ends_with("</svg>\n"));
    EXPECT_NE(done.output.find("Page 2 of 2"), std::string::npos);
    EXPECT_EQ(done.errors, "");
}

TEST(Explain, pictureGoesIntoTheFileWhateverItsExtension) {
    const TemporaryFolder folder;
    for (const std::string name : {"page.svg", "page.txt", "page"}) {
        const Outcome done = run({"--explain=1", pdfPath("plain"), "-o", folder.at(name)});

        EXPECT_EQ(done.exitCode, kAllConverted) << done.errors;
        EXPECT_EQ(done.output, "");
        EXPECT_TRUE(readFile(folder.at(name)).ends_with("</svg>\n")) << name;
    }
}

TEST(Explain, existingPictureMayKeepItsName) {
    const TemporaryFolder folder;
    const std::string old = folder.put("page.svg", "old");

    const Outcome done = run({"--explain=1", pdfPath("plain"), "-o", old, "--if-exists", "rename"});

    EXPECT_EQ(done.exitCode, kAllConverted);
    EXPECT_EQ(readFile(old), "old");
    EXPECT_TRUE(readFile(folder.at("page-2.svg")).ends_with("</svg>\n"));
}

TEST(Explain, failuresAreNamed) {
    const TemporaryFolder folder;
    const std::string rtf = folder.put("a.rtf", "{\\rtf1 x}");
    const std::string junk = folder.put("a.pdf", "no PDF at all");
    struct Case {
        std::vector<std::string> words;
        int exitCode;
        std::string complaint;
    };
    const std::vector<Case> cases = {
        {{"--explain", "3", pdfPath("plain")},
         kSomeFailed,
         pdfPath("plain") + ": unreadable (there is no page 3: the document has 2 pages)"},
        {{"--explain", "1", rtf}, kSomeFailed, rtf + ": wrong-type (only pages of PDFs can be explained)"},
        {{"--explain", "1", junk}, kSomeFailed, junk + ": damaged"},
        {{"--explain", "1", pdfPath("needsPassword")},
         kSomeFailed,
         pdfPath("needsPassword") + ": locked (a password is needed)"},
        {{"--explain", "0", "x"}, kUsage, "the page to explain must be a number from 1, not '0'"},
        {{"--explain", "1-3", "x"}, kUsage, "the page to explain must be a number from 1, not '1-3'"},
        {{"--explain", "1", "--explain", "2", "x"}, kUsage, "the page to explain is given twice"},
        {{"--explain", "1", "x", "y"}, kUsage, "option '--explain' takes one document"},
        {{"--explain", "1", "x", "--files-from", "y"}, kUsage, "option '--explain' takes one document"},
        {{"--explain", "1", "x", "--mirror", "y", "-o", "z"}, kUsage, "option '--explain' does not go with '--mirror'"},
        {{"--explain", "1", "x", "-o", folder.at("")},
         kUsage,
         "option '--explain' needs a file after '-o', not the folder '" + folder.at("") + "'"},
    };

    for (const Case& one : cases) {
        const Outcome done = run(one.words);

        EXPECT_EQ(done.exitCode, one.exitCode) << one.complaint;
        EXPECT_EQ(done.output, "");
        EXPECT_TRUE(done.errors.starts_with("quillow-convert: " + one.complaint)) << done.errors;
    }
}

TEST(Explain, passwordOpensTheDocument) {
    const Outcome done = run({"--explain", "1", "--password", "secret", pdfPath("needsPassword")});

    EXPECT_EQ(done.exitCode, kAllConverted) << done.errors;
    EXPECT_TRUE(done.output.ends_with("</svg>\n"));
}

} // namespace
} // namespace quillow::cli
