// The application's undo and redo stacks: operations register what would take them back.
#pragma once

#include <QString>

#include <functional>
#include <vector>

namespace quillow {

class UndoManager {
public:
    /// Registers what takes the present operation back. While an undo runs it goes to the redo stack; otherwise to the undo
    /// stack, and, unless a redo runs, the redo stack is emptied: what was undone before something new happened is gone.
    void registerUndo(std::function<void()> invocation); // selector: none

    /// Names the operation that was registered last; a menu shows it after "Undo" or "Redo". Nothing to name: no effect.
    void setActionName(const QString& actionName);

    /// Takes back the latest operation; no effect when there is none, or while an undo or redo runs.
    void undo();
    void redo();

    [[nodiscard]] bool canUndo() const { return !undoStack_.empty(); }
    [[nodiscard]] bool canRedo() const { return !redoStack_.empty(); }
    /// The name of what would be undone; empty when it has none or there is nothing to undo.
    [[nodiscard]] QString undoActionName() const;
    [[nodiscard]] QString redoActionName() const;

    /// Called after every change of the above; for menus.
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
    bool hasRegistered_ = false; ///< since the running undo or redo began, or at all
    std::function<void()> changeHandler_;
};

} // namespace quillow
