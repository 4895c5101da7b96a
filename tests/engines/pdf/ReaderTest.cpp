#include "engines/pdf/Reader.h"

#include "tests/engines/DataFiles.h"
#include "tests/engines/pdf/PdfBuilder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>

namespace quillow::pdf {
namespace {

using quillow::test::asBytes;
using quillow::test::dataFile;
using quillow::test::fileContent;

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

/// A document whose pages all use one form and one font. Some contents are damaged.
std::string longDocument(std::size_t pages, std::size_t damaged) {
    test::PdfBuilder builder;
    std::string kids;
    for (std::size_t i = 0; i < pages; ++i)
        kids += std::to_string(5 + 2 * i) + " 0 R ";
    builder.object(1, "<</Type/Catalog/Pages 2 0 R>>");
    builder.object(2, "<</Type/Pages/Kids[" + kids + "]/Count " + std::to_string(pages) +
                          "/MediaBox[0 0 600 800]/Resources<</Font<</F 3 0 R>>/XObject<</X 4 0 R>>>>>>");
    builder.object(3, "<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>");
    builder.stream(4, "/Type/XObject/Subtype/Form/BBox[0 0 600 800]", "BT /F 10 Tf 10 10 Td (Foot) Tj ET");
    for (std::size_t i = 0; i < pages; ++i) {
        const auto page = static_cast<std::uint32_t>(5 + 2 * i);
        builder.object(page, "<</Type/Page/Parent 2 0 R/Contents " + std::to_string(page + 1) + " 0 R>>");
        const std::string content = "/X Do BT /F 10 Tf 10 700 Td (Page " + std::to_string(i) + ") Tj ET";
        builder.stream(page + 1, i < damaged ? "/Filter/FlateDecode" : "", content);
    }
    return builder.table().bytes();
}

TEST(Reader, aRepairedDocumentSaysSo) {
    std::string document = longDocument(1, 0);
    EXPECT_EQ(readPdf(asBytes(document), {}).detail, "");
    document.resize(document.rfind("xref\n"));
    const Extraction repaired = readPdf(asBytes(document), {});
    EXPECT_EQ(repaired.reason, Reason::ok);
    EXPECT_EQ(repaired.detail, "the file is damaged: its objects were searched for");
}

TEST(Reader, threadsChangeNothing) {
    struct Case {
        const char* what;
        std::string document;
    };
    std::string repaired = longDocument(60, 0);
    repaired.resize(repaired.rfind("xref\n"));
    const Case cases[] = {{"sound", longDocument(60, 0)}, {"damaged", longDocument(60, 3)}, {"repaired", repaired}};
    for (const Case& each : cases) {
        SCOPED_TRACE(each.what);
        const Extraction alone = readPdf(asBytes(each.document), {});
        ASSERT_TRUE(alone.text);
        for (const unsigned threads : {2U, 3U, 16U}) {
            Options options;
            options.threads = threads;
            const Extraction together = readPdf(asBytes(each.document), options);
            EXPECT_EQ(together.text, alone.text);
            EXPECT_EQ(together.reason, alone.reason);
            EXPECT_EQ(together.detail, alone.detail);
            EXPECT_EQ(together.loss.partsSkipped, alone.loss.partsSkipped);
            EXPECT_EQ(together.loss.charactersDecoded, alone.loss.charactersDecoded);
        }
    }
}

} // namespace
} // namespace quillow::pdf
