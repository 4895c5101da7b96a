// How rows of controls and the contents of the drop area fit into little room.
#include "platform/qt/controls/RowFitting.h"
#include "platform/qt/dragdrop/DropContent.h"

#include <gtest/gtest.h>

namespace quillow {
namespace {

using Widths = std::vector<int>;
using Starts = std::vector<std::size_t>;

// A caption, a path, a button and another caption.
std::vector<RowPart> parts() {
    return {{80, 80, 80, 0, true}, {200, 120, 40, 0}, {90, 90, 90}, {70, 70, 30, 1}};
}

TEST(RowWidths, partsThatFitHaveTheirWholeWidths) {
    EXPECT_EQ(rowWidths(parts(), 10, 470), (Widths{80, 200, 90, 70}));
}

TEST(RowWidths, aPathGivesWayFirst) {
    EXPECT_EQ(rowWidths(parts(), 10, 400), (Widths{80, 130, 90, 70}));
    EXPECT_EQ(rowWidths(parts(), 10, 390), (Widths{80, 120, 90, 70}));
}

TEST(RowWidths, aCaptionVanishesBeforeThePathIsUncomfortable) {
    EXPECT_EQ(rowWidths(parts(), 10, 389), (Widths{0, 200, 90, 70})) << "with its gap";
    EXPECT_EQ(rowWidths(parts(), 10, 300), (Widths{0, 120, 90, 70}));
}

TEST(RowWidths, thenPartsShrinkInTheirOrderToTheLeast) {
    EXPECT_EQ(rowWidths(parts(), 10, 250), (Widths{0, 70, 90, 70}));
    EXPECT_EQ(rowWidths(parts(), 10, 200), (Widths{0, 40, 90, 50}));
    EXPECT_EQ(rowWidths(parts(), 10, 10), (Widths{0, 40, 90, 30})) << "wider than the room";
}

TEST(RowStarts, controlsTakeAsFewRowsAsTheyNeed) {
    EXPECT_EQ(rowStarts({}, 8, 100), Starts{});
    EXPECT_EQ(rowStarts({40, 52}, 8, 100), (Starts{0}));
    EXPECT_EQ(rowStarts({40, 53}, 8, 100), (Starts{0, 1}));
    EXPECT_EQ(rowStarts({40, 40, 40, 40}, 8, 100), (Starts{0, 2}));
    EXPECT_EQ(rowStarts({400, 40}, 8, 100), (Starts{0, 1})) << "wider than the room";
}

/// Texts of a font: so many points a character.
DropContent::Measure fontOf(double character) {
    return [character](const DropTextScales& scales) {
        const double title = character * scales.title;
        const double hint = character * scales.hint;
        return DropTextSizes{
            {20 * title, 2 * title}, {55 * hint, 2 * hint}, {{25 * hint, 2 * hint}, {27 * hint, 2 * hint}}};
    };
}

DropContent arranged(double character) {
    return DropContent::arranged(QRectF(20, 10, 500, 90), 36, fontOf(character));
}

TEST(DropContent, anOrdinaryFontHasTheGlyphBesideTwoLines) {
    const DropContent content = arranged(7);
    ASSERT_TRUE(content.glyph);
    ASSERT_EQ(content.hint.size(), 1U);
    EXPECT_EQ(content.title.left(), content.hint[0].left());
    EXPECT_EQ(content.title.left(), content.glyph->right() + DropContent::kGlyphGap);
    EXPECT_EQ(content.glyph->left() - 20, 520 - content.hint[0].right()) << "centred together";
}

TEST(DropContent, aLargerFontBreaksTheHint) {
    const DropContent content = arranged(10);
    EXPECT_TRUE(content.glyph);
    ASSERT_EQ(content.hint.size(), 2U);
    EXPECT_EQ(content.hint[1].top(), content.hint[0].bottom());
    EXPECT_EQ(content.scales.hint, 1);
}

TEST(DropContent, thenTheGlyphIsLeftOut) {
    const DropContent content = arranged(14);
    EXPECT_FALSE(content.glyph);
    EXPECT_TRUE(content.isCentred);
    EXPECT_EQ(content.title.center().x(), 270);
}

TEST(DropContent, whateverTheFontNothingIsOutsideOrOverlaps) {
    for (double character = 5; character <= 25; character += 0.5) {
        const DropContent content = arranged(character);
        const QRectF room(20, 10, 500, 90);
        EXPECT_TRUE(room.contains(content.title)) << character;
        qreal bottom = content.title.bottom();
        for (const QRectF& line : content.hint) {
            EXPECT_TRUE(room.contains(line)) << character;
            EXPECT_GE(line.top(), bottom);
            bottom = line.bottom();
        }
    }
}

} // namespace
} // namespace quillow
