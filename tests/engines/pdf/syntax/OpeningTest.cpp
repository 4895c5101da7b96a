#include "engines/pdf/syntax/Document.h"
#include "engines/pdf/syntax/PageTree.h"
#include "tests/engines/pdf/PdfBuilder.h"
#include "tests/engines/pdf/syntax/Printed.h"

#include <gtest/gtest.h>

namespace quillow::pdf {
namespace {

using test::onePagePdf;
using test::PdfBuilder;
using test::printed;

PdfBuilder threeObjects(std::string_view header = "%PDF-1.7\n") {
    PdfBuilder pdf(header);
    pdf.object(1, "<</Type/Catalog/Pages 2 0 R>>")
        .object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>")
        .object(3, "<</Type/Page/Parent 2 0 R/Mark(first)>>");
    return pdf;
}

/// What a document with one page says: its mark, and whether it was repaired.
struct Opened {
    std::string mark;
    bool isRepaired = false;

    friend bool operator==(const Opened&, const Opened&) = default;
    friend std::ostream& operator<<(std::ostream& out, const Opened& o) {
        return out << o.mark << (o.isRepaired ? " (repaired)" : "");
    }
};

Opened opened(std::string_view bytes) {
    auto result = Document::open(bytes);
    if (!result) return {result.failure().reason == Reason::locked ? "locked" : "damaged"};
    Document& document = *result.value();
    const std::vector<PageNode> pages = pagesOf(document);
    if (pages.size() != 1) return {std::to_string(pages.size()) + " pages", document.isRepaired()};
    return {std::string(document.get(pages.front().dictionary, "Mark").string()), document.isRepaired()};
}

std::string replaced(std::string bytes, std::string_view from, std::string_view to) {
    const std::size_t at = bytes.rfind(from);
    EXPECT_NE(at, std::string::npos) << from;
    return bytes.replace(at, from.size(), to);
}

const Opened kGood = {"first", false};
const Opened kRepaired = {"first", true};

TEST(Opening, readsTables) {
    EXPECT_EQ(opened(threeObjects().table().bytes()), kGood);
}

TEST(Opening, readsCrossReferenceStreams) {
    EXPECT_EQ(opened(threeObjects().xrefStream(4).bytes()), kGood);
}

TEST(Opening, theStartIsLookedForAtTheEnd) {
    constexpr std::size_t kStartBytes = std::size_t{64} << 10;
    const std::string bytes = threeObjects().table().bytes();
    EXPECT_EQ(opened(bytes + std::string(kStartBytes - 64, ' ')), kGood);
    EXPECT_EQ(opened(bytes + std::string(kStartBytes, ' ')), kRepaired);
}

TEST(Opening, offsetsMayCountFromTheHeader) {
    EXPECT_EQ(opened("junk\n" + threeObjects().table().bytes()), kGood);
    EXPECT_EQ(opened("junk\n" + threeObjects().xrefStream(4).bytes()), kGood);
}

TEST(Opening, offsetsMayCountFromTheStartThoughTheHeaderIsLater) {
    EXPECT_EQ(opened(threeObjects("junk\n%PDF-1.7\n").table().bytes()), kGood);
}

TEST(Opening, theHeaderIsLookedForInTheFirstBytesOnly) {
    EXPECT_EQ(opened(std::string(1000, '\n') + threeObjects().table().bytes()), kGood);
    EXPECT_EQ(opened(std::string(1024, '\n') + threeObjects().table().bytes()), kRepaired);
}

TEST(Opening, theNewestOfSeveralUpdatesWins) {
    PdfBuilder pdf = threeObjects();
    pdf.table();
    pdf.object(3, "<</Type/Page/Mark(second)>>").table();
    EXPECT_EQ(opened(pdf.bytes()), (Opened{"second", false}));

    pdf.object(3, "<</Type/Page/Mark(third)>>").xrefStream(4);
    EXPECT_EQ(opened(pdf.bytes()), (Opened{"third", false}));
}

TEST(Opening, cyclesOfSectionsEnd) {
    PdfBuilder pdf = threeObjects();
    const std::string bytes = pdf.bytes();
    pdf.table("/Root 1 0 R/Prev " + std::to_string(bytes.size()));

    EXPECT_EQ(opened(pdf.bytes()), kGood);
}

/// A table written by hand, behind the three objects.
std::string withTable(std::string_view format) {
    const PdfBuilder pdf = threeObjects();
    std::string table(format);
    for (const std::uint32_t number : {1U, 2U, 3U}) {
        std::string offset = std::to_string(pdf.offsetOf(number));
        offset.insert(0, 10 - offset.size(), '0');
        for (std::size_t at = 0; (at = table.find("@" + std::to_string(number))) != std::string::npos;)
            table.replace(at, 2, offset);
    }
    return pdf.bytes() + table + "trailer<</Root 1 0 R/Size 4>>startxref\n" + std::to_string(pdf.bytes().size()) +
           "\n%%EOF";
}

struct TableCase {
    std::string_view name;
    std::string_view table;
};

TEST(Opening, readsTablesThatAreNotQuiteRight) {
    const TableCase cases[] = {
        {"20 bytes", "xref\n0 4\n0000000000 65535 f \n@1 00000 n \n@2 00000 n \n@3 00000 n \n"},
        {"CR LF", "xref\r\n0 4\r\n0000000000 65535 f\r\n@1 00000 n\r\n@2 00000 n\r\n@3 00000 n\r\n"},
        {"19 bytes", "xref\n0 4\n0000000000 65535 f\n@1 00000 n\n@2 00000 n\n@3 00000 n\n"},
        {"21 bytes", "xref\n0 4\n0000000000 65535 f \r\n@1 00000 n \r\n@2 00000 n \r\n@3 00000 n \r\n"},
        {"begins at 1", "xref\n1 4\n0000000000 65535 f \n@1 00000 n \n@2 00000 n \n@3 00000 n \n"},
        {"count too small", "xref\n0 2\n0000000000 65535 f \n@1 00000 n \n@2 00000 n \n@3 00000 n \n"},
        {"count too large", "xref\n0 400\n0000000000 65535 f \n@1 00000 n \n@2 00000 n \n@3 00000 n \n"},
        {"subsections", "xref\n0 1\n0000000000 65535 f \n2 2\n@2 00000 n \n@3 00000 n \n1 1\n@1 00000 n \n"},
        {"blank before the kind is missing", "xref 0 4 0 65535f @1 0n @2 0n @3 0n "},
        {"count of another subsection", "xref\n0 0\n0 4\n0000000000 65535 f \n@1 00000 n \n@2 00000 n \n@3 00000 n \n"},
        {"comment", "xref % table\n0 4\n0000000000 65535 f \n@1 00000 n \n@2 00000 n \n@3 00000 n \n"},
    };
    for (const TableCase& c : cases)
        EXPECT_EQ(opened(withTable(c.table)), kGood) << c.name;
}

/// Annex F: the section of the first page comes first in the file and refers to the one of all other objects.
TEST(Opening, readsLinearisedFiles) {
    const std::string firstPage =
        "1 0 obj<</Type/Catalog/Pages 2 0 R>>endobj\n3 0 obj<</Type/Page/Mark(first)>>endobj\n";
    const std::string others = "2 0 obj<</Type/Pages/Kids[3 0 R]>>endobj\n";
    const auto digits = [](std::size_t place) {
        const std::string text = std::to_string(place);
        return std::string(10 - text.size(), '0') + text;
    };
    const auto firstSection = [&](std::size_t objects, std::size_t previous) {
        return "xref\n1 1\n" + digits(objects) + " 00000 n \n3 1\n" + digits(objects + firstPage.find("3 0 obj")) +
               " 00000 n \ntrailer<</Root 1 0 R/Size 4/Prev " + digits(previous) + ">>startxref\n0\n%%EOF\n";
    };
    const std::string head = "%PDF-1.7\n9 0 obj<</Linearized 1>>endobj\n";
    const std::size_t objects = head.size() + firstSection(0, 0).size();
    const std::size_t second = objects + firstPage.size();
    const std::string bytes = head + firstSection(objects, second + others.size()) + firstPage + others +
                              "xref\n0 1\n0000000000 65535 f \n2 1\n" + digits(second) +
                              " 00000 n \ntrailer<</Size 3>>\nstartxref\n" + std::to_string(head.size()) + "\n%%EOF\n";

    EXPECT_EQ(opened(bytes), kGood);
}

TEST(Opening, aTableMayBeAFewBytesFromWhereItShouldBe) {
    const std::string bytes = threeObjects().table().bytes();
    const std::size_t at = bytes.find("xref");
    for (const std::size_t offset : {at - 40, at - 1, at + 1, at + 4, at + 40})
        EXPECT_EQ(opened(replaced(bytes, "startxref\n" + std::to_string(at), "startxref\n" + std::to_string(offset))),
                  kGood)
            << offset;
}

TEST(Opening, readsHybridFiles) {
    PdfBuilder pdf;
    pdf.object(1, "<</Type/Catalog/Pages 2 0 R>>").object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>");
    pdf.objectStream(5, {{3, "<</Type/Page/Mark(first)>>"}});
    const std::size_t hidden = pdf.bareXrefStream(6, "");
    pdf.free(3).object(7, "null").table("/Root 1 0 R/XRefStm " + std::to_string(hidden));

    EXPECT_EQ(opened(pdf.bytes()), kGood);
}

/// The three objects and a cross-reference stream whose entries are given.
std::string withXrefStream(std::string_view entries, std::string_view data) {
    const PdfBuilder pdf = threeObjects();
    return pdf.bytes() + "4 0 obj<</Type/XRef/Root 1 0 R" + std::string(entries) + "/Length " +
           std::to_string(data.size()) + ">>stream\n" + std::string(data) + "\nendstream endobj\nstartxref\n" +
           std::to_string(pdf.bytes().size()) + "\n%%EOF";
}

std::string offsets(std::size_t typeBytes, std::size_t offsetBytes, std::size_t generationBytes, std::size_t from) {
    const PdfBuilder pdf = threeObjects();
    std::string data;
    for (std::uint32_t number = static_cast<std::uint32_t>(from); number < 4; ++number) {
        data.append(typeBytes, '\0');
        if (typeBytes > 0 && number > 0) data.back() = 1;
        data.append(offsetBytes - 1, '\0');
        data.push_back(number > 0 ? static_cast<char>(pdf.offsetOf(number)) : '\0');
        data.append(generationBytes, '\0');
    }
    return data;
}

TEST(Opening, readsCrossReferenceStreamsOfAllWidths) {
    EXPECT_EQ(opened(withXrefStream("/Size 4/W[1 2 1]", offsets(1, 2, 1, 0))), kGood);
    EXPECT_EQ(opened(withXrefStream("/Size 4/W[0 1 0]", offsets(0, 1, 0, 0))), kGood);
    EXPECT_EQ(opened(withXrefStream("/Size 4/W[2 8 8]", offsets(2, 8, 8, 0))), kGood);
    EXPECT_EQ(opened(withXrefStream("/Size 9/W[1 2 0]/Index[1 8]", offsets(1, 2, 0, 1))), kGood);
    EXPECT_EQ(opened(withXrefStream("/Size 4/W[1 2 0]/Index[1 1 2 2]", offsets(1, 2, 0, 1))), kGood);
    EXPECT_EQ(opened(withXrefStream("/Size 4/W[1 2 0]/Index[1 99999999999]", offsets(1, 2, 0, 1))), kGood);
}

TEST(Opening, repairsWhereCrossReferenceStreamsAreSenseless) {
    EXPECT_EQ(opened(withXrefStream("/Size 4/W[0 0 0]", offsets(1, 2, 1, 0))), kRepaired);
    EXPECT_EQ(opened(withXrefStream("/Size 4/W[1 9 1]", offsets(1, 2, 1, 0))), kRepaired);
    EXPECT_EQ(opened(withXrefStream("/Size 4/W[1 -2 1]", offsets(1, 2, 1, 0))), kRepaired);
    EXPECT_EQ(opened(withXrefStream("/Size 4/W[1 2]", offsets(1, 2, 1, 0))), kRepaired);
    EXPECT_EQ(opened(withXrefStream("/Size 4/W[1 2 1]/Filter/NoSuchFilter", offsets(1, 2, 1, 0))), kRepaired);
}

struct DamageCase {
    std::string_view name;
    std::string bytes;
};

TEST(Opening, repairsDamagedFiles) {
    const std::string table = threeObjects().table().bytes();
    const std::string stream = threeObjects().xrefStream(4).bytes();
    const std::string section = std::to_string(table.find("xref"));
    const DamageCase cases[] = {
        {"startxref absent", replaced(table, "startxref", "startxxxx")},
        {"startxref not a number", replaced(table, "startxref\n" + section, "startxref\nx")},
        {"startxref beyond the file", replaced(table, "startxref\n" + section, "startxref\n99999999")},
        {"startxref in the middle", replaced(table, "startxref\n" + section, "startxref\n20")},
        {"startxref 0", replaced(table, "startxref\n" + section, "startxref\n0")},
        {"no table", replaced(table, "xref\n0 1", "xxxx\n0 1")},
        {"no trailer", replaced(table, "trailer", "xxxxxxx")},
        {"trailer without a root", replaced(table, "/Root 1 0 R", "")},
        {"root is null", replaced(table, "/Root 1 0 R", "/Root null")},
        {"root is something else", replaced(table, "/Root 1 0 R", "/Root 3 0 R")},
        {"root is missing", replaced(table, "/Root 1 0 R", "/Root 9 0 R")},
        {"previous section is lost", replaced(table, "/Root 1 0 R", "/Root 1 0 R/Prev 5")},
        {"previous section is beyond the file", replaced(table, "/Root 1 0 R", "/Root 1 0 R/Prev 99999999")},
        {"bytes lost", replaced(table, "%PDF-1.7\n", "%PDF-1.7")},
        {"cut before the table", table.substr(0, table.find("xref"))},
        {"cut behind the last object", table.substr(0, table.find("endobj\nxref"))},
        {"no type of the catalog", replaced(replaced(table, "/Type/Catalog", ""), "startxref", "")},
        {"no header", table.substr(9)},
        {"cross-reference stream cut", stream.substr(0, stream.find("endstream"))},
        {"cross-reference stream lost", stream.substr(0, stream.find("4 0 obj"))},
    };
    for (const DamageCase& c : cases)
        EXPECT_EQ(opened(c.bytes), kRepaired) << c.name;
}

TEST(Opening, objectsBesideTheirOffsetsNeedNoRepair) {
    EXPECT_EQ(opened(replaced(threeObjects().table().bytes(), "%PDF-1.7\n", "%PDF-1.7\n\n\n")), kGood);
}

TEST(Opening, aPreviousSectionAtZeroIsNone) {
    EXPECT_EQ(opened(replaced(threeObjects().table().bytes(), "/Root 1 0 R", "/Root 1 0 R/Prev 0")), kGood);
}

/// The bytes behind a header, so that only a repair reads them.
std::string withoutTable(std::string_view objects) {
    return "%PDF-1.4\n" + std::string(objects);
}

constexpr std::string_view kTree =
    "1 0 obj<</Type/Catalog/Pages 2 0 R>>endobj 2 0 obj<</Type/Pages/Kids[3 0 R]>>endobj ";

TEST(Repair, theLaterObjectWinsUnlessItIsCut) {
    const std::string tree(kTree);
    EXPECT_EQ(opened(withoutTable(tree + "3 0 obj<</Mark(a)>>endobj 3 0 obj<</Mark(b)>>endobj")), (Opened{"b", true}));
    EXPECT_EQ(opened(withoutTable(tree + "3 0 obj<</Mark(a)>>endobj 3 0 obj<</Mark(b)")), (Opened{"a", true}));
    EXPECT_EQ(opened(withoutTable(tree + "3 0 obj<</Mark(a)>>endobj 3 0 obj<</Mark(b) 4 0 obj 1 endobj")),
              (Opened{"a", true}));
    EXPECT_EQ(opened(withoutTable(tree + "3 0 obj<</Mark(a)>>endobj 3 0 obj<</Mark(b)/Length 5>>stream\nab")),
              (Opened{"a", true}));
    EXPECT_EQ(opened(withoutTable(tree + "3 0 obj<</Mark(a)/B[")), (Opened{"a", true}));
}

TEST(Repair, objectsNeedNoEnd) {
    EXPECT_EQ(opened(withoutTable("1 0 obj<</Type/Catalog/Pages 2 0 R>>2 0 obj<</Type/Pages/Kids[3 0 R]>>"
                                  "3 0 obj<</Type/Page/Mark(first)>>")),
              kRepaired);
}

TEST(Repair, whatLooksLikeAnObjectInAStreamIsNone) {
    const std::string tree(kTree);
    EXPECT_EQ(opened(withoutTable(tree + "3 0 obj<</Mark(first)>>endobj 4 0 obj<</Length 31>>stream\n"
                                         "3 0 obj<</Mark(inner)>>endobj  \nendstream endobj")),
              kRepaired);
}

TEST(Repair, theNewestTrailerWithARootWins) {
    const std::string objects = std::string(kTree) +
                                "3 0 obj<</Mark(old)>>endobj 4 0 obj<</Type/Catalog/Pages 5 0 R>>endobj "
                                "5 0 obj<</Type/Pages/Kids[6 0 R]>>endobj 6 0 obj<</Mark(new)>>endobj ";
    EXPECT_EQ(opened(withoutTable(objects + "trailer<</Root 4 0 R>>trailer<</Root 1 0 R>>")), (Opened{"old", true}));
    EXPECT_EQ(opened(withoutTable(objects + "trailer<</Root 1 0 R>>trailer<</Root 4 0 R>>trailer<</Size 7>>")),
              (Opened{"new", true}));
    EXPECT_EQ(opened(withoutTable(objects + "trailer<</Root 1 0 R>>trailer<</Root 9 0 R>>")), (Opened{"old", true}));
    EXPECT_EQ(opened(withoutTable(objects)), (Opened{"new", true}));
}

TEST(Repair, aCrossReferenceStreamIsATrailer) {
    EXPECT_EQ(
        opened(withoutTable("1 0 obj<</Pages 2 0 R>>endobj 2 0 obj<</Kids[3 0 R]>>endobj 3 0 obj<</Mark(first)>>endobj "
                            "4 0 obj<</Type/XRef/Root 1 0 R/W[1 2 1]/Length 99>>stream\nlost")),
        kRepaired);
}

TEST(Repair, findsTheObjectsOfObjectStreams) {
    PdfBuilder pdf;
    pdf.objectStream(
        5, {{1, "<</Type/Catalog/Pages 2 0 R>>"}, {2, "<</Type/Pages/Kids[3 0 R]>>"}, {3, "<</Mark(first)>>"}});

    EXPECT_EQ(opened(pdf.bytes()), kRepaired);
    EXPECT_EQ(opened(pdf.bytes() + "3 0 obj<</Mark(later)>>endobj"), (Opened{"later", true}));
    EXPECT_EQ(opened("3 0 obj<</Mark(earlier)>>endobj " + pdf.bytes()), kRepaired);

    PdfBuilder second = pdf;
    second.objectStream(6, {{3, "<</Mark(second)>>"}});
    EXPECT_EQ(opened(second.bytes()), (Opened{"second", true}));
}

TEST(Repair, anObjectStreamMayReplaceAnotherOne) {
    PdfBuilder pdf = threeObjects();
    pdf.objectStream(6, {{7, "(seven)"}}).objectStream(5, {{6, "(six)"}});
    auto result = Document::open(pdf.bytes());
    ASSERT_TRUE(result.ok());

    EXPECT_EQ(printed(result.value()->load({6, 0})), "(six)");
    EXPECT_EQ(printed(result.value()->forThread()->load({6, 0})), "(six)");
}

TEST(Repair, readsAPageTreeWithoutACatalog) {
    EXPECT_EQ(opened(withoutTable(
                  "2 0 obj<</Type/Pages/Kids[4 0 R]>>endobj 4 0 obj<</Type/Pages/Parent 2 0 R/Kids[3 0 R]>>endobj "
                  "3 0 obj<</Type/Page/Mark(first)>>endobj")),
              kRepaired);
}

TEST(Repair, readsLoosePagesInTheOrderOfTheFile) {
    const std::string bytes =
        withoutTable("9 0 obj<</Type/Page/Mark(a)>>endobj 3 0 obj<</Type/Page/Mark(b)/Rotate 90>>endobj "
                     "5 0 obj<</Type/Font>>endobj 4 0 obj<</Type/Page/Mark(c)>>endobj");
    auto result = Document::open(bytes);
    ASSERT_TRUE(result.ok());
    Document& document = *result.value();

    std::string marks;
    const std::vector<PageNode> pages = pagesOf(document);
    for (const PageNode& page : pages)
        marks += document.get(page.dictionary, "Mark").string();

    EXPECT_EQ(marks, "abc");
    EXPECT_EQ(pages[1].rotation, 90);
    EXPECT_EQ(document.loosePages().size(), 3U);
}

TEST(Opening, whatHasNoPageIsDamaged) {
    for (const std::string_view bytes :
         {"", "%PDF-1.7", "text", "%PDF-1.7\n1 0 obj<</Type/Catalog>>endobj", "1 0 obj", "trailer<</Root 1 0 R>>",
          "1 0 obj<</Type/Catalog/Pages 2 0 R>>endobj 2 0 obj<</Type/Pages/Kids[]>>endobj"})
        EXPECT_EQ(opened(bytes), (Opened{"damaged", false})) << bytes;
}

} // namespace
} // namespace quillow::pdf
