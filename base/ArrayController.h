// The model of a list in a window: it shows an array that is a property of another object, and keeps which of its elements are
// selected.
#pragma once

#include "base/KVObject.h"

#include <functional>

namespace quillow {

class ArrayController {
public:
    /// The owner has an array under that key, and outlives this object.
    ArrayController(KVObject& owner, const QString& contentArrayKey); // selector: none
    ArrayController(const ArrayController&) = delete;
    ArrayController& operator=(const ArrayController&) = delete;

    [[nodiscard]] Boxed::Array arrangedObjects() const;

    /// In rising order.
    [[nodiscard]] const QList<qsizetype>& selectionIndexes() const { return selectionIndexes_; }
    /// In any order; those that are no index of an element are left out.
    void setSelectionIndexes(const QList<qsizetype>& indexes);
    [[nodiscard]] Boxed::Array selectedObjects() const;

    /// Adds at the end, and selects what was added.
    void addObjects(const Boxed::Array& objects);
    /// Selects what then stands where the first one stood, or else the last element: the next one to be taken.
    void removeObjectsAtArrangedObjectIndexes(const QList<qsizetype>& indexes);
    /// Selects what was inserted.
    void insertObject(const Boxed& object, qsizetype atArrangedObjectIndex);

    /// Called after every change of the array or of the selection, the owner's own changes of the array included.
    void setChangeHandler(std::function<void()> handler) { changeHandler_ = std::move(handler); } // selector: none

private:
    void setContent(const Boxed::Array& content);
    void changed() const;

    KVObject& owner_;
    QString contentArrayKey_;
    QList<qsizetype> selectionIndexes_;
    std::function<void()> changeHandler_;
    Observation observation_;
};

} // namespace quillow
