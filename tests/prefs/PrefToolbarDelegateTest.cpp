// The toolbar of the preferences window: panes, titles, heights, and the top edge of the window, which does not move.
#include "prefs/MyPrefToolbarDelegate.h"
#include "prefs/PaneGeometry.h"
#include "tests/fakes/FakeTabView.h"
#include "tests/fakes/FakeToolbar.h"
#include "tests/fakes/FakeWindow.h"

#include <gtest/gtest.h>

namespace quillow {

namespace {

class PrefToolbarDelegate : public testing::Test {
protected:
    PrefToolbarDelegate() {
        window.setFrame({100, 200, 500, 400}, Animate::no);
        delegate.awakeFromNib();
    }
    [[nodiscard]] FakeToolbar& toolbar() { return *factory.made(); }
    [[nodiscard]] double top() const { return window.frame().y + window.frame().height; }

    FakeToolbarFactory factory;
    FakeWindow window;
    FakeTabView tabView;
    MyPrefToolbarDelegate delegate{factory, window, tabView};
};

} // namespace

TEST_F(PrefToolbarDelegate, showsTheFirstPaneAtFirst) {
    EXPECT_EQ(tabView.selected(), 0);
    EXPECT_EQ(window.title(), QStringLiteral("General"));
    EXPECT_EQ(toolbar().selectedItemIdentifier(), QStringLiteral("0"));
    EXPECT_EQ(window.frame().height, 278);
}

TEST_F(PrefToolbarDelegate, makesAToolbarWithoutCustomisationAndWithoutAButton) {
    EXPECT_EQ(toolbar().identifier(), QStringLiteral("prefToolBar"));
    EXPECT_FALSE(toolbar().allowsUserCustomization());
    EXPECT_EQ(toolbar().window(), &window);
    EXPECT_FALSE(toolbar().showsToolbarButton());
}

TEST_F(PrefToolbarDelegate, describesBothItems) {
    const auto items = toolbar().items();
    ASSERT_EQ(items.size(), 2);
    EXPECT_EQ(items[0]->label, QStringLiteral("General"));
    EXPECT_EQ(items[0]->imageName, QStringLiteral("generalPref"));
    EXPECT_EQ(items[0]->tag, 0);
    EXPECT_EQ(items[1]->label, QStringLiteral("Update"));
    EXPECT_EQ(items[1]->paletteLabel, QStringLiteral("Update"));
    EXPECT_EQ(items[1]->toolTip, QStringLiteral("Update"));
    EXPECT_EQ(items[1]->imageName, QStringLiteral("softwareUpdate"));
    EXPECT_EQ(items[1]->tag, 1);
}

TEST_F(PrefToolbarDelegate, letsEveryItemBeShownAddedAndSelectedAndNoOther) {
    const QStringList both{QStringLiteral("0"), QStringLiteral("1")};
    EXPECT_EQ(delegate.toolbarDefaultItemIdentifiers(toolbar()), both);
    EXPECT_EQ(delegate.toolbarAllowedItemIdentifiers(toolbar()), both);
    EXPECT_EQ(delegate.toolbarSelectableItemIdentifiers(toolbar()), both);
    EXPECT_EQ(delegate.itemForItemIdentifier(toolbar(), QStringLiteral("2"), true), nullptr);
}

TEST_F(PrefToolbarDelegate, shrinksToTheSecondPaneAndKeepsItsTopEdge) {
    const double before = top();
    delegate.SetPanelTab(1);
    EXPECT_EQ(window.frame().height, 238);
    EXPECT_EQ(top(), before);
    EXPECT_EQ(window.frame().x, 100);
    EXPECT_EQ(window.frame().width, 500);
    EXPECT_EQ(window.title(), QStringLiteral("Update"));
    EXPECT_EQ(tabView.selected(), 1);
    EXPECT_EQ(toolbar().selectedItemIdentifier(), QStringLiteral("1"));
    EXPECT_EQ(window.lastAnimation(), Animate::yes);
}

TEST_F(PrefToolbarDelegate, followsAPressOnAnItem) {
    const auto items = toolbar().items();
    items[1]->action(items[1]);
    EXPECT_EQ(tabView.selected(), 1);
    EXPECT_EQ(window.title(), QStringLiteral("Update"));
    EXPECT_EQ(window.frame().height, 238);
    items[0]->action(items[0]);
    EXPECT_EQ(window.frame().height, 278);
}

TEST_F(PrefToolbarDelegate, ignoresPanesThatThereAreNot) {
    const Rect before = window.frame();
    delegate.SetPanelTab(2);
    delegate.SetPanelTab(-1);
    EXPECT_EQ(window.frame(), before);
    EXPECT_EQ(tabView.selected(), 0);
    EXPECT_EQ(window.title(), QStringLiteral("General"));
}

TEST_F(PrefToolbarDelegate, doesNothingOnAClickThatIsNoAction) {
    const Rect before = window.frame();
    delegate.toolbaritemclicked(toolbar().items()[1]);
    EXPECT_EQ(window.frame(), before);
    EXPECT_EQ(tabView.selected(), 0);
}

TEST(MWPrefToolbarDelegate, answersNilForWhatASubclassTells) {
    FakeToolbarFactory factory;
    FakeWindow window;
    window.setTitle(QStringLiteral("Preferences"));
    window.setFrame({100, 200, 500, 400}, Animate::no);
    FakeTabView tabView;
    MWPrefToolbarDelegate delegate(factory, window, tabView);
    delegate.awakeFromNib();
    EXPECT_FALSE(delegate.heightArray());
    EXPECT_FALSE(delegate.returnAllkeys());
    EXPECT_EQ(delegate.itemForItemIdentifier(*factory.made(), QStringLiteral("0"), true), nullptr);
    EXPECT_TRUE(delegate.toolbarDefaultItemIdentifiers(*factory.made()).isEmpty());
    EXPECT_EQ(tabView.selected(), 0);
    EXPECT_EQ(window.title(), QStringLiteral("Preferences"));
    EXPECT_EQ(window.frame(), (Rect{100, 522, 500, 78})) << "nil has no height; title bar and toolbar remain";
    delegate.SetPanelTab(0);
    EXPECT_EQ(tabView.selected(), 0);
}

TEST(PaneGeometry, movesTheOriginByTheDifferenceCutTowardsZero) {
    EXPECT_EQ(frameForPane({0, 100, 10, 278}, 160), (Rect{0, 140, 10, 238}));
    EXPECT_EQ(frameForPane({0, 100, 10, 238}, 200), (Rect{0, 60, 10, 278}));
    EXPECT_EQ(frameForPane({0, 100, 10, 277.5}, 200), (Rect{0, 100, 10, 278}));
    EXPECT_EQ(frameForPane({0, 100, 10, 279.7}, 200), (Rect{0, 101, 10, 278}));
}

} // namespace quillow
