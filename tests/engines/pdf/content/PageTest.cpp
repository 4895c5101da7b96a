#include "engines/pdf/content/Page.h"

#include <gtest/gtest.h>

namespace quillow::pdf {
namespace {

/// "office" in four glyphs, the second a ligature, and a run of one glyph without characters behind it.
Page officePage() {
    Page page;
    page.text = U"office";
    page.glyphs = {{0, 0, 6}, {1, 6, 9}, {4, 15, 5}, {5, 20, 5}, {6, 0, 4}};
    Run word;
    word.glyphCount = 4;
    word.origin = {100, 200};
    word.direction = {1, 0};
    word.ascent = 8;
    word.descent = 2;
    Run blank;
    blank.firstGlyph = 4;
    blank.glyphCount = 1;
    page.runs = {word, blank};
    return page;
}

TEST(PdfPage, glyphHasAllCharactersOfItsLigature) {
    const Page page = officePage();
    EXPECT_EQ(page.textOf(page.glyphs[0]), U"o");
    EXPECT_EQ(page.textOf(page.glyphs[1]), U"ffi");
    EXPECT_EQ(page.textOf(page.glyphs[3]), U"e");
    EXPECT_EQ(page.textOf(page.glyphs[4]), U"");
}

TEST(PdfPage, runHasTheCharactersOfItsGlyphs) {
    const Page page = officePage();
    EXPECT_EQ(page.textOf(page.runs[0]), U"office");
    EXPECT_EQ(page.textOf(page.runs[1]), U"");
}

TEST(PdfPage, boundsReachFromDescentToAscent) {
    const Page page = officePage();
    EXPECT_EQ(boundsOf(page, page.runs[0]), (Box{100, 198, 125, 208}));
}

TEST(PdfPage, boundsTurnWithTheDirection) {
    Page page = officePage();
    page.runs[0].direction = {0, 1}; // upwards: the ascent is on the left
    EXPECT_EQ(boundsOf(page, page.runs[0]), (Box{92, 200, 102, 225}));
    page.runs[0].direction = {-1, 0}; // upside down
    EXPECT_EQ(boundsOf(page, page.runs[0]), (Box{75, 192, 100, 202}));
    page.runs[0].direction = {0, -1}; // downwards, as in vertical writing
    EXPECT_EQ(boundsOf(page, page.runs[0]), (Box{98, 175, 108, 200}));
}

TEST(PdfPage, boundsContainGlyphsThatGoBack) {
    Page page = officePage();
    page.glyphs[3].offset = -7;
    EXPECT_EQ(boundsOf(page, page.runs[0]), (Box{93, 198, 120, 208}));
}

TEST(PdfPage, boxGrowsToThePointsThatItMustContain) {
    Box box{0, 0, 10, 10};
    box.extendTo({5, 5});
    EXPECT_EQ(box, (Box{0, 0, 10, 10}));
    box.extendTo({-1, 12});
    EXPECT_EQ(box, (Box{-1, 0, 10, 12}));
    EXPECT_TRUE(box.contains({-1, 12}));
    EXPECT_FALSE(box.contains({-1.5F, 12}));
    EXPECT_EQ(box.width(), 11);
    EXPECT_EQ(box.height(), 12);
}

} // namespace
} // namespace quillow::pdf
