#include "base/UndoManager.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <functional>

namespace quillow {
namespace {

using namespace Qt::StringLiterals;

/// A value whose changes can be undone.
struct Number {
    UndoManager& undoManager;
    int value = 0;
    void set(int newValue) {
        undoManager.registerUndo([this, old = value] { set(old); });
        undoManager.setActionName(u"Set %1"_s.arg(newValue));
        value = newValue;
    }
};

TEST(UndoManager, startsWithNothingToUndo) {
    UndoManager undoManager;
    EXPECT_FALSE(undoManager.canUndo());
    EXPECT_FALSE(undoManager.canRedo());
    undoManager.undo();
    undoManager.redo();
    undoManager.setActionName(u"Nothing"_s);
    EXPECT_EQ(undoManager.undoActionName(), u""_s);
    EXPECT_EQ(undoManager.redoActionName(), u""_s);
}

TEST(UndoManager, undoAndRedoWalkBackAndForth) {
    UndoManager undoManager;
    Number number{undoManager};
    number.set(1);
    number.set(2);
    undoManager.undo();
    EXPECT_EQ(number.value, 1);
    undoManager.undo();
    EXPECT_EQ(number.value, 0);
    EXPECT_FALSE(undoManager.canUndo());
    undoManager.redo();
    undoManager.redo();
    EXPECT_EQ(number.value, 2);
    EXPECT_FALSE(undoManager.canRedo());
    undoManager.undo();
    EXPECT_EQ(number.value, 1);
    EXPECT_TRUE(undoManager.canRedo());
}

TEST(UndoManager, whoHearsOfAnEntryCanNameIt) {
    UndoManager undoManager;
    undoManager.setChangeHandler([&undoManager] {
        if (undoManager.undoActionName().isEmpty()) undoManager.setActionName(u"Named"_s);
    });
    undoManager.registerUndo([] {});
    EXPECT_EQ(undoManager.undoActionName(), u"Named"_s);
}

TEST(UndoManager, newOperationEmptiesTheRedoStack) {
    UndoManager undoManager;
    Number number{undoManager};
    number.set(1);
    number.set(2);
    undoManager.undo();
    number.set(3);
    EXPECT_FALSE(undoManager.canRedo());
    undoManager.undo();
    EXPECT_EQ(number.value, 1);
}

TEST(UndoManager, redoKeepsTheRestOfTheRedoStack) {
    UndoManager undoManager;
    Number number{undoManager};
    number.set(1);
    number.set(2);
    undoManager.undo();
    undoManager.undo();
    undoManager.redo();
    EXPECT_TRUE(undoManager.canRedo());
}

TEST(UndoManager, actionNamesFollowTheOperations) {
    UndoManager undoManager;
    Number number{undoManager};
    number.set(1);
    number.set(2);
    EXPECT_EQ(undoManager.undoActionName(), u"Set 2"_s);
    undoManager.undo();
    EXPECT_EQ(undoManager.undoActionName(), u"Set 1"_s);
    EXPECT_EQ(undoManager.redoActionName(), u"Set 1"_s); // named during the undo
}

TEST(UndoManager, nameGivenByAnUndoThatRegistersNothingNamesNoOlderOperation) {
    UndoManager undoManager;
    Number number{undoManager};
    undoManager.registerUndo([&] { undoManager.setActionName(u"Wrong"_s); });
    number.set(1);
    undoManager.undo();
    EXPECT_EQ(undoManager.redoActionName(), u"Set 0"_s);
    undoManager.undo();
    EXPECT_EQ(undoManager.redoActionName(), u"Set 0"_s);
}

TEST(UndoManager, nameGivenAfterAnUndoNamesNoOlderOperation) {
    UndoManager undoManager;
    Number number{undoManager};
    number.set(1);
    number.set(2);
    undoManager.undo();
    undoManager.setActionName(u"Wrong"_s);
    EXPECT_EQ(undoManager.undoActionName(), u"Set 1"_s);
    EXPECT_EQ(undoManager.redoActionName(), u"Set 1"_s);
}

TEST(UndoManager, undoInsideAnUndoDoesNothing) {
    UndoManager undoManager;
    int outer = 0;
    undoManager.registerUndo([] { FAIL() << "undone from inside another undo"; });
    undoManager.registerUndo([&] {
        ++outer;
        undoManager.undo();
        undoManager.redo();
    });
    undoManager.undo();
    EXPECT_EQ(outer, 1);
    EXPECT_TRUE(undoManager.canUndo());
}

TEST(UndoManager, changeHandlerSeesEveryNewState) {
    UndoManager undoManager;
    QStringList states;
    undoManager.setChangeHandler([&] {
        states.append(
            u"%1%2 %3"_s.arg(undoManager.canUndo()).arg(undoManager.canRedo()).arg(undoManager.undoActionName()));
    });
    undoManager.registerUndo([] {});
    EXPECT_EQ(states, (QStringList{u"10 "_s}));
    undoManager.setActionName(u"Clear"_s);
    EXPECT_EQ(states, (QStringList{u"10 "_s, u"10 Clear"_s}));
    undoManager.undo();
    EXPECT_EQ(states.last(), u"00 "_s);
}

TEST(UndoManager, undoThatRegistersItsRedoShowsIt) {
    UndoManager undoManager;
    Number number{undoManager};
    number.set(1);
    bool canRedo = false;
    undoManager.setChangeHandler([&] { canRedo = undoManager.canRedo(); });
    undoManager.undo();
    EXPECT_TRUE(canRedo);
}

} // namespace
} // namespace quillow
