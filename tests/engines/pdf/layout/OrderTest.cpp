// The reading order of lines and columns.
#include "engines/pdf/layout/MarginNotes.h"
#include "tests/engines/pdf/layout/PageTextOf.h"

#include <gtest/gtest.h>

namespace quillow::pdf {
namespace {

constexpr std::u32string_view kLeft = U"left column with running text";
constexpr std::u32string_view kRight = U"right column of more long text";

/// `count` lines of running text.
PageBuilder& prose(PageBuilder& builder, float x, float y, std::u32string_view line, int count) {
    for (int i = 0; i < count; ++i)
        builder.text(x, y - 12.0F * static_cast<float>(i), line);
    return builder;
}

std::string repeated(const std::string& line, int count) {
    std::string lines;
    for (int i = 0; i < count; ++i)
        lines += line + "\n";
    return lines;
}

const std::string kLeftLine = "left column with running text";
const std::string kRightLine = "right column of more long text";

TEST(PdfOrder, aFootDrawnFirstDoesNotMixSectionsOfTwoColumns) {
    PageBuilder builder;
    builder.text(10, 30, U"foot");
    prose(builder, 10, 700, kLeft, 5);
    prose(builder, 170, 700, kRight, 5);
    builder.text(10, 620, U"Heading");
    prose(builder, 10, 600, kLeft, 5);
    prose(builder, 170, 600, kRight, 5);
    EXPECT_EQ(linesOf(builder), repeated(kLeftLine, 5) + repeated(kRightLine, 5) + "Heading\n" +
                                    repeated(kLeftLine, 5) + repeated(kRightLine, 5) + "foot\n");
}

TEST(PdfOrder, aTableInOneColumnDoesNotReachIntoTheOther) {
    PageBuilder builder;
    prose(builder, 10, 700, kLeft, 5);
    for (int i = 0; i < 3; ++i) {
        const float y = 640.0F - 12.0F * static_cast<float>(i);
        builder.text(10, y, U"1").text(60, y, U"2").text(110, y, U"3");
    }
    prose(builder, 10, 604, kLeft, 5);
    prose(builder, 170, 700, kRight, 13);
    EXPECT_EQ(linesOf(builder),
              repeated(kLeftLine, 5) + repeated("1\t2\t3", 3) + repeated(kLeftLine, 5) + repeated(kRightLine, 13));
}

TEST(PdfOrder, columnsDrawnLineByLineAreReadOneAfterTheOther) {
    PageBuilder builder;
    for (int i = 0; i < 5; ++i) {
        const float y = 700.0F - 12.0F * static_cast<float>(i);
        builder.text(10, y, kLeft).text(170, y, kRight);
    }
    EXPECT_EQ(linesOf(builder), repeated(kLeftLine, 5) + repeated(kRightLine, 5));
}

TEST(PdfOrder, threeColumnsDrawnLineByLineAreReadOneAfterTheOther) {
    PageBuilder builder;
    for (int i = 0; i < 5; ++i) {
        const float y = 700.0F - 12.0F * static_cast<float>(i);
        builder.text(10, y, kLeft).text(170, y, kRight).text(335, y, kLeft);
    }
    EXPECT_EQ(linesOf(builder), repeated(kLeftLine, 5) + repeated(kRightLine, 5) + repeated(kLeftLine, 5));
}

TEST(PdfOrder, labelsBesideTextAreNotColumns) {
    PageBuilder builder;
    std::string expected;
    for (int i = 0; i < 5; ++i) {
        const float y = 700.0F - 12.0F * static_cast<float>(i);
        builder.text(10, y, U"term").text(60, y, U"what the term of the list means in its own long line");
        expected += "term what the term of the list means in its own long line\n";
    }
    EXPECT_EQ(linesOf(builder), expected);
}

TEST(PdfOrder, aSidebarWithLinesOfItsOwnIsNotATable) {
    PageBuilder builder;
    std::string left;
    std::string right;
    for (int i = 0; i < 9; ++i) {
        const float y = 700.0F - 23.0F * static_cast<float>(i);
        builder.text(10, y, U"Item").text(70, y, U"10");
        left += "Item\t10\n";
    }
    for (int i = 0; i < 9; ++i) {
        builder.text(200, 700.0F - 29.0F * static_cast<float>(i), U"Fact");
        right += "Fact\n";
    }
    EXPECT_EQ(linesOf(builder), left + right);
}

TEST(PdfOrder, blocksSideBySideWithLeadingsOfTheirOwnAreNotATable) {
    PageBuilder builder;
    builder.lines(10, 700, {U"Hotel", U"44100 3", U"City", U"555 678", U"Land"}, 11.5F);
    builder.lines(200, 706, {U"Sender", U"77000 5", U"Town", U"555 901", U"Mail"}, 13);
    EXPECT_EQ(linesOf(builder), "Hotel\n44100 3\nCity\n555 678\nLand\nSender\n77000 5\nTown\n555 901\nMail\n");
}

TEST(PdfOrder, aBlockDrawnAfterTheRowsBesideItIsNoColumnOfThem) {
    PageBuilder builder;
    std::string expected;
    for (int i = 0; i < 5; ++i) {
        builder.text(10, 700.0F - 17.0F * static_cast<float>(i), U"Date")
            .text(70, 700.0F - 17.0F * static_cast<float>(i), U"10");
        expected += "Date\t10\n";
    }
    builder.text(200, 700, U"Contact").text(200, 683, U"Name").lines(200, 671.5F, {U"Phone", U"Fax", U"Mail"}, 11.5F);
    EXPECT_EQ(linesOf(builder), expected + "Contact\nName\nPhone\nFax\nMail\n");
}

TEST(PdfOrder, columnsOfRightToLeftTextAreReadFromTheRight) {
    PageBuilder builder;
    prose(builder, 10, 700, U"תש רק צפ עס", 3);
    prose(builder, 170, 700, U"הד גב א", 3);
    EXPECT_EQ(linesOf(builder), repeated("א בג דה", 3) + repeated("סע פצ קר שת", 3));
}

/// A head of two blocks side by side above a title. The stream draws the second block behind the title.
PageBuilder headInTwoBlocks(std::uint8_t flags, float titleBelow) {
    PageBuilder builder;
    builder.flags(flags).lines(10, 700, {U"Office of", U"the city"}).size(20).text(30, 688 - titleBelow, U"The title");
    return builder.size(10).lines(90, 700, {U"Somewhere", U"12 Street", U"90000 City"});
}

TEST(PdfOrder, aBlockIsPartedWhereTheBlockBesideItEnds) {
    EXPECT_EQ(linesOf(headInTwoBlocks(0, 55)), "Office of\nthe city\nSomewhere\n12 Street\n90000 City\nThe title\n");
}

TEST(PdfOrder, aBlockIsNotPartedBetweenLinesThatAreNear) {
    EXPECT_EQ(linesOf(headInTwoBlocks(0, 35)), "Office of\nthe city\nThe title\nSomewhere\n12 Street\n90000 City\n");
}

TEST(PdfOrder, aRecogniserHasReadItsBlocksInTheirOrder) {
    EXPECT_EQ(linesOf(headInTwoBlocks(kInvisible, 55)),
              "Office of\nthe city\nThe title\nSomewhere\n12 Street\n90000 City\n");
}

TEST(PdfOrder, aRunningHeadDrawnLastIsReadFirst) {
    PageBuilder builder;
    prose(builder, 10, 700, kLeft, 5).text(200, 740, U"Head").text(150, 30, U"foot");
    EXPECT_EQ(linesOf(builder), "Head\n" + repeated(kLeftLine, 5) + "foot\n");
}

TEST(PdfOrder, aMarginNoteIsReadAfterTheParagraphThatItInterrupts) {
    PageBuilder builder;
    prose(builder, 10, 700, kLeft, 2).size(7).text(170, 688, U"see the").text(170, 680, U"next page").size(10);
    prose(builder, 10, 676, kLeft, 2).text(10, 652, U"It ends here.").text(22, 640, kLeft);
    EXPECT_EQ(linesOf(builder),
              repeated(kLeftLine, 4) + "It ends here.\nsee the\nnext page\n" + repeated(kLeftLine, 1));
}

TEST(PdfOrder, aMarginNoteBetweenTwoColumnsIsReadAfterBoth) {
    const std::vector<Item> items = {
        {100, 240, 688, 697, 10}, {100, 240, 676, 685, 10}, // the first column
        {10, 60, 678, 684, 7},                              // the note
        {260, 400, 688, 697, 10}, {260, 400, 676, 685, 10}, // the second column
        {10, 400, 640, 660, 20},                            // what follows
    };
    std::vector<std::uint32_t> order = {0, 1, 2, 3, 4, 5};
    placeMarginNotes(items, order);
    EXPECT_EQ(order, (std::vector<std::uint32_t>{0, 1, 3, 4, 2, 5}));
}

TEST(PdfOrder, aLabelBesideItsTextStaysBeforeIt) {
    PageBuilder builder;
    prose(builder, 100, 700, kLeft, 4).text(10, 640, U"Label of").text(10, 628, U"the next");
    prose(builder, 100, 640, kLeft, 4);
    EXPECT_EQ(linesOf(builder), repeated(kLeftLine, 4) + "Label of\nthe next\n" + repeated(kLeftLine, 4));
}

TEST(PdfOrder, aHiddenLayerBelowTheSameTextIsNotRepeated) {
    PageBuilder builder;
    builder.text(10, 700, U"what is seen").flags(kInvisible).text(12, 701, U"what 1s seen");
    EXPECT_EQ(linesOf(builder), "what is seen\n");
}

TEST(PdfOrder, hiddenTextOfAPictureOnAPageWithTextStays) {
    PageBuilder builder;
    builder.text(10, 700, U"what is seen").flags(kInvisible).text(10, 600, U"in a picture");
    EXPECT_EQ(linesOf(builder), "what is seen\nin a picture\n");
}

TEST(PdfOrder, aDropCapBelongsToItsWord) {
    PageBuilder builder;
    builder.size(30).text(10, 676, U"T").size(10).text(26, 690, U"his is the first line");
    builder.text(26, 678, U"beside the large letter").text(10, 664, U"and the third is below it");
    EXPECT_EQ(linesOf(builder), "This is the first line\nbeside the large letter\nand the third is below it\n");
}

TEST(PdfOrder, aLargeNumberIsNotMixedWithTheLinesBesideIt) {
    PageBuilder builder;
    builder.size(30).text(10, 680, U"75%").size(10);
    builder.text(60, 694, U"of the load has").text(60, 682, U"customers nearly");
    EXPECT_EQ(linesOf(builder), "75% of the load has\ncustomers nearly\n");
}

} // namespace
} // namespace quillow::pdf
