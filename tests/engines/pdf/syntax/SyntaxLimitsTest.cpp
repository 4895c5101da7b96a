#include "engines/pdf/Limits.h"
#include "engines/pdf/syntax/CrossReferenceReader.h"
#include "engines/pdf/syntax/Document.h"
#include "engines/pdf/syntax/Opening.h"
#include "engines/pdf/syntax/PageTree.h"
#include "engines/pdf/syntax/StreamDecoder.h"
#include "tests/engines/pdf/PdfBuilder.h"
#include "tests/engines/pdf/syntax/Printed.h"

#include <gtest/gtest.h>

namespace quillow::pdf {
namespace {

using test::PdfBuilder;
using test::printed;

constexpr std::size_t kMegabyte = std::size_t{1} << 20;

PdfBuilder threeObjects() {
    PdfBuilder pdf;
    pdf.object(1, "<</Type/Catalog/Pages 2 0 R>>").object(2, "<</Type/Pages/Kids[3 0 R]>>").object(3, "<</Type/Page>>");
    return pdf;
}

std::unique_ptr<Document> opened(std::string_view bytes) {
    auto result = Document::open(bytes);
    EXPECT_TRUE(result.ok());
    return result.ok() ? std::move(result.value()) : nullptr;
}

/// Blanks that take two bytes for 128 of them, for the filter RunLength.
std::string runs(std::size_t decoded, char byte = ' ') {
    std::string encoded;
    for (std::size_t i = 0; i < decoded / 128; ++i)
        encoded.append({'\x81', byte});
    return encoded;
}

/// Bytes as they are, for the filter RunLength.
std::string literally(std::string_view bytes) {
    return static_cast<char>(bytes.size() - 1) + std::string(bytes);
}

TEST(SyntaxLimits, largerFilesAreRefused) {
    const std::string_view small = "%PDF-1.7";
    const auto result = Document::open({small.data(), kMaximumDocument + 1}); // refused before a byte is read

    ASSERT_FALSE(result.ok());
    EXPECT_EQ(result.failure().reason, Reason::tooLarge);
}

TEST(SyntaxLimits, aDecodedStreamIsCut) {
    const std::string bytes =
        threeObjects().stream(5, "/Filter/RL", runs(kMaximumDecodedStream + kMegabyte)).table().bytes();
    const auto document = opened(bytes);
    text::ByteBuffer buffer;

    const StreamBytes decoded = document->decode(*document->load({5, 0}).stream(), buffer);

    EXPECT_EQ(decoded.bytes.size(), kMaximumDecodedStream);
    EXPECT_FALSE(decoded.complete);
}

TEST(SyntaxLimits, aLargeStreamMayGrowToFourTimesItsSize) {
    const std::string data = runs(64 * (kMaximumDecodedStream / kAlwaysDecodedRatio + kMegabyte));
    const std::string bytes = threeObjects().stream(5, "/Filter/RL", data).table().bytes();
    const auto document = opened(bytes);
    text::ByteBuffer buffer;

    EXPECT_EQ(document->decode(*document->load({5, 0}).stream(), buffer).bytes.size(),
              kAlwaysDecodedRatio * data.size());
}

TEST(SyntaxLimits, allDecodedStreamsTogetherAreCut) {
    const std::string bytes = threeObjects().stream(5, "/Filter/RL", runs(kMaximumDecodedStream)).table().bytes();
    const auto document = opened(bytes);
    text::ByteBuffer buffer;
    const std::size_t most = kMaximumDecodedTotal + kDecodedTotalRatio * bytes.size();

    std::size_t total = 0;
    std::size_t cut = 0;
    for (std::size_t i = 0; i < most / kMaximumDecodedStream + 3; ++i) {
        const StreamBytes decoded = document->decode(*document->load({5, 0}).stream(), buffer);
        total += decoded.bytes.size();
        cut += decoded.complete ? 0 : 1;
    }

    EXPECT_LE(total, most);
    EXPECT_GT(total, most - kMegabyte);
    EXPECT_EQ(cut, 3U);
}

TEST(SyntaxLimits, objectStreamsAreKeptAsFarAsMemoryIsAllowed) {
    PdfBuilder pdf = threeObjects();
    for (const std::uint32_t number : {5U, 6U, 7U}) {
        const std::string index = std::to_string(number + 10) + " 0 ";
        pdf.stream(number, "/Type/ObjStm/N 1/First " + std::to_string(index.size()) + "/Filter/RL",
                   literally(index + "(x) ") + runs(40 * kMegabyte));
    }
    const auto document = opened(pdf.bytes());

    EXPECT_EQ(printed(document->load({15, 0})), "(x)");
    EXPECT_EQ(printed(document->load({16, 0})), "(x)");
    EXPECT_EQ(printed(document->load({17, 0})), "null");
    EXPECT_EQ(printed(document->load({7, 0})), "null") << "nothing new is kept";
    EXPECT_EQ(printed(document->load({15, 0})), "(x)") << "what is kept stays";
}

TEST(SyntaxLimits, aLargeFileMayKeepMoreObjects) {
    std::string numbers = "[";
    for (int i = 0; i < 500'000; ++i)
        numbers += "1 ";
    const auto fileWith = [&](std::size_t padding) {
        return threeObjects().object(5, numbers + "]").raw('%' + std::string(padding, ' ') + '\n').table().bytes();
    };
    const auto shareOfMemory = [](std::string_view bytes) {
        const auto document = opened(bytes);
        static_cast<void>(document->load({5, 0}));
        return document->usedShare();
    };
    const std::string small = fileWith(1);
    const std::string large = fileWith(16 * kMegabyte);
    const auto limitOf = [](const std::string& bytes) {
        return static_cast<double>(kMaximumObjectMemory + 2 * bytes.size());
    };

    EXPECT_NEAR(shareOfMemory(small) / shareOfMemory(large), limitOf(large) / limitOf(small), 0.01);
}

TEST(SyntaxLimits, bytesAreParsedAsOftenAsAllowed) {
    constexpr std::uint32_t kObjects = 12;
    std::string index;
    for (std::uint32_t i = 0; i < kObjects; ++i)
        index += std::to_string(10 + i) + " 0 ";
    PdfBuilder pdf = threeObjects();
    pdf.stream(5, "/Type/ObjStm/N 12/First " + std::to_string(index.size()) + "/Filter/RL",
               literally(index) + runs(40 * kMegabyte) + literally("(x) "));
    const auto document = opened(pdf.bytes());

    std::size_t read = 0;
    for (std::uint32_t i = 0; i < kObjects; ++i)
        read += document->load({10 + i, 0}).string() == "x" ? 1 : 0;

    EXPECT_EQ(read, (kMaximumParsed + kParsedRatio * pdf.bytes().size()) / (40 * kMegabyte) + 1);
}

TEST(SyntaxLimits, objectNumbersAreBounded) {
    const auto highest = static_cast<std::uint32_t>(kMaximumObjectNumber);
    const std::string bytes = threeObjects().object(highest, "(a)").object(highest + 1, "(b)").table().bytes();
    const auto document = opened(bytes);

    EXPECT_EQ(printed(document->load({highest, 0})), "(a)");
    EXPECT_EQ(printed(document->load({highest + 1, 0})), "null");
}

TEST(SyntaxLimits, aStreamHasAsManyFiltersAsAllowed) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string data = "A";
    std::string filters;
    for (std::size_t i = 0; i < kMaximumFilters; ++i) {
        std::string encoded;
        for (const char byte : data)
            encoded.append(
                {kDigits[static_cast<std::uint8_t>(byte) >> 4], kDigits[static_cast<std::uint8_t>(byte) & 15]});
        data = encoded;
        filters += "/AHx";
    }
    const auto decoded = [&](const std::string& names) {
        const std::string bytes = threeObjects().stream(5, "/Filter[" + names + "]", data).table().bytes();
        const auto document = opened(bytes);
        text::ByteBuffer buffer;
        return std::string(document->decode(*document->load({5, 0}).stream(), buffer).bytes);
    };

    EXPECT_EQ(decoded(filters), "A");
    EXPECT_EQ(decoded(filters + "/AHx"), "");
}

TEST(SyntaxLimits, chainsOfReferencesAreBounded) {
    PdfBuilder pdf = threeObjects();
    constexpr std::uint32_t kChain = 17;
    for (std::uint32_t i = 0; i < kChain; ++i)
        pdf.object(10 + i, std::to_string(11 + i) + " 0 R");
    const std::string bytes = pdf.object(10 + kChain, "(end)").table().bytes();
    const auto document = opened(bytes);

    EXPECT_EQ(printed(document->resolve(Object::ofReference({11, 0}))), "(end)");
    EXPECT_EQ(printed(document->resolve(Object::ofReference({10, 0}))), "null");
}

TEST(SyntaxLimits, referencesAreFollowedAsOftenAsAllowed) {
    const std::string bytes = threeObjects().object(5, "(five)").table().bytes();
    const auto document = opened(bytes);
    const std::size_t most = kMaximumFollowed + kFollowedRatio * bytes.size();

    const Object five = Object::ofReference({5, 0});
    std::size_t followed = 0;
    while (followed < most && !document->resolve(five).isNull())
        ++followed;

    EXPECT_GT(followed, most - 100) << "some were followed while the document was opened";
    EXPECT_LT(followed, most);
    EXPECT_EQ(printed(document->resolve(Object::ofInteger(1))), "1");
    EXPECT_TRUE(document->isExhausted());
}

TEST(SyntaxLimits, aStreamCountsAsSomeBytesAtLeast) {
    const std::string bytes =
        threeObjects().object(3, "<</Type/Page/Contents 5 0 R>>").stream(5, "", "x").table().bytes();
    const auto document = opened(bytes);
    const StreamContent& stream = *document->load({5, 0}).stream();
    text::ByteBuffer buffer;

    EXPECT_FALSE(document->isExhausted());
    std::size_t decoded = 0;
    while (document->decode(stream, buffer).bytes == "x")
        ++decoded;

    EXPECT_EQ(decoded, (kMaximumDecodedTotal + kDecodedTotalRatio * bytes.size()) / kLeastDecoded);
    EXPECT_TRUE(document->isExhausted());
    EXPECT_TRUE(contentsOf(*document, pagesOf(*document).at(0)).empty());
}

TEST(SyntaxLimits, aRepairLooksForAPageBelowAsManyCatalogsAsAllowed) {
    const auto isOpened = [](std::size_t others) {
        std::string bytes = "%PDF-1.4\n1 0 obj<</Type/Catalog/Pages 2 0 R>>endobj 2 0 obj<</Kids[3 0 R]>>endobj "
                            "3 0 obj<</Mark 1>>endobj ";
        for (std::size_t i = 0; i < others; ++i)
            bytes += std::to_string(10 + i) + " 0 obj<</Type/Catalog>>endobj ";
        return Document::open(bytes).ok();
    };

    EXPECT_TRUE(isOpened(kMaximumRootsTried - 1));
    EXPECT_FALSE(isOpened(kMaximumRootsTried));
}

/// Each section is in a string of the one before it, so that their dictionaries have far more bytes than the file. The
/// innermost one leads to a good table.
TEST(SyntaxLimits, sectionsInsideOneAnotherAreParsedAsFarAsAllowed) {
    const auto isRepaired = [](std::size_t sections) {
        PdfBuilder pdf = threeObjects();
        const std::size_t table = pdf.bytes().size();
        std::string bytes = pdf.table().bytes();
        const std::size_t first = bytes.size();
        std::string ends;
        for (std::size_t i = 0; i < sections; ++i) {
            std::string head = "9 0 obj<</W[1 1 1]/Prev 0000000000/A(";
            const std::string next = std::to_string(i + 1 == sections ? table : bytes.size() + head.size());
            head.replace(head.find("0000000000") + 10 - next.size(), next.size(), next);
            bytes += head;
            ends += ")>>stream\nendstream ";
        }
        return opened(bytes + ends + "startxref " + std::to_string(first))->isRepaired();
    };

    EXPECT_FALSE(isRepaired(1'000));
    EXPECT_TRUE(isRepaired(6'000));
}

/// The sections are counted from the newest one; the last one has the objects.
TEST(SyntaxLimits, aFileHasAsManySectionsAsAllowed) {
    const auto isRepaired = [](std::size_t sections) {
        PdfBuilder pdf = threeObjects();
        std::size_t last = pdf.bytes().size();
        std::string bytes = pdf.table("/Size 4").bytes();
        for (std::size_t i = 1; i < sections; ++i) {
            const std::size_t at = bytes.size();
            bytes += "xref 0 0 trailer<</Root 1 0 R/Prev " + std::to_string(last) + ">>\n";
            last = at;
        }
        return opened(bytes + "startxref " + std::to_string(last))->isRepaired();
    };

    EXPECT_FALSE(isRepaired(kMaximumSections));
    EXPECT_TRUE(isRepaired(kMaximumSections + 1));
}

TEST(SyntaxLimits, sectionsHaveAsManyEntriesAsAllowed) {
    const auto isRepaired = [](std::size_t others) {
        PdfBuilder pdf = threeObjects();
        std::string index;
        for (std::size_t left = others; left > 0;) {
            const std::size_t count = std::min<std::size_t>(left, 8'000'000);
            index += "10 " + std::to_string(count) + " ";
            left -= count;
        }
        std::string offsets;
        for (const std::uint32_t number : {1U, 2U, 3U})
            offsets.push_back(static_cast<char>(pdf.offsetOf(number)));
        const std::size_t section = pdf.bytes().size();
        pdf.stream(4, "/Type/XRef/Root 1 0 R/W[0 1 0]/Filter/RL/Index[" + index + "1 3]",
                   runs(others, '\0') + literally(offsets));
        return opened(pdf.raw("startxref " + std::to_string(section)).bytes())->isRepaired();
    };

    EXPECT_FALSE(isRepaired(kMaximumSectionEntries - 128));
    EXPECT_TRUE(isRepaired(kMaximumSectionEntries));
}

TEST(SyntaxLimits, sectionsDecodeAsMuchAsAllowed) {
    const auto isRepaired = [](std::size_t sections) {
        PdfBuilder pdf = threeObjects();
        std::size_t last = pdf.bytes().size();
        pdf.table("/Size 4");
        for (std::uint32_t i = 0; i < sections; ++i) {
            const std::size_t at = pdf.bytes().size();
            pdf.stream(10 + i, "/Type/XRef/W[1 1 1]/Index[]/Root 1 0 R/Filter/RL/Prev " + std::to_string(last),
                       runs(kMaximumDecodedStream));
            last = at;
        }
        return opened(pdf.raw("startxref " + std::to_string(last)).bytes())->isRepaired();
    };
    constexpr std::size_t kFull = kMaximumDecodedTotal / kMaximumDecodedStream;

    EXPECT_FALSE(isRepaired(kFull - 1));
    EXPECT_TRUE(isRepaired(kFull));
}

} // namespace
} // namespace quillow::pdf
