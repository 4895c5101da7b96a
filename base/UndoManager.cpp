#include "base/UndoManager.h"

#include <utility>

namespace quillow {

void UndoManager::registerUndo(std::function<void()> invocation) {
    if (state_ == State::idle) redoStack_.clear();
    registeringStack().push_back({std::move(invocation), {}});
    hasRegistered_ = true;
    changed();
}

void UndoManager::setActionName(const QString& actionName) {
    // During and after an undo or redo, only an operation registered since then may be named, not an older one.
    if (!hasRegistered_ || registeringStack().empty()) return;
    registeringStack().back().name = actionName;
    changed();
}

void UndoManager::undo() {
    invokeLast(undoStack_, State::undoing);
}

void UndoManager::redo() {
    invokeLast(redoStack_, State::redoing);
}

QString UndoManager::undoActionName() const {
    return undoStack_.empty() ? QString() : undoStack_.back().name;
}

QString UndoManager::redoActionName() const {
    return redoStack_.empty() ? QString() : redoStack_.back().name;
}

void UndoManager::invokeLast(Stack& stack, State state) {
    if (state_ != State::idle || stack.empty()) return;
    const Action action = std::move(stack.back());
    stack.pop_back();
    state_ = state;
    hasRegistered_ = false;
    action.invocation();
    state_ = State::idle;
    hasRegistered_ = false;
    changed();
}

void UndoManager::changed() const {
    if (changeHandler_) changeHandler_();
}

} // namespace quillow
