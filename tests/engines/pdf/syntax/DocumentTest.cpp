#include "engines/pdf/syntax/Document.h"

#include "engines/pdf/Limits.h"
#include "tests/engines/pdf/PdfBuilder.h"
#include "tests/engines/pdf/syntax/Printed.h"

#include <gtest/gtest.h>

#include <array>
#include <future>

namespace quillow::pdf {
namespace {

using test::PdfBuilder;
using test::printed;

/// The catalog, the page tree and a page.
PdfBuilder threeObjects() {
    PdfBuilder pdf;
    pdf.object(1, "<</Type/Catalog/Pages 2 0 R>>")
        .object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>")
        .object(3, "<</Type/Page/Parent 2 0 R>>");
    return pdf;
}

std::unique_ptr<Document> opened(std::string_view bytes) {
    auto result = Document::open(bytes);
    EXPECT_TRUE(result.ok());
    return result.ok() ? std::move(result.value()) : nullptr;
}

std::string loaded(Document& document, std::uint32_t number) {
    return printed(document.load({number, 0}));
}

TEST(Document, loadsObjects) {
    const std::string bytes = threeObjects().object(5, "[1 (x) 3 0 R]").table().bytes();

    const auto document = opened(bytes);

    EXPECT_EQ(printed(document->trailer().find("Root")), "1 0 R");
    EXPECT_EQ(printed(document->get(document->catalog(), "Pages")), "<</Type /Pages/Kids [3 0 R]/Count 1>>");
    EXPECT_EQ(loaded(*document, 5), "[1 (x) 3 0 R]");
    EXPECT_FALSE(document->isRepaired());
}

TEST(Document, whatIsNotThereIsNull) {
    const std::string bytes = threeObjects().free(6).table().bytes();

    const auto document = opened(bytes);

    for (const std::uint32_t number : {0U, 4U, 6U, 7U, 4'294'967'295U})
        EXPECT_EQ(loaded(*document, number), "null") << number;
    EXPECT_FALSE(document->isRepaired());
}

TEST(Document, anObjectIsParsedOnce) {
    const std::string bytes = threeObjects().object(5, "[1 2]").table().bytes();

    const auto document = opened(bytes);

    EXPECT_EQ(document->load({5, 0}).array().data(), document->load({5, 0}).array().data());
}

TEST(Document, followsChainsOfReferences) {
    const std::string bytes = threeObjects()
                                  .object(5, "6 0 R")
                                  .object(6, "7 0 R")
                                  .object(7, "(end)")
                                  .object(8, "9 0 R")
                                  .object(9, "8 0 R")
                                  .table()
                                  .bytes();

    const auto document = opened(bytes);

    EXPECT_EQ(printed(document->resolve(Object::ofReference({5, 0}))), "(end)");
    EXPECT_EQ(printed(document->resolve(Object::ofReference({8, 0}))), "null");
}

TEST(Document, loadsObjectsOfObjectStreams) {
    PdfBuilder pdf = threeObjects();
    pdf.objectStream(5, {{6, "<</A 1>>"}, {7, "(seven)"}, {8, "6 0 R"}});
    const std::string bytes = pdf.xrefStream(9).bytes();

    const auto document = opened(bytes);

    EXPECT_EQ(loaded(*document, 6), "<</A 1>>");
    EXPECT_EQ(loaded(*document, 7), "(seven)");
    EXPECT_EQ(printed(document->resolve(Object::ofReference({8, 0}))), "<</A 1>>");
    EXPECT_FALSE(document->isRepaired());
}

TEST(Document, anObjectStreamWithANumberOfMoreThan32BitsIsNotThere) {
    PdfBuilder pdf = threeObjects();
    pdf.objectStream(5, {{6, "(six)"}}).xrefStream(9);
    const std::string older = std::to_string(pdf.offsetOf(9));
    const std::string fields("\2\1\0\0\0\5\0\0", 8); // in object stream 2^32 + 5
    pdf.stream(10, "/Type/XRef/W[1 5 2]/Index[6 1]/Root 1 0 R/Size 11/Prev " + older, fields);
    const std::string bytes = pdf.raw("startxref\n" + std::to_string(pdf.offsetOf(10)) + "\n%%EOF\n").bytes();

    const auto document = opened(bytes);

    EXPECT_EQ(loaded(*document, 6), "null");
    EXPECT_FALSE(document->isRepaired());
}

TEST(Document, anObjectStreamIsDecodedOnce) {
    PdfBuilder pdf = threeObjects();
    pdf.objectStream(5, {{6, "(six)"}, {7, "(seven)"}});
    std::string bytes = pdf.bytes();
    bytes.replace(bytes.find("/Type/ObjStm"), 12, "/Filter/AHx/Type/ObjStm");
    const std::size_t data = bytes.find("6 0 7 6 ");
    const std::size_t size = std::string_view("6 0 7 6 (six) (seven) ").size();
    std::string encoded;
    for (const char byte : bytes.substr(data, size))
        encoded.append({"0123456789ABCDEF"[byte >> 4], "0123456789ABCDEF"[byte & 15]});
    bytes.replace(data, size, encoded);
    const auto document = opened(bytes);

    const std::string_view six = document->load({6, 0}).string();
    const std::string_view seven = document->load({7, 0}).string();

    EXPECT_EQ(six, "six");
    EXPECT_EQ(seven, "seven");
    EXPECT_EQ(seven.data() - six.data(), 6) << "both are views of the same bytes";
}

TEST(Document, findsObjectsWhoseIndexInTheStreamIsWrong) {
    std::string bytes = threeObjects().objectStream(5, {{6, "(six)"}, {7, "(seven)"}}).xrefStream(9).bytes();
    bytes.replace(bytes.find("6 0 7 6 "), 8, "7 6 6 0 ");

    const auto document = opened(bytes);

    EXPECT_EQ(loaded(*document, 6), "(six)");
    EXPECT_EQ(loaded(*document, 7), "(seven)");
}

TEST(Document, objectStreamsInsideObjectStreamsAreRefused) {
    PdfBuilder pdf = threeObjects();
    const std::string inner = "<</Type/ObjStm/N 1/First 4/Length 8>> stream\n7 0 (x) \nendstream";
    const std::string bytes = pdf.objectStream(5, {{6, inner}}).object(8, "null").xrefStream(9).bytes();

    EXPECT_EQ(loaded(*opened(bytes), 6), "<</Type /ObjStm/N 1/First 4/Length 8>>");
}

TEST(Document, streamsAreViewsOfTheFileWhereNothingMustBeDone) {
    const std::string bytes = threeObjects().stream(5, "", "as it is").table().bytes();
    const auto document = opened(bytes);
    text::ByteBuffer buffer;

    const StreamBytes decoded = document->decode(*document->load({5, 0}).stream(), buffer);

    EXPECT_EQ(decoded.bytes, "as it is");
    EXPECT_TRUE(decoded.complete);
    EXPECT_FALSE(decoded.isImage);
    EXPECT_GE(decoded.bytes.data(), bytes.data());
    EXPECT_LT(decoded.bytes.data(), bytes.data() + bytes.size());
}

struct FilterCase {
    std::string_view entries;
    std::string_view data;
    std::string_view decoded;
    bool complete;
    bool isImage;
};

TEST(Document, appliesTheFiltersOfAStream) {
    const FilterCase cases[] = {
        {"/Filter/ASCIIHexDecode", "4142>", "AB", true, false},
        {"/Filter/AHx", "4142>", "AB", true, false},
        {"/Filter[/ASCIIHexDecode]", "4142>", "AB", true, false},
        {"/Filter[/AHx/AHx]", "34313432>", "AB", true, false},
        {"/Filter[/AHx/AHx/AHx]", "33343331>", "A", true, false},
        {"/Filter 6 0 R", "4142>", "AB", true, false},
        {"/Filter[6 0 R 6 0 R]", "34313432>", "AB", true, false},
        {"/F/AHx", "4142>", "AB", true, false},
        {"/Filter null", "4142>", "4142>", true, false},
        {"/Filter[]", "4142>", "4142>", true, false},
        {"/Filter[null/AHx]", "4142>", "AB", true, false},
        {"/Filter[/AHx]/DecodeParms[null]", "4142>", "AB", true, false},
        {"/Filter/AHx/DecodeParms null", "4142>", "AB", true, false},
        {"/Filter/RL/DecodeParms<</Columns 9>>",
         "\x01"
         "AB\x80",
         "AB", true, false},
        {"/Filter/DCTDecode", "\xFF\xD8", "", true, true},
        {"/Filter[/ASCIIHexDecode/DCT]", "4142>", "", true, true},
        {"/Filter/NoSuchFilter", "4142>", "", false, false},
        {"/Filter[/AHx/NoSuchFilter]", "4142>", "", false, false},
        {"/F(other file)", "4142>", "", false, false},
        {"/F<</UF(other file)>>", "4142>", "", false, false},
        {"/Filter/Crypt", "plain", "plain", true, false},
        {"/Filter[/Crypt/AHx]/DecodeParms[<</Name/Identity>>null]", "4142>", "AB", true, false},
    };
    for (const FilterCase& c : cases) {
        const std::string bytes = threeObjects().stream(5, c.entries, c.data).object(6, "/AHx").table().bytes();
        const auto document = opened(bytes);
        text::ByteBuffer buffer;

        const StreamBytes decoded = document->decode(*document->load({5, 0}).stream(), buffer);

        EXPECT_EQ(decoded.bytes, c.decoded) << c.entries;
        EXPECT_EQ(decoded.complete, c.complete) << c.entries;
        EXPECT_EQ(decoded.isImage, c.isImage) << c.entries;
    }
}

struct LengthCase {
    std::string_view name;
    std::string_view object;
    std::string_view data;
    bool complete;
};

TEST(Document, findsTheDataOfStreams) {
    const LengthCase cases[] = {
        {"right", "<</Length 4>>\nstream\ndata\nendstream", "data", true},
        {"line end CR LF", "<</Length 4>>stream\r\ndata\r\nendstream", "data", true},
        {"line end CR", "<</Length 4>>stream\rdata\rendstream", "data", true},
        {"blanks before the line end", "<</Length 4>> stream  \r\ndata endstream", "data", true},
        {"no line end", "<</Length 4>>streamdataendstream", "data", true},
        {"data that contains the keyword", "<</Length 16>>stream\n1 endstream data\nendstream", "1 endstream data",
         true},
        {"length too small", "<</Length 2>>stream\ndata\nendstream", "data", true},
        {"length too large", "<</Length 22>>stream\ndata\nendstream", "data", true},
        {"length beyond the file", "<</Length 99999999>>stream\ndata\r\nendstream", "data", true},
        {"length negative", "<</Length -4>>stream\ndata\nendstream", "data", true},
        {"length absent", "<<>>stream\ndata\nendstream", "data", true},
        {"length not a number", "<</Length/x>>stream\ndata\nendstream", "data", true},
        {"length indirect", "<</Length 6 0 R>>stream\n1 endstream data\nendstream", "1 endstream data", true},
        {"length indirect, itself", "<</Length 5 0 R>>stream\ndata\nendstream", "data", true},
        {"length indirect, missing", "<</Length 77 0 R>>stream\ndata\nendstream", "data", true},
        {"endstream absent", "<</Length 9>>stream\ndata", "data", true},
        {"empty", "<</Length 0>>stream\nendstream", "", true},
        {"endstream and endobj absent", "<</Length 9>>stream\ndata\n77 0 obj 1", "data", false},
    };
    for (const LengthCase& c : cases) {
        const std::string bytes = threeObjects().object(5, c.object).object(6, "16").table().bytes();
        const auto document = opened(bytes);
        const StreamContent* const stream = document->load({5, 0}).stream();
        ASSERT_NE(stream, nullptr) << c.name;
        text::ByteBuffer buffer;

        const StreamBytes decoded = document->decode(*stream, buffer);

        EXPECT_EQ(decoded.bytes, c.data) << c.name;
        EXPECT_EQ(decoded.complete, c.complete) << c.name;
        EXPECT_FALSE(document->isRepaired()) << c.name;
    }
}

TEST(Document, aLengthInAnObjectStreamIsNotNeeded) {
    PdfBuilder pdf = threeObjects();
    pdf.object(5, "<</Length 7 0 R>>stream\ndata\nendstream");
    const std::string bytes = pdf.objectStream(6, {{7, "4"}}).xrefStream(8).bytes();
    const auto document = opened(bytes);
    text::ByteBuffer buffer;

    EXPECT_EQ(document->decode(*document->load({5, 0}).stream(), buffer).bytes, "data");
}

TEST(Document, anObjectThatIsNotWhereItShouldBeIsSearched) {
    std::string bytes = threeObjects().object(5, "(five)").object(6, "(six)").table().bytes();
    const std::size_t five = bytes.find("5 1\n") + 4;
    bytes.replace(five, 10, "0000000020");

    const auto document = opened(bytes);

    EXPECT_EQ(loaded(*document, 6), "(six)");
    EXPECT_EQ(loaded(*document, 5), "(five)");
    EXPECT_FALSE(document->isRepaired());
}

TEST(Document, otherThreadsHaveObjectsOfTheirOwn) {
    const std::string bytes = threeObjects().object(5, "[1 (a\\nb)]").table().bytes();
    const auto document = opened(bytes);

    const auto other = document->forThread();

    EXPECT_EQ(loaded(*other, 5), "[1 (a\nb)]");
    EXPECT_EQ(printed(other->trailer().find("Root")), "1 0 R");
    EXPECT_NE(other->load({5, 0}).array().data(), document->load({5, 0}).array().data());
}

TEST(Document, severalThreadsFindMisplacedObjects) {
    std::string bytes = threeObjects().object(5, "(five)").table().bytes();
    bytes.replace(bytes.find("5 1\n") + 4, 10, "0000000020");
    const auto document = opened(bytes);

    std::array<std::future<std::string>, 4> found;
    for (auto& one : found)
        one = std::async(std::launch::async, [&document] { return loaded(*document->forThread(), 5); });

    for (auto& one : found)
        EXPECT_EQ(one.get(), "(five)");
}

} // namespace
} // namespace quillow::pdf
