#include "base/ArrayController.h"

#include <algorithm>
#include <numeric>

namespace quillow {

ArrayController::ArrayController(KVObject& owner, const QString& contentArrayKey)
    : owner_(owner)
    , contentArrayKey_(contentArrayKey)
    , observation_(owner.addObserver(contentArrayKey, [this](const QString&, const KVObject&, const Change&) {
        setSelectionIndexes(QList(selectionIndexes_));
    })) {}

Boxed::Array ArrayController::arrangedObjects() const {
    return owner_.valueForKey(contentArrayKey_).array().value_or(Boxed::Array());
}

void ArrayController::setSelectionIndexes(const QList<qsizetype>& indexes) {
    const qsizetype count = arrangedObjects().size();
    QList<qsizetype> selection;
    std::copy_if(indexes.begin(), indexes.end(), std::back_inserter(selection),
                 [count](qsizetype index) { return index >= 0 && index < count; });
    std::sort(selection.begin(), selection.end());
    selection.erase(std::unique(selection.begin(), selection.end()), selection.end());
    selectionIndexes_ = selection;
    changed();
}

Boxed::Array ArrayController::selectedObjects() const {
    const Boxed::Array content = arrangedObjects();
    Boxed::Array selected;
    for (const qsizetype index : selectionIndexes_)
        selected.append(content[index]);
    return selected;
}

void ArrayController::addObjects(const Boxed::Array& objects) {
    const Boxed::Array content = arrangedObjects();
    setContent(content + objects);
    QList<qsizetype> added(objects.size());
    std::iota(added.begin(), added.end(), content.size());
    setSelectionIndexes(added);
}

void ArrayController::removeObjectsAtArrangedObjectIndexes(const QList<qsizetype>& indexes) {
    const Boxed::Array content = arrangedObjects();
    QList<bool> isRemoved(content.size());
    qsizetype first = content.size();
    for (const qsizetype index : indexes) {
        if (index < 0 || index >= content.size()) continue;
        isRemoved[index] = true;
        first = std::min(first, index);
    }
    Boxed::Array kept;
    for (qsizetype i = 0; i < content.size(); ++i)
        if (!isRemoved[i]) kept.append(content[i]);
    setContent(kept);
    if (kept.size() < content.size()) setSelectionIndexes({std::min(first, kept.size() - 1)});
}

void ArrayController::insertObject(const Boxed& object, qsizetype atArrangedObjectIndex) {
    Boxed::Array content = arrangedObjects();
    const qsizetype index = std::clamp<qsizetype>(atArrangedObjectIndex, 0, content.size());
    content.insert(index, object);
    setContent(content);
    setSelectionIndexes({index});
}

void ArrayController::setContent(const Boxed::Array& content) {
    owner_.setValue(content, contentArrayKey_);
}

void ArrayController::changed() const {
    // A copy, because the handler may set another one.
    if (const auto handler = changeHandler_) handler();
}

} // namespace quillow
