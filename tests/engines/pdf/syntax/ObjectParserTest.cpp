#include "engines/pdf/syntax/ObjectParser.h"

#include "tests/engines/pdf/syntax/Printed.h"

#include <gtest/gtest.h>

namespace quillow::pdf {
namespace {

using test::printed;

class ObjectParserTest : public testing::Test {
protected:
    ParsedObject parse(std::string_view bytes) { return parser_.parse(bytes.data(), bytes.data() + bytes.size()); }

    Arena arena_;
    ObjectParser parser_{arena_};
};

struct ParserCase {
    std::string_view bytes;
    std::string_view object;
    bool isWhole;
    std::string_view rest;
};

TEST_F(ObjectParserTest, readsObjects) {
    const ParserCase cases[] = {
        {"null", "null", true, ""},
        {" true false", "true", true, " false"},
        {"false", "false", true, ""},
        {"12", "12", true, ""},
        {"-12.5", "-12.5", true, ""},
        {"9223372036854775807", "9223372036854775807", true, ""},
        {"99999999999999999999", "9223372036854775807", true, ""},
        {"123456789012 ", "123456789012", true, " "},
        {"/Name/Other", "/Name", true, "/Other"},
        {"/A#20B#2f", "/A B/", true, ""},
        {"/A#2", "/A#2", true, ""},
        {"/A#GG#41", "/A#GGA", true, ""},
        {"/", "/", true, ""},
        {"(a\\)b)", "(a)b)", true, ""},
        {"<4142>", "(AB)", true, ""},
        {"12 0 R", "12 0 R", true, ""},
        {"12 0 Rx", "12", true, " 0 Rx"},
        {"12 0 obj", "12", true, " 0 obj"},
        {"[1 2 0 R 3 4 R 5]", "[1 2 0 R 3 4 R 5]", true, ""},
        {"[1 0 R/N(s)<41>true null]", "[1 0 R /N (s) (A) true null]", true, ""},
        {"[]", "[]", true, ""},
        {"[[1][2[3]]]", "[[1] [2 [3]]]", true, ""},
        {"<</A 1/B<</C[2 0 R]>>>>", "<</A 1/B <</C [2 0 R]>>>>", true, ""},
        {"<<>>", "<<>>", true, ""},
        {"<</A/B/C 1>>", "<</A /B/C 1>>", true, ""},
        {"% comment\n<< /A % comment >>\n 1>>x", "<</A 1>>", true, "x"},
    };
    for (const ParserCase& c : cases) {
        const ParsedObject parsed = parse(c.bytes);
        EXPECT_EQ(printed(parsed.object), c.object) << c.bytes;
        EXPECT_EQ(parsed.isWhole, c.isWhole) << c.bytes;
        EXPECT_EQ(std::string_view(parsed.end, static_cast<std::size_t>(c.bytes.data() + c.bytes.size() - parsed.end)),
                  c.rest)
            << c.bytes;
    }
}

TEST_F(ObjectParserTest, makesWhatItCanOfDamagedObjects) {
    const ParserCase cases[] = {
        {"", "null", false, ""},
        {"endobj", "null", false, "endobj"},
        {"[1 2 endobj", "[1 2]", false, "endobj"},
        {"<</A 1/B[2 3", "<</A 1/B [2 3]>>", false, ""},
        {"<</A[1 2>>x", "<</A [1 2]>>", true, "x"},
        {"<</A 1]/B 2>>", "<</A 1/B 2>>", true, ""},
        {"<</A>>", "<</A null>>", true, ""},
        {"<</A 1 2/B 3>>", "<</A 1/B 3>>", true, ""},
        {"<<<</A 1>>>>", "<</A 1>>", true, ""},
        {"<< <</A 1>> endobj", "<</A 1>>", false, "endobj"},
        {"<<1/A 2>>", "<</A 2>>", true, ""},
        {"<</A 1 stream", "<</A 1>>", false, "stream"},
        {"[1e5 2E-3 3endobj", "[1 2 3]", false, "endobj"},
        {"[1 R]", "[1 null]", true, ""},
        {"[-1 0 R]", "[-1 0 null]", true, ""},
        {"[nul}l)>]", "[null null]", true, ""},
        {"]]>>5", "5", true, ""},
        {"[1 7 0 obj 2]", "[1 7 0]", false, "obj 2]"},
        {"(never closed", "(never closed)", true, ""},
    };
    for (const ParserCase& c : cases) {
        const ParsedObject parsed = parse(c.bytes);
        EXPECT_EQ(printed(parsed.object), c.object) << c.bytes;
        EXPECT_EQ(parsed.isWhole, c.isWhole) << c.bytes;
        EXPECT_EQ(std::string_view(parsed.end, static_cast<std::size_t>(c.bytes.data() + c.bytes.size() - parsed.end)),
                  c.rest)
            << c.bytes;
    }
}

TEST_F(ObjectParserTest, namesAndPlainStringsAreViewsOfTheBytes) {
    const std::string_view bytes = "[/Name (string)]";

    const std::span<const Object> items = parse(bytes).object.array();

    EXPECT_EQ(items[0].name().data(), bytes.data() + 2);
    EXPECT_EQ(items[1].string().data(), bytes.data() + 8);
}

TEST_F(ObjectParserTest, theLastOfEqualKeysCounts) {
    EXPECT_EQ(parse("<</A 1/B 2/A 3>>").object.dictionary().find("A").integerOr(0), 3);
}

TEST_F(ObjectParserTest, dictionariesWithManyEntriesAreSorted) {
    std::string bytes = "<<";
    for (std::size_t i = 0; i <= kUnsortedEntries; ++i)
        bytes += "/K" + std::to_string(i) + " " + std::to_string(i);
    bytes += "/K7 -7>>";

    const Dictionary dictionary = parse(bytes).object.dictionary();

    EXPECT_EQ(dictionary.order(), EntryOrder::sorted);
    EXPECT_EQ(dictionary.entries().size(), kUnsortedEntries + 1);
    EXPECT_EQ(dictionary.find("K7").integerOr(0), -7);
    EXPECT_EQ(dictionary.find("K32").integerOr(0), 32);
    EXPECT_TRUE(dictionary.find("K99").isNull());
    EXPECT_TRUE(dictionary.find("").isNull());
}

TEST_F(ObjectParserTest, nestsAsDeepAsAllowed) {
    const std::string open(kMaximumNesting, '[');
    const std::string close(kMaximumNesting, ']');

    EXPECT_TRUE(parse(open + close).isWhole);
    EXPECT_FALSE(parse("[" + open + close + "]").isWhole);
    EXPECT_FALSE(parse(std::string(1'000'000, '[')).isWhole);
}

TEST_F(ObjectParserTest, itemsBeyondTheLimitAreDropped) {
    std::string bytes = "[";
    for (std::size_t i = 0; i < kMaximumItems + 5; ++i)
        bytes += "0 ";
    bytes += "]";

    const ParsedObject parsed = parse(bytes);

    EXPECT_TRUE(parsed.isWhole);
    EXPECT_EQ(parsed.object.array().size(), kMaximumItems);
}

} // namespace
} // namespace quillow::pdf
