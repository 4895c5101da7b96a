#include "frame/MWDragDropView.h"

#include <gtest/gtest.h>

namespace quillow {
namespace {

using namespace Qt::StringLiterals;

struct MWDragDropViewTest : testing::Test {
    MWDragDropView view;
    QStringList reported;
    Observation observation =
        view.addObserver(u"myFilePathDropped"_s, [this](const QString&, const KVObject&, const Change&) {
            reported.append(*view.myFilePathDropped());
        });
};

TEST_F(MWDragDropViewTest, threeFilesAreReportedOneByOneInOrder) {
    view.addLinkToFiles({u"/a"_s, u"/b"_s, u"/c"_s});
    EXPECT_EQ(reported, (QStringList{u"/a"_s, u"/b"_s, u"/c"_s}));
    EXPECT_EQ(view.myFilePathDropped(), u"/c"_s);
}

TEST_F(MWDragDropViewTest, sameFileTwiceIsReportedTwice) {
    view.addLinkToFiles({u"/a"_s});
    view.addLinkToFiles({u"/a"_s});
    EXPECT_EQ(reported, (QStringList{u"/a"_s, u"/a"_s}));
}

TEST_F(MWDragDropViewTest, emptyListReportsNothing) {
    view.addLinkToFiles({});
    EXPECT_TRUE(reported.isEmpty());
    EXPECT_FALSE(view.myFilePathDropped());
}

} // namespace
} // namespace quillow
