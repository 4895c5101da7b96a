// The application's undo and redo stacks: operations register a function that reverses them.
#pragma once

#include <QString>

#include <functional>
#include <vector>

namespace quillow {

class UndoManager {
public:
    /// Registers a function that reverses the current operation. During an undo it goes to the redo stack,
    /// otherwise to the undo stack. Outside undo and redo, the redo stack is cleared: a new operation discards
    /// those undone before it.
    void registerUndo(std::function<void()> invocation); // selector: none

    /// Names the operation that was registered last; a menu shows the name after "Undo" or "Redo". No effect if
    /// there is no such operation.
    void setActionName(const QString& actionName);

    /// Reverses the latest operation. No effect if there is none, or during an undo or redo.
    void undo();
    void redo();

    [[nodiscard]] bool canUndo() const { return !undoStack_.empty(); }
    [[nodiscard]] bool canRedo() const { return !redoStack_.empty(); }
    /// The name of the operation that undo() would reverse; empty if it has none or there is nothing to undo.
    [[nodiscard]] QString undoActionName() const;
    [[nodiscard]] QString redoActionName() const;

    /// Called after every change of the stacks and names; for menus.
    void setChangeHandler(std::function<void()> handler) { changeHandler_ = std::move(handler); } // selector: none

private:
    struct Action {
        std::function<void()> invocation;
        QString name;
    };
    using Stack = std::vector<Action>;
    enum class State { idle, undoing, redoing };

    void invokeLast(Stack& stack, State state);
    [[nodiscard]] Stack& registeringStack() { return state_ == State::undoing ? redoStack_ : undoStack_; }
    void changed() const;

    Stack undoStack_;
    Stack redoStack_;
    State state_ = State::idle;
    bool hasRegistered_ = false; ///< since the latest undo or redo began or ended
    std::function<void()> changeHandler_;
};

} // namespace quillow
