// The drop area: its results for drags, its reports, and the drawing of the area and its background.
#include "frame/MWDragDropView.h"

#include "frame/MWOutlinedDragDropView.h"
#include "frame/MWWhiteView.h"
#include "tests/fakes/FakeDraggingInfo.h"
#include "tests/fakes/FakeViewArea.h"

#include <gtest/gtest.h>

namespace quillow {
namespace {

using namespace Qt::StringLiterals;

constexpr DragOperationMask kCopy = 1;
constexpr DragOperationMask kLink = 2;
constexpr DragOperationMask kGeneric = 4;
constexpr DragOperationMask kMove = 16;
constexpr DragOperationMask kEvery = kCopy | kLink | kGeneric | kMove;

struct MWDragDropViewTest : testing::Test {
    FakeViewArea area;
    MWOutlinedDragDropView view{area};
    QStringList reported;
    Observation observation =
        view.addObserver(u"myFilePathDropped"_s, [this](const QString&, const KVObject&, const Change&) {
            reported.append(*view.myFilePathDropped());
        });
    const QStringList paths{u"/b"_s, u"/a"_s, u"/c"_s};
    const FakeDraggingInfo text{kEvery, {{u"NSStringPboardType"_s, {u"/a"_s}}, {u"NSURLPboardType"_s, {u"/a"_s}}}};

    static FakeDraggingInfo files(DragOperationMask mask, const QStringList& paths = {u"/a"_s}) {
        return FakeDraggingInfo::files(mask, paths);
    }
    QString drawing() { return area.draw({10, 10, 1, 1}).join(u'\n'); }
    bool redrawsAfter(const std::function<void()>& act) {
        static_cast<void>(drawing());
        act();
        return area.needsDisplay();
    }
};

// Registration.

TEST(MWDragDropViewRegistration, beginsWithTheFrameAndEndsWithTheView) {
    FakeViewArea area;
    {
        const MWDragDropView view(area, Rect{1, 2, 300, 100});
        EXPECT_EQ(area.draggedTypes(), QStringList{u"NSFilenamesPboardType"_s});
        EXPECT_EQ(area.frame(), (Rect{1, 2, 300, 100}));
        EXPECT_EQ(area.views().size(), 1U);
    }
    EXPECT_TRUE(area.draggedTypes().isEmpty());
    EXPECT_TRUE(area.views().empty());
}

TEST(MWDragDropViewRegistration, beginsWithAwakeFromNibForAPlainView) {
    FakeViewArea area;
    MWDragDropView view(area);
    EXPECT_TRUE(area.draggedTypes().isEmpty());
    view.awakeFromNib();
    EXPECT_EQ(area.draggedTypes(), QStringList{u"NSFilenamesPboardType"_s});
}

// Entering and leaving.

TEST_F(MWDragDropViewTest, isNotHilitedAtFirst) {
    EXPECT_FALSE(view.hilited());
}

TEST_F(MWDragDropViewTest, filesThatMayBeLinkedAreAnsweredWithLink) {
    for (const DragOperationMask mask : {kLink, kLink | kCopy, kEvery}) {
        MWDragDropView fresh(area);
        EXPECT_TRUE(redrawsAfter([&] { EXPECT_EQ(fresh.draggingEntered(files(mask)), DragOperation::link); }));
        EXPECT_TRUE(fresh.hilited()) << mask;
    }
}

TEST_F(MWDragDropViewTest, filesThatMayOnlyBeCopiedOrMovedAreRefused) {
    for (const DragOperationMask mask : {0U, kCopy, kMove, kGeneric, kCopy | kGeneric | kMove}) {
        EXPECT_FALSE(redrawsAfter([&] { EXPECT_EQ(view.draggingEntered(files(mask)), DragOperation::none); })) << mask;
        EXPECT_FALSE(view.hilited()) << mask;
    }
}

TEST_F(MWDragDropViewTest, textAndAddressesAreRefused) {
    EXPECT_EQ(view.draggingEntered(text), DragOperation::none);
    EXPECT_FALSE(view.hilited());
}

TEST_F(MWDragDropViewTest, refusedEntryLeavesTheHighlightAsItWas) {
    ASSERT_EQ(view.draggingEntered(files(kLink)), DragOperation::link);
    EXPECT_EQ(view.draggingEntered(text), DragOperation::none);
    EXPECT_TRUE(view.hilited());
}

TEST_F(MWDragDropViewTest, leavingEndsTheHighlight) {
    ASSERT_EQ(view.draggingEntered(files(kLink)), DragOperation::link);
    EXPECT_TRUE(redrawsAfter([&] { view.draggingExited(); }));
    EXPECT_FALSE(view.hilited());
    EXPECT_TRUE(reported.isEmpty());
}

// Dropping.

TEST_F(MWDragDropViewTest, isAlwaysReadyForADrop) {
    EXPECT_TRUE(view.prepareForDragOperation(files(kLink)));
    EXPECT_TRUE(view.prepareForDragOperation(text));
}

TEST_F(MWDragDropViewTest, dropReportsItsPathsInOrderAndEndsTheHighlight) {
    ASSERT_EQ(view.draggingEntered(files(kEvery, paths)), DragOperation::link);
    EXPECT_TRUE(redrawsAfter([&] { EXPECT_TRUE(view.performDragOperation(files(kEvery, paths))); }));
    EXPECT_EQ(reported, paths);
    EXPECT_EQ(view.myFilePathDropped(), u"/c"_s);
    EXPECT_FALSE(view.hilited());
}

TEST_F(MWDragDropViewTest, dropOfWhatIsRefusedHasNoEffectAndIsAnsweredYes) {
    for (const FakeDraggingInfo& refused : {files(kCopy), files(kMove), files(0), text}) {
        EXPECT_FALSE(redrawsAfter([&] { EXPECT_TRUE(view.performDragOperation(refused)); }));
    }
    EXPECT_TRUE(reported.isEmpty());
    EXPECT_FALSE(view.myFilePathDropped());
}

TEST_F(MWDragDropViewTest, refusedDropLeavesTheHighlightAsItWas) {
    ASSERT_EQ(view.draggingEntered(files(kLink)), DragOperation::link);
    EXPECT_TRUE(view.performDragOperation(files(kCopy)));
    EXPECT_TRUE(view.hilited());
}

TEST_F(MWDragDropViewTest, highlightHasEndedWhenTheFirstPathIsReported) {
    ASSERT_EQ(view.draggingEntered(files(kLink)), DragOperation::link);
    bool wasHilited = true;
    const Observation early = view.addObserver(
        u"myFilePathDropped"_s, [&](const QString&, const KVObject&, const Change&) { wasHilited = view.hilited(); });
    EXPECT_TRUE(view.performDragOperation(files(kLink)));
    EXPECT_FALSE(wasHilited);
}

TEST_F(MWDragDropViewTest, dropWhosePathsCannotBeHadReportsNothing) {
    FakeDraggingInfo lost = files(kLink);
    ASSERT_EQ(view.draggingEntered(lost), DragOperation::link);
    lost.loseContents();
    EXPECT_TRUE(view.performDragOperation(lost));
    EXPECT_TRUE(reported.isEmpty());
    EXPECT_FALSE(view.hilited());
}

// Reporting.

TEST_F(MWDragDropViewTest, threeFilesAreReportedOneByOneInOrder) {
    view.addLinkToFiles(paths);
    EXPECT_EQ(reported, paths);
    EXPECT_EQ(view.myFilePathDropped(), u"/c"_s);
}

TEST_F(MWDragDropViewTest, sameFileTwiceIsReportedTwice) {
    view.addLinkToFiles({u"/a"_s, u"/a"_s});
    view.addLinkToFiles({u"/a"_s});
    EXPECT_EQ(reported, (QStringList{u"/a"_s, u"/a"_s, u"/a"_s}));
}

TEST_F(MWDragDropViewTest, emptyListReportsNothing) {
    view.addLinkToFiles({});
    EXPECT_TRUE(reported.isEmpty());
    EXPECT_FALSE(view.myFilePathDropped());
}

TEST_F(MWDragDropViewTest, observersLearnHowManyPathsAreToCome) {
    QList<qsizetype> toCome;
    const Observation counting =
        view.addObserver(u"myFilePathDropped"_s,
                         [&](const QString&, const KVObject&, const Change&) { toCome.append(view.pathsToCome()); });
    view.addLinkToFiles(paths);
    EXPECT_EQ(toCome, (QList<qsizetype>{2, 1, 0}));
    EXPECT_EQ(view.pathsToCome(), 0);
}

TEST_F(MWDragDropViewTest, listThatShrinksMeanwhileIsReportedUpToItsNewEnd) {
    QStringList list = paths;
    const Observation shrinking =
        view.addObserver(u"myFilePathDropped"_s, [&](const QString&, const KVObject&, const Change&) {
            if (reported.size() == 2) list.removeLast();
        });
    view.addLinkToFiles(list);
    EXPECT_EQ(reported, (QStringList{u"/b"_s, u"/a"_s}));
}

TEST_F(MWDragDropViewTest, listThatGrowsMeanwhileIsReportedToItsNewEnd) {
    QStringList list{u"/a"_s};
    const Observation growing =
        view.addObserver(u"myFilePathDropped"_s, [&](const QString&, const KVObject&, const Change&) {
            if (list.size() < 3) list.append(u"/more"_s);
        });
    view.addLinkToFiles(list);
    EXPECT_EQ(reported, (QStringList{u"/a"_s, u"/more"_s, u"/more"_s}));
}

// Drawing.

TEST_F(MWDragDropViewTest, outlineIsDashedRoundedAndBlackOverTheWholeBounds) {
    EXPECT_EQ(drawing(), u"stroke 3,3,581,108 radii 6,6 black width 1 dash 2,2 phase 0"_s);
    EXPECT_EQ(area.draw({0, 0, 587, 114}).join(u'\n'), drawing());
}

TEST_F(MWDragDropViewTest, outlineIsHeavierWhileHilited) {
    ASSERT_EQ(view.draggingEntered(files(kLink)), DragOperation::link);
    EXPECT_EQ(drawing(), u"stroke 3,3,581,108 radii 6,6 black width 2 dash 2,2 phase 0"_s);
    view.draggingExited();
    EXPECT_EQ(drawing(), u"stroke 3,3,581,108 radii 6,6 black width 1 dash 2,2 phase 0"_s);
}

TEST_F(MWDragDropViewTest, outlineTakesTheCurrentColour) {
    FakeDrawing drawing;
    drawing.setColor(DrawingColor::gray);
    view.drawRect(area.bounds(), drawing);
    EXPECT_TRUE(drawing.drawn().value(0).contains(u"gray"_s));
}

TEST(MWDragDropViewDrawing, plainViewDrawsNothing) {
    FakeViewArea area;
    const MWDragDropView view(area);
    EXPECT_TRUE(area.draw(area.bounds()).isEmpty());
}

TEST(MWWhiteViewTest, isAWhitePanelWithAGreyFrameThatIsNotInset) {
    FakeViewArea area;
    const MWWhiteView view(area, Rect{5, 6, 300, 100});
    EXPECT_EQ(area.frame(), (Rect{5, 6, 300, 100}));
    const QStringList panel{u"fill 0,0,300,100 white"_s, u"stroke 0,0,300,100 gray width 1"_s};
    EXPECT_EQ(area.draw({10, 10, 1, 1}), panel);
    EXPECT_EQ(area.draw(area.bounds()), panel);
}

TEST(MWWhiteViewTest, standsBehindTheOutlineAndTakesNoDrag) {
    FakeViewArea area;
    MWWhiteView panel(area);
    const MWOutlinedDragDropView view(area);
    const QStringList drawn = area.draw(area.bounds());
    ASSERT_EQ(drawn.size(), 3);
    EXPECT_TRUE(drawn[2].contains(u"black"_s)) << "the panel's colours do not reach the outline";
    EXPECT_EQ(panel.draggingEntered(FakeDraggingInfo::files(kEvery, {u"/a"_s})), DragOperation::none);
}

} // namespace
} // namespace quillow
