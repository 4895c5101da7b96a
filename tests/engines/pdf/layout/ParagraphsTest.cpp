#include "engines/pdf/layout/PageLayout.h"
#include "tests/engines/pdf/layout/PageBuilder.h"
#include "text/Utf8.h"

#include <gtest/gtest.h>

#include <ostream>
#include <vector>

namespace quillow::pdf {
namespace {

/// One line of a column: 20 letters fill it.
struct LineOfPage {
    float indent = 0;
    float leading = 12;
    std::u32string_view text;
    std::uint32_t font = 1;
    float size = 10;
};

struct ParagraphCase {
    const char* name;
    std::vector<LineOfPage> lines;
    /// A letter for each line: P where it begins a paragraph, L where the line end before it is meant, "." else.
    const char* marks;
    /// Where lines begin on the page; text from the right is drawn from there to the left.
    float left = 100;

    friend std::ostream& operator<<(std::ostream& out, const ParagraphCase& each) { return out << each.name; }
};

std::string marksOf(const ParagraphCase& each) {
    PageBuilder builder;
    float y = 700;
    for (const LineOfPage& line : each.lines) {
        y -= line.leading;
        builder.size(line.size).font(line.font).text(each.left + line.indent, y, line.text);
    }
    PageLayout layout;
    layOut(builder.page(), layout);
    std::string marks;
    for (const TextRow& row : layout.rows)
        marks.push_back(row.beginsParagraph ? 'P' : row.beginsLine ? 'L' : '.');
    if (marks != each.marks)
        for (const TextRow& row : layout.rows)
            marks += " " + std::to_string(row.room) + (row.isTableRow ? "T" : "");
    return marks;
}

class Paragraphs : public testing::TestWithParam<ParagraphCase> {};

TEST_P(Paragraphs, beginWhereThePageShowsIt) {
    EXPECT_EQ(marksOf(GetParam()), GetParam().marks);
}

INSTANTIATE_TEST_SUITE_P(Spacing, Paragraphs,
                         testing::Values(ParagraphCase{"paragraphsOfOneLineAreMoreFrequentThanLines",
                                                       {{0, 12, U"A line of text that"},
                                                        {0, 12, U"goes on with words."},
                                                        {0, 24, U"One line alone now."},
                                                        {0, 24, U"Another one is here."},
                                                        {0, 24, U"A third of them too."},
                                                        {0, 24, U"A line of text that"},
                                                        {0, 12, U"goes on with words."}},
                                                       "..PPPP."},
                                         ParagraphCase{"wrappedLinesThatAreFurtherApartThanOthers",
                                                       {{0, 10, U"a caption that has a"},
                                                        {0, 10, U"leading of its own a"},
                                                        {0, 10, U"narrow one over four"},
                                                        {0, 10, U"lines as we see them"},
                                                        {0, 40, U"running text that is"},
                                                        {0, 15, U"set with much leadin"},
                                                        {0, 15, U"goes on like this an"},
                                                        {0, 15, U"ends somewhere below"}},
                                                       "....P..."}));

INSTANTIATE_TEST_SUITE_P(Lines, Paragraphs,
                         testing::Values(ParagraphCase{"aSentenceThatEndsShortBeforeACapital",
                                                       {{0, 12, U"Ada led it for years"},
                                                        {0, 12, U"with joy."},
                                                        {0, 12, U"Bob led it for years"},
                                                        {0, 12, U"with none of the joy"},
                                                        {0, 12, U"that went as it came a"}},
                                                       "..P.."},
                                         ParagraphCase{"aShortLineInTheMiddleOfASentence",
                                                       {{0, 12, U"a line of words that"},
                                                        {0, 12, U"goes on after it"},
                                                        {0, 12, U"as if it were full a"}},
                                                       "..."},
                                         ParagraphCase{"aVerse",
                                                       {{0, 12, U"The sea is wide and"},
                                                        {0, 12, U"The sky is"},
                                                        {0, 12, U"Wider than the sea is"}},
                                                       "..L"},
                                         ParagraphCase{"ideographsHaveNoWords",
                                                       {{0, 12, U"漢字漢字漢字漢字漢字漢字漢字漢字"},
                                                        {0, 12, U"漢字。"},
                                                        {0, 12, U"漢字漢字漢字漢字漢字漢字漢字漢字"}},
                                                       "..P"},
                                         ParagraphCase{"ideographsGoOn",
                                                       {{0, 12, U"漢字漢字漢字漢字漢字漢字漢字漢字"},
                                                        {0, 12, U"漢字漢字漢字漢字漢字漢字漢字漢"},
                                                        {0, 12, U"漢字漢字漢字漢字漢字漢字漢字漢字"}},
                                                       "..."}));

INSTANTIATE_TEST_SUITE_P(Indents, Paragraphs,
                         testing::Values(ParagraphCase{"hangingLines",
                                                       {{0, 12, U"term that is the fir"},
                                                        {30, 12, U"st of lines below"},
                                                        {30, 12, U"hanging from"},
                                                        {0, 12, U"next term that is th"},
                                                        {30, 12, U"at it is indeed"}},
                                                       "...P."},
                                         ParagraphCase{"termsOverTheirLines",
                                                       {{0, 12, U"NAME"},
                                                        {30, 12, U"lamp lights a house"},
                                                        {30, 12, U"at sea where"},
                                                        {0, 12, U"BUGS"},
                                                        {30, 12, U"it burns the house a"}},
                                                       ".L.PL"},
                                         ParagraphCase{"afterAFullLine",
                                                       {{0, 12, U"words that fill a li"},
                                                        {0, 12, U"ne up to its margin "},
                                                        {15, 12, U"and words of anot"},
                                                        {0, 12, U"her paragraph that f"}},
                                                       "..P."}));

INSTANTIATE_TEST_SUITE_P(Lists, Paragraphs,
                         testing::Values(ParagraphCase{"itemsOfOneLineAreLines",
                                                       {{0, 12, U"Bring all of these to"},
                                                        {0, 12, U"each of the meetings:"},
                                                        {0, 12, U"• a pen"},
                                                        {0, 12, U"• a book"},
                                                        {0, 12, U"• a chair"}},
                                                       "..LLL"},
                                         ParagraphCase{"itemsAreParagraphsIfOneHasSeveralLines",
                                                       {{0, 12, U"1. a pen and a book "},
                                                        {15, 12, U"with lines"},
                                                        {0, 12, U"2. a chair"},
                                                        {0, 12, U"3. a table"}},
                                                       "..PP"},
                                         ParagraphCase{"aNumberInRunningText",
                                                       {{0, 12, U"as it was said by the"},
                                                        {0, 12, U"12. of them in the se"},
                                                        {0, 12, U"ction on numbers here"}},
                                                       "..."}));

INSTANTIATE_TEST_SUITE_P(Fonts, Paragraphs,
                         testing::Values(ParagraphCase{"aHeadingInAnotherFont",
                                                       {{0, 12, U"Methods", 2},
                                                        {0, 12, U"we took what we had a"},
                                                        {0, 12, U"nd put it on a table "},
                                                        {0, 12, U"and looked at it for "}},
                                                       ".P.."},
                                         ParagraphCase{"anItalicLineOfAParagraph",
                                                       {{0, 12, U"he read the old book "},
                                                        {0, 12, U"The Sea and Its Light", 2},
                                                        {0, 12, U"and then another one "}},
                                                       "..."}));

TEST(PdfParagraphs, linesOfLettersOfOneWidthAreCode) {
    PageBuilder builder;
    builder.font(1).letter(0.5F).lines(10, 700, {U"some text that goes", U"on with words as it"});
    builder.letter(0.45F).lines(10, 676, {U"was always done here", U"in the old way of it"});
    builder.font(2).letter(0.6F).lines(10, 640, {U"int main", U"return"});
    PageLayout layout;
    layOut(builder.page(), layout);

    ASSERT_EQ(layout.rows.size(), 6U);
    EXPECT_FALSE(layout.rows[3].isMonospaced);
    EXPECT_TRUE(layout.rows[5].isMonospaced);
    EXPECT_TRUE(layout.rows[5].beginsLine);
    EXPECT_FALSE(layout.rows[5].beginsParagraph);
}

TEST(PdfParagraphs, roomIsMeasuredToTheMarginOfTheColumn) {
    PageBuilder builder;
    builder.text(10, 724, U"a title over both of the columns of the page")
        .text(10, 712, U"that has two lines as wide as them");
    builder.lines(10, 690, {U"left text here it is", U"left text", U"left text here it is", U"left text here it is"});
    builder.lines(130, 690, {U"right text here that", U"right text here it", U"right text here that", U"right"});
    PageLayout layout;
    layOut(builder.page(), layout);

    ASSERT_EQ(layout.rows.size(), 10U);
    EXPECT_EQ(layout.rows[2].room, 0);
    EXPECT_EQ(layout.rows[3].room, 55);
    EXPECT_EQ(layout.rows[9].room, 75);
}

TEST(PdfParagraphs, rowsOfManySizesTakeNoLongerThanTheyAreMany) {
    constexpr int kRows = 60'000;
    PageBuilder builder;
    for (int row = 0; row < kRows; ++row)
        builder.size(row % 2 == 0 ? 10.0F : 20.0F).text(10, 30.0F * static_cast<float>(kRows - row), U"words");
    PageLayout layout;
    layOut(builder.page(), layout);
    EXPECT_EQ(layout.rows.size(), static_cast<std::size_t>(kRows));
}

} // namespace
} // namespace quillow::pdf
