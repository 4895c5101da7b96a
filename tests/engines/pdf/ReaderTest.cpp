#include "engines/pdf/Reader.h"

#include "tests/engines/DataFiles.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>

namespace quillow::pdf {
namespace {

using test::asBytes;
using test::dataFile;
using test::fileContent;

Extraction read(const std::string& name, const Options& options = {}) {
    return readPdf(asBytes(fileContent(dataFile("pdf/" + name + ".in"))), options);
}

TEST(Reader, everyDocumentGivesTheTextBesideIt) {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(dataFile("pdf")))
        if (entry.path().extension() == ".txt") names.insert(entry.path().stem().string());

    for (const std::string& name : names) {
        SCOPED_TRACE(name);
        const Extraction extraction = read(name);
        EXPECT_EQ(extraction.reason, Reason::ok);
        EXPECT_EQ(extraction.text, fileContent(dataFile("pdf/" + name + ".txt")));
    }

    EXPECT_GE(names.size(), 10U);
}

TEST(Reader, countsPages) {
    EXPECT_EQ(read("plain").pages, 2U);
}

TEST(Reader, separatesPagesByFormFeedsWhenAsked) {
    Options options;
    options.pageMarks = PageMarks::formFeed;

    EXPECT_EQ(read("plain", options).text, "Page one, line one.\nLine two: caf\u00E9.\fPage two.\n");
}

TEST(Reader, marksPagesWithoutTextToo) {
    Options options;
    options.pageMarks = PageMarks::formFeed;

    const Extraction extraction = read("middlePageWithoutText", options);

    EXPECT_EQ(extraction.text, "Page one, line one.\nLine two: caf\u00E9.\f\fPage two.\n");
    EXPECT_EQ(extraction.loss.pagesWithoutText, 1U);
}

TEST(Reader, needsAPasswordWhereTheEmptyOneDoesNotOpen) {
    const Extraction extraction = read("needsPassword");

    EXPECT_EQ(extraction.reason, Reason::locked);
    EXPECT_FALSE(extraction.text);
}

TEST(Reader, passwordOfUserOrOwnerOpens) {
    struct Case {
        const char* name;
        const char* password;
    };
    const Case cases[] = {{"needsPassword", "secret"},
                          {"needsPassword", "owner"},
                          {"accentedPassword", "Zürich €"},
                          {"accentedPassword", "owner"},
                          {"accentedUtf8Password", "Zürich €"}};
    for (const Case& each : cases) {
        SCOPED_TRACE(each.name);
        Options options;
        options.password = each.password;
        const Extraction extraction = read(each.name, options);
        EXPECT_EQ(extraction.reason, Reason::ok);
        EXPECT_EQ(extraction.text, fileContent(dataFile("pdf/plain.txt")));
    }
}

TEST(Reader, wrongPasswordIsLockedAndNotShown) {
    for (const char* name : {"needsPassword", "accentedPassword", "accentedUtf8Password"}) {
        Options options;
        options.password = "Zürich";
        const Extraction extraction = read(name, options);
        EXPECT_EQ(extraction.reason, Reason::locked) << name;
        EXPECT_EQ(extraction.detail, "the password is wrong") << name;
        EXPECT_FALSE(extraction.text) << name;
    }
}

TEST(Reader, emptyPasswordIsTriedBeforeTheGivenOne) {
    Options options;
    options.password = "secret";

    EXPECT_EQ(read("emptyPassword", options).reason, Reason::ok);
    EXPECT_EQ(read("plain", options).reason, Reason::ok);
}

TEST(Reader, picturesOnlyHaveNoTextLayer) {
    const Extraction extraction = read("picturesOnly");

    EXPECT_EQ(extraction.reason, Reason::noTextLayer);
    EXPECT_FALSE(extraction.text);
    EXPECT_EQ(extraction.pages, 2U);
}

TEST(Reader, missingPageLeavesTheOthersAndSaysSo) {
    const Extraction extraction = read("missingPage");

    EXPECT_EQ(extraction.reason, Reason::partial);
    EXPECT_EQ(extraction.text, "Page one, line one.\nLine two: caf\u00E9.\nPage two.\n");
    EXPECT_EQ(extraction.detail, "1 of 3 pages cannot be read");
    EXPECT_EQ(extraction.loss.partsSkipped, 1U);
}

TEST(Reader, truncatedFileWithoutContentHasNoText) {
    const Extraction extraction = read("truncated");

    EXPECT_EQ(extraction.reason, Reason::noTextLayer);
    EXPECT_FALSE(extraction.text);
}

TEST(Reader, pageTreeThatHoldsItselfIsDamaged) {
    EXPECT_EQ(read("pageTreeCycle").reason, Reason::damaged);
}

TEST(Reader, pagesThatAreOnlyClaimedAreNotMissed) {
    const Extraction extraction = read("lyingCount");

    EXPECT_EQ(extraction.text, "Page one, line one.\nLine two: caf\u00E9.\n");
    EXPECT_EQ(extraction.reason, Reason::ok);
    EXPECT_EQ(extraction.pages, 1U);
}

TEST(Reader, countsCharacters) {
    EXPECT_EQ(read("oddCharacters").loss.charactersDecoded, 7U);
    EXPECT_EQ(read("oddCharacters").loss.charactersWithoutUnicode, 0U);
}

TEST(Reader, bytesThatAreNoPdfAreDamaged) {
    EXPECT_EQ(readPdf(asBytes("hello"), {}).reason, Reason::damaged);
    EXPECT_EQ(readPdf(asBytes("%PDF-1.7\n"), {}).reason, Reason::damaged);
}

} // namespace
} // namespace quillow::pdf
