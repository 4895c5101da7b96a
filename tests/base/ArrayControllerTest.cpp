// The selection of a list, and how it changes with the list.
#include "base/ArrayController.h"

#include <gtest/gtest.h>

namespace quillow {
namespace {

using Indexes = QList<qsizetype>;

class Owner final : public KVObject {
public:
    KVProperty<Boxed::Array> list{*this, u"list", {1, 2, 3, 4, 5}};
};

class ArrayControllerTest : public testing::Test {
protected:
    void SetUp() override {
        controller_.setChangeHandler([this] { ++changes_; });
    }

    Owner owner_;
    ArrayController controller_{owner_, QStringLiteral("list")};
    int changes_ = 0;
};

TEST_F(ArrayControllerTest, showsItsOwnersArrayWithNothingSelected) {
    EXPECT_EQ(controller_.arrangedObjects(), owner_.list.get());
    EXPECT_EQ(controller_.selectionIndexes(), Indexes());
    EXPECT_EQ(controller_.selectedObjects(), Boxed::Array());
}

TEST_F(ArrayControllerTest, theSelectionIsInOrderAndInRange) {
    controller_.setSelectionIndexes({3, -1, 1, 3, 5});
    EXPECT_EQ(controller_.selectionIndexes(), (Indexes{1, 3}));
    EXPECT_EQ(controller_.selectedObjects(), (Boxed::Array{2, 4}));
    EXPECT_EQ(changes_, 1);
}

TEST_F(ArrayControllerTest, whatIsAddedStandsAtTheEndAndIsSelected) {
    controller_.addObjects({6, 7});
    EXPECT_EQ(owner_.list.get(), (Boxed::Array{1, 2, 3, 4, 5, 6, 7}));
    EXPECT_EQ(controller_.selectionIndexes(), (Indexes{5, 6}));
}

TEST_F(ArrayControllerTest, removingSelectsWhatIsNext) {
    controller_.removeObjectsAtArrangedObjectIndexes({3, 1});
    EXPECT_EQ(owner_.list.get(), (Boxed::Array{1, 3, 5}));
    EXPECT_EQ(controller_.selectedObjects(), Boxed::Array{3});
    controller_.removeObjectsAtArrangedObjectIndexes({2});
    EXPECT_EQ(controller_.selectedObjects(), Boxed::Array{3});
    controller_.removeObjectsAtArrangedObjectIndexes({0, 1});
    EXPECT_EQ(controller_.selectionIndexes(), Indexes());
    EXPECT_EQ(owner_.list.get(), Boxed::Array());
}

TEST_F(ArrayControllerTest, removingNothingKeepsTheSelection) {
    controller_.setSelectionIndexes({2});
    controller_.removeObjectsAtArrangedObjectIndexes({-1, 5});
    EXPECT_EQ(controller_.selectionIndexes(), Indexes{2});
    EXPECT_EQ(owner_.list.get().size(), 5);
}

TEST_F(ArrayControllerTest, equalElementsAreToldApart) {
    owner_.list.set({1, 1, 1});
    controller_.removeObjectsAtArrangedObjectIndexes({1});
    EXPECT_EQ(owner_.list.get(), (Boxed::Array{1, 1}));
}

TEST_F(ArrayControllerTest, whatIsInsertedIsSelected) {
    controller_.insertObject(9, 1);
    EXPECT_EQ(owner_.list.get(), (Boxed::Array{1, 9, 2, 3, 4, 5}));
    EXPECT_EQ(controller_.selectionIndexes(), Indexes{1});
    controller_.insertObject(8, 100);
    EXPECT_EQ(controller_.selectedObjects(), Boxed::Array{8});
}

TEST_F(ArrayControllerTest, theOwnersOwnChangesAreToldAndCutTheSelection) {
    controller_.setSelectionIndexes({0, 4});
    changes_ = 0;
    owner_.list.set({7, 8});
    EXPECT_EQ(changes_, 1);
    EXPECT_EQ(controller_.selectionIndexes(), Indexes{0});
}

} // namespace
} // namespace quillow
