#include "tests/engines/pdf/layout/PageTextOf.h"

#include <gtest/gtest.h>

#include <vector>

namespace quillow::pdf {
namespace {

struct Word {
    std::u32string_view text;
    float gap; ///< before it, in ems
};

/// A line of words with gaps of their own, in letters of 10 points.
PageBuilder lineOf(const std::vector<Word>& words) {
    PageBuilder builder;
    float x = 10;
    for (const Word& word : words) {
        x += word.gap * 10;
        builder.text(x, 700, word.text);
        x += static_cast<float>(word.text.size()) * PageBuilder::kLetter * 10;
    }
    return builder;
}

TEST(PdfLineText, whichGapsAreBlanks) {
    const struct {
        const char* what;
        std::vector<Word> words;
        const char* text;
    } cases[] = {
        {"wider gaps between sentences",
         {{U"not", 0}, {U"only.", 0.17F}, {U"The", 0.42F}, {U"next", 0.17F}, {U"one.", 0.17F}},
         "not only. The next one.\n"},
        {"squeezed lines",
         {{U"Faced", 0}, {U"with", 0.15F}, {U"squeezed", 0.15F}, {U"lines", 0.15F}},
         "Faced with squeezed lines\n"},
        {"dot leaders",
         {{U"Some", 0},
          {U"words", 0.3F},
          {U".", 0.3F},
          {U".", 0.2F},
          {U".", 0.2F},
          {U".", 0.2F},
          {U".", 0.2F},
          {U".", 0.2F},
          {U".", 0.2F},
          {U".", 0.2F},
          {U".", 0.2F},
          {U".", 0.2F},
          {U".", 0.2F}},
         "Some words . . . . . . . . . . .\n"},
        {"digits apart",
         {{U"1", 0}, {U"2", 0.3F}, {U"3", 0.3F}, {U"4", 0.3F}, {U"5", 0.3F}, {U"6", 0.3F}},
         "1 2 3 4 5 6\n"},
        {"gaps of a bullet as wide as the usual threshold",
         {{U"-", 0}, {U"Excellent", 0.205F}, {U" ", 0}, {U"support", 0}},
         "- Excellent support\n"},
        {"formulas",
         {{U"sin", 0}, {U"x", 0.17F}, {U"=", 0.28F}, {U"y", 0.28F}, {U"+", 0.22F}, {U"z", 0.22F}},
         "sin x = y + z\n"},
        {"formulas with more blanks than words have letters",
         {{U"(op", 0}, {U"e)", 0.31F}, {U"=", 0.28F}, {U"x", 0.28F}, {U"op", 0.37F}, {U"e", 0.31F}},
         "(op e) = x op e\n"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(textOf(lineOf(c.words)), c.text) << c.what;
}

TEST(PdfLineText, gapsAsWideAsTheDrawnBlanksAreBlanks) {
    PageBuilder builder;
    builder.letter(0.18F).text(10, 700, U"An invoice number:").text(10 + 18 * 1.8F + 1.8F, 700, U"12345");
    EXPECT_EQ(textOf(builder), "An invoice number: 12345\n");
}

TEST(PdfLineText, aMarkStaysBehindTheLetterThatTheStreamDrawsBeforeIt) {
    PageBuilder builder; // the mark begins to the right of the next letter
    builder.text(10, 700, U"ท").letter(0).text(16, 701, U"้").letter(0.5F).text(15, 700, U"ง").text(2, 700, U"ก");
    EXPECT_EQ(textOf(builder), "กท้ง\n");
}

TEST(PdfLineText, aClusterReachesOverAllItsGlyphs) {
    PageBuilder builder;
    builder.text(10, 700, U"மை").glyphsWithoutText(2).text(30, 700, U"கள்");
    EXPECT_EQ(textOf(builder), "மைகள்\n");
}

TEST(PdfLineText, blanksAndCommasThatAreDrawnFirstGoIntoTheirLine) {
    PageBuilder builder;
    builder.text(25, 700, U" ").text(55, 700, U", ").text(100, 700, U" ").text(10, 700, U"one");
    builder.text(30, 700, U"three").text(65, 700, U"fourths").text(105, 700, U"end");
    EXPECT_EQ(textOf(builder), "one three, fourths end\n");
}

TEST(PdfLineText, aRunDrawnOverAnotherOneStaysWhole) {
    const struct {
        const char* what;
        PageBuilder page;
        const char* text;
    } cases[] = {
        {"a text over the end of another one", PageBuilder().text(10, 700, U"first text").text(42, 700, U"second one"),
         "first text second one\n"},
        {"two texts over the end of another one, and what is drawn behind all of them",
         PageBuilder()
             .text(10, 700, U"20035 ")
             .letter(0.2F)
             .text(21, 700, U"% ")
             .text(24, 700, U"20-% ")
             .letter(0.5F)
             .text(50, 700, U"behind"),
         "20035 % 20-% behind\n"},
        {"of one text over another one only the first letters are over letters",
         PageBuilder().text(10, 700, U"first text").text(51, 700, U"second"), "first text second\n"},
        {"two words that touch", PageBuilder().text(10, 700, U"word ").text(27, 700, U"next"), "wordnext\n"},
        {"a text that is drawn twice, the second time in two runs",
         PageBuilder().text(10, 700, U"a shadow").text(10.3F, 700, U"a sha").text(35.3F, 700, U"dow"), "a shadow\n"},
        {"a sign over a letter of a word", PageBuilder().text(10, 700, U"Mobius").text(15, 700, U"\u00A8"), "Möbius\n"},
        {"a tick over a box", PageBuilder().text(10, 700, U"\u25A1 yes").text(10.8F, 700, U"\u2713"),
         "\u25A1\u2713 yes\n"},
        {"text that goes on before the one it was drawn over",
         PageBuilder().text(50, 700, U"first text").text(10, 700, U"second"), "second first text\n"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(textOf(c.page), c.text) << c.what;
}

TEST(PdfLineText, aFieldIsApartFromItsLabel) {
    PageBuilder builder;
    builder.text(10, 700, U"choice").flags(kFromAnnotation).text(39, 700, U"first");
    EXPECT_EQ(textOf(builder), "choice first\n");
}

TEST(PdfLineText, noBreakSpacesAroundALineAreNotSeen) {
    EXPECT_EQ(textOf(PageBuilder().text(10, 700, U"\u00A0a\u00A0b\u00A0").text(10, 600, U"\u00A0")), "a\u00A0b\n");
}

TEST(PdfLineText, aSoftHyphenThatIsDrawnIsAHyphen) {
    EXPECT_EQ(textOf(PageBuilder().text(10, 700, U"non\u00ADGNU")), "non-GNU\n");
    EXPECT_EQ(
        textOf(
            PageBuilder().text(10, 700, U"con").letter(0).text(25, 700, U"\u00AD").letter(0.5F).text(25, 700, U"vert")),
        "convert\n");
}

TEST(PdfLineText, marksFromTheRightGoBehindTheirLetter) {
    // Shaped text, drawn from the left: the mark comes before its letter, and may begin to the left of it.
    PageBuilder shaped;
    shaped.text(10, 700, U"رب").letter(0).text(19.5F, 702, U"ً").letter(0.5F).text(20, 700, U"ق");
    EXPECT_EQ(textOf(shaped), "قًبر\n");
    // Drawn after its letter.
    PageBuilder behind;
    behind.text(10, 700, U"רב").letter(0).text(17, 700, U"ּ").letter(0.5F).text(20, 700, U"ק");
    EXPECT_EQ(textOf(behind), "קבּר\n");
}

TEST(PdfLineText, aMarkThatHasTheTextOfItsClusterHasItsPlaceToo) {
    PageBuilder cluster;
    cluster.text(10, 700, U"م ").letter(0).cluster(18, 702, U"اً").letter(0.5F).cluster(20, 700, {}).text(25, 700, U"ب");
    EXPECT_EQ(textOf(cluster), "باً م\n");
}

TEST(PdfLineText, bracketsFromTheRightAreMirrored) {
    // What is seen, from the left: the bracket at the left closes.
    EXPECT_EQ(textOf(PageBuilder().text(10, 700, U"(ג) בא")), "אב (ג)\n");
    // What they are: the producer has turned them already.
    EXPECT_EQ(textOf(PageBuilder().text(10, 700, U")ג( בא")), "אב (ג)\n");
    EXPECT_EQ(textOf(PageBuilder().text(10, 700, U"(PDF) בא")), "אב (PDF)\n");
}

TEST(PdfLineText, percentSignsGoWithTheirNumber) {
    EXPECT_EQ(textOf(PageBuilder().text(10, 700, U"99.9% אבג")), "גבא 99.9%\n");
    EXPECT_EQ(textOf(PageBuilder().text(10, 700, U"%50 ابج")), "جبا 50%\n");
}

TEST(PdfLineText, aPageFromTheRightDecidesForItsMixedLines) {
    const auto page = [] {
        PageBuilder builder;
        builder.text(90, 724, U"תירבעב בר טסקט").text(105, 712, U"תירבעב דוע");
        return builder;
    };
    EXPECT_EQ(textOf(page().text(25, 700, U"Extended Introduction :אובמ")),
              "טקסט רב בעברית\nעוד בעברית\nמבוא: Extended Introduction\n");
    EXPECT_EQ(textOf(page().text(95, 700, U".inline terms")), "טקסט רב בעברית\nעוד בעברית\ninline terms.\n");
    EXPECT_EQ(textOf(page().text(60, 700, U"Lines of Latin stay.")),
              "טקסט רב בעברית\nעוד בעברית\nLines of Latin stay.\n");
    EXPECT_EQ(textOf(PageBuilder().text(10, 700, U"The word for introduction is אובמ")),
              "The word for introduction is מבוא\n");
}

TEST(PdfLineText, punctuationShowsTheDirectionOfMixedLines) {
    const struct {
        const char* what;
        std::u32string_view seen; ///< from the left
        const char* text;
    } cases[] = {
        {"a line from the left", U"Witnesses: ילוי הרש, and דדח הליל.", "Witnesses: שרה יולי, and לילה חדד.\n"},
        {"a list from the left of words from the right", U"See גבא, דהו for it", "See אבג, והד for it\n"},
        {"a list from the right of words from the left", U"ltr ,num ,heb :(15) טסקט", "טקסט (15): heb, num, ltr\n"},
        {"numbers in the order of the left", U"ב 1, 4 א", "א 1, 4 ב\n"},
        {"numbers in the order of the right", U"ב 4 ,1 א", "א 1, 4 ב\n"},
        {"code with punctuation of its own", U"function וא def func(): :דוק", "קוד: def func(): או function\n"},
        {"a bracket that the text from the right opens", U"ג (func) בא", "אב (func) ג\n"},
        {"names with signs before them", U"\\ltr ,\\num :םש", "שם: \\num, \\ltr\n"},
        {"a prefix with a hyphen", U"בט Python-ב בתכ", "כתב ב-Python טב\n"},
        {"a label that is drawn from the left", U"English בא 1.", "1. אב English\n"},
        {"words that begin with a point", U"use .NET תא טב", "בט את use .NET\n"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(textOf(PageBuilder().text(10, 700, c.seen)), c.text) << c.what;
}

TEST(PdfLineText, linesWithoutLettersFromTheRightMayBeReadFromTheRight) {
    const auto page = [] {
        PageBuilder builder;
        return builder.text(10, 724, U"תירבעב בר טסקט").text(10, 712, U"תירבעב דוע");
    };
    EXPECT_EQ(textOf(page().text(10, 700, U",ltr ,num")), "טקסט רב בעברית\nעוד בעברית\nnum, ltr,\n");
    EXPECT_EQ(textOf(page().text(10, 700, U"num, ltr,")), "טקסט רב בעברית\nעוד בעברית\nnum, ltr,\n");
}

TEST(PdfLineText, linesSideBySideAreReadFromTheRightOnAPageFromTheRight) {
    PageBuilder builder;
    builder.text(100, 700, U"ןושאר").text(10, 700, U"ינש");
    EXPECT_EQ(textOf(builder), "ראשון שני\n");
}

TEST(PdfLineText, accentsDrawnOverLettersAreTheirLetters) {
    EXPECT_EQ(textOf(PageBuilder().text(10, 700, U"M\u00A8").text(15, 700, U"unster")), "Münster\n") << "accent first";
    EXPECT_EQ(
        textOf(
            PageBuilder().text(10, 700, U"Fran").text(30, 700, U"c").text(30.5F, 700, U"\u00B8").text(35, 700, U"ais")),
        "Français\n");
    EXPECT_EQ(textOf(PageBuilder().text(10, 700, U"na\u00A8").text(20.5F, 700, U"\u0131").text(25, 700, U"ve")),
              "naïve\n")
        << "on a dotless letter";
    EXPECT_EQ(textOf(PageBuilder()
                         .text(10, 700, U"\u0337")
                         .text(10.4F, 700, U"Lo")
                         .text(20, 700, U"\u0337")
                         .text(20.4F, 700, U"l")),
              "Łoł\n")
        << "a stroke";
    EXPECT_EQ(textOf(PageBuilder().text(10, 700, U"x^2 `a~b\u00B4")), "x^2 `a~b\u00B4\n") << "not over a letter";
}

TEST(PdfLineText, shortLinesBetweenLettersAreUnderscores) {
    const auto words = [] {
        PageBuilder builder; // ends at 20 and begins at 23.6: an underscore of TeX and the space around it
        return builder.text(10, 700, U"an").text(23.6F, 700, U"object");
    };
    const struct {
        const char* what;
        PageBuilder page;
        const char* text;
    } cases[] = {
        {"at the baseline", words().rule(20.3F, 700.2F, 23.3F, 700.2F), "an_object\n"},
        {"below it, as a rectangle", words().rule(20.3F, 698.8F, 23.3F, 699.2F), "an_object\n"},
        {"two", PageBuilder(words()).text(57.2F, 700, U"it").rule(53.7F, 700, 56.8F, 700), "an object_it\n"},
        {"a dash at half height", words().rule(20.3F, 703, 23.3F, 703), "an object\n"},
        {"a part of a longer line", words().rule(10, 699, 20.2F, 699).rule(20.3F, 699, 23.3F, 699), "an object\n"},
        {"not in the gap", words().rule(22, 699, 25, 699), "an object\n"},
        {"before a word", PageBuilder().text(10, 700, U"an").text(26, 700, U"x").rule(22.8F, 700, 25.8F, 700),
         "an _x\n"},
        {"a place to write on", PageBuilder().text(10, 700, U"no").text(30, 700, U"of").rule(21, 700, 29, 700),
         "no of\n"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(textOf(c.page), c.text) << c.what;
}

TEST(PdfLineText, theSpaceOfTypesettersBesideIdeographsIsNotABlank) {
    const auto page = [](std::u32string_view number, float gap) {
        PageBuilder builder;
        builder.letter(1).text(10, 700, U"第").letter(0.5F).text(20 + gap, 700, number);
        return builder.letter(1).text(30 + 2 * gap, 700, U"条");
    };
    EXPECT_EQ(textOf(page(U"12", 2.5F)), "第12条\n");
    EXPECT_EQ(textOf(page(U"12", 4)), "第 12 条\n");
    EXPECT_EQ(textOf(page(U"()", 2.5F)), "第 () 条\n") << "only letters and digits have it";
    EXPECT_EQ(textOf(PageBuilder()
                         .letter(1)
                         .text(10, 700, U"第")
                         .letter(0.2F)
                         .text(20, 700, U" ")
                         .letter(0.5F)
                         .text(22, 700, U"12")),
              "第 12\n")
        << "a drawn one is";
}

TEST(PdfLineText, signsThatTexPutsTogetherAreOneSign) {
    const auto line = [](std::u32string_view overlay, std::u32string_view sign) {
        PageBuilder builder;
        builder.text(10, 700, U"x").letter(0).text(17.8F, 700, overlay).letter(0.5F).text(17.8F, 700, sign);
        return builder.text(25.6F, 700, U"y");
    };
    EXPECT_EQ(textOf(line(U"\u0338", U"=")), "x ≠ y\n");
    EXPECT_EQ(textOf(line(U"\u0338", U"∈")), "x ∉ y\n");
    EXPECT_EQ(textOf(line(U"↦", U"→")), "x ↦ y\n");
}

TEST(PdfLineText, digitsBelongToTheirColumn) {
    constexpr Point kDown{0, -1};
    PageBuilder sideways; // upright ideographs around turned digits, then ordinary vertical writing
    sideways.letter(1).text(300, 700, U"第").direction(kDown).letter(0.5F).text(301.5F, 698.8F, U"10");
    sideways.direction({1, 0}).letter(1).text(300, 680, U"条");
    EXPECT_EQ(textOf(sideways), "第10条\n");
    PageBuilder upright; // two digits side by side
    upright.letter(1).direction(kDown).flags(kVertical).text(300, 700, U"平成");
    upright.direction({1, 0}).flags(0).letter(0.5F).text(295, 671.2F, U"12");
    upright.direction(kDown).flags(kVertical).letter(1).text(300, 670, U"年度");
    EXPECT_EQ(textOf(upright), "平成12年度\n");
    PageBuilder label; // a number below a turned label
    label.letter(0.5F).direction(kDown).text(300, 700, U"label").direction({1, 0}).text(297, 663, U"12");
    EXPECT_EQ(textOf(label), "label\n12\n");
}

TEST(PdfLineText, onlyOneLineGoesOnBesideADropCap) {
    PageBuilder builder;
    builder.size(40)
        .text(10, 700, U"T")
        .size(10)
        .lines(32, 724, {U"his is the first line", U"and the second one", U"a third"});
    builder.text(10, 688, U"below it");
    EXPECT_EQ(textOf(builder).substr(0, 42), "This is the first line\nand the second one\n");
    EXPECT_EQ(textOf(PageBuilder()
                         .text(10, 700, U"x")
                         .size(6)
                         .text(15, 704, U"2")
                         .text(15, 697, U"i")
                         .size(10)
                         .text(18, 700, U"=")),
              "x2i=\n");
}

} // namespace
} // namespace quillow::pdf
