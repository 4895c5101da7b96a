#include "engines/pdf/fonts/fontfiles/PostNames.h"

#include "engines/pdf/fonts/fontfiles/StandardNames.h"
#include "tests/engines/pdf/fonts/fontfiles/FontBuilders.h"

#include <gtest/gtest.h>

namespace quillow::pdf {
namespace {

using namespace build;

std::string versionOnly(std::uint32_t version) {
    return u32(version) + std::string(28, '\0');
}

TEST(PdfPostNames, version1HasTheStandardOrder) {
    const std::string table = versionOnly(0x00010000);
    PostNames names(table);
    EXPECT_EQ(names.nameOf(3), "space");
    EXPECT_EQ(names.nameOf(257), "dcroat");
    EXPECT_EQ(names.nameOf(258), "");
    EXPECT_EQ(names.find("dcroat"), 257);
    EXPECT_EQ(names.find(".notdef"), 0);
}

TEST(PdfPostNames, version2NamesGlyphsFromTheStandardOrderAndItsStrings) {
    const std::string table = post2({0, 259, 3, 258, 300}, {"first", "second"});
    PostNames names(table);
    EXPECT_EQ(names.nameOf(0), ".notdef");
    EXPECT_EQ(names.nameOf(1), "second");
    EXPECT_EQ(names.nameOf(2), "space");
    EXPECT_EQ(names.nameOf(3), "first");
    EXPECT_EQ(names.nameOf(4), ""); // no such string
    EXPECT_EQ(names.nameOf(5), "");
    EXPECT_EQ(names.find("second"), 1);
    EXPECT_EQ(names.find("third"), 0);
}

TEST(PdfPostNames, onlyTheFirstGlyphIsNotdef) {
    const std::string table = post2({0, 0, 258, 36}, {".notdef"});
    PostNames names(table);
    EXPECT_EQ(names.nameOf(0), ".notdef");
    EXPECT_EQ(names.nameOf(1), "");
    EXPECT_EQ(names.nameOf(2), "");
    EXPECT_EQ(names.nameOf(3), "A");
}

TEST(PdfPostNames, ofTwoGlyphsWithOneNameTheFirstIsFound) {
    const std::string table = post2({0, 258, 258}, {"twin"});
    EXPECT_EQ(PostNames(table).find("twin"), 1);
}

TEST(PdfPostNames, version25HasDifferencesToTheStandardOrder) {
    for (const std::uint32_t version : {0x00025000U, 0x00028000U}) {
        const std::string table = versionOnly(version) + u16(4) + u8(3) + u8(0x80) + u8(127) + u8(0xFF);
        PostNames names(table);
        EXPECT_EQ(names.nameOf(0), "space");
        EXPECT_EQ(names.nameOf(1), ""); // before the first
        EXPECT_EQ(names.nameOf(2), macintoshGlyphName(129));
        EXPECT_EQ(names.nameOf(3), "nonmarkingreturn");
        EXPECT_EQ(names.nameOf(4), "");
    }
}

TEST(PdfPostNames, otherVersionsHaveNone) {
    for (const std::uint32_t version : {0x00030000U, 0x00040000U, 0U}) {
        const std::string table = versionOnly(version) + u16(1) + u16(3);
        EXPECT_EQ(PostNames(table).nameOf(0), "");
        EXPECT_EQ(PostNames(table).find("space"), 0);
    }
    EXPECT_EQ(PostNames("").nameOf(0), "");
}

TEST(PdfPostNames, cutTablesNameWhatTheyHave) {
    const std::string table = post2({0, 258, 259}, {"first", "second"});
    PostNames names(std::string_view(table).substr(0, table.size() - 1)); // in the last string
    EXPECT_EQ(names.nameOf(1), "first");
    EXPECT_EQ(names.nameOf(2), "");
    EXPECT_EQ(PostNames(std::string_view(table).substr(0, 37)).nameOf(1), ""); // in the second place
    EXPECT_EQ(PostNames(std::string_view(table).substr(0, 37)).nameOf(0), ".notdef");
}

TEST(PdfPostNames, namesOfMoreThan127BytesAreNone) {
    const std::string longest(127, 'a');
    const std::string longer(128, 'b');
    const std::string table = post2({258, 259, 260}, {longest, longer, "short"});
    PostNames names(table);
    EXPECT_EQ(names.nameOf(0), longest);
    EXPECT_EQ(names.nameOf(1), "");
    EXPECT_EQ(names.nameOf(2), "short");
}

TEST(PdfPostNames, keepsNoMoreStringsThanGlyphsCanName) {
    // A string of no bytes costs one byte of the table; what lies behind the last that a glyph can name is not read.
    constexpr std::size_t kStringsWithANumber = 0x10000 - 258;
    std::string table = post2({0xFFFF, 0xFFFE}, {}) + std::string(kStringsWithANumber - 1, '\0');
    table += u8(4) + std::string("last") + u8(6) + std::string("behind");
    PostNames names(table);
    EXPECT_EQ(names.nameOf(0), "last");
    EXPECT_EQ(names.nameOf(1), "");
}

} // namespace
} // namespace quillow::pdf
