// The model of a list in a window: shows an array property of another object and keeps the selection.
#pragma once

#include "base/KVObject.h"

#include <functional>

namespace quillow {

class ArrayController {
public:
    /// `owner` must have an array property with that key and must outlive this object.
    ArrayController(KVObject& owner, const QString& contentArrayKey); // selector: none
    ArrayController(const ArrayController&) = delete;
    ArrayController& operator=(const ArrayController&) = delete;

    [[nodiscard]] Boxed::Array arrangedObjects() const;

    /// In ascending order.
    [[nodiscard]] const QList<qsizetype>& selectionIndexes() const { return selectionIndexes_; }
    /// In any order; indexes out of range are ignored.
    void setSelectionIndexes(const QList<qsizetype>& indexes);
    [[nodiscard]] Boxed::Array selectedObjects() const;

    /// Adds the objects at the end and selects them.
    void addObjects(const Boxed::Array& objects);
    /// Selects the element that moves up to the first removed index, or else the last element: the next one to remove.
    void removeObjectsAtArrangedObjectIndexes(const QList<qsizetype>& indexes);
    /// Inserts the object and selects it. An index out of range is clamped.
    void insertObject(const Boxed& object, qsizetype atArrangedObjectIndex);

    /// Called after every change of the array or of the selection, including changes of the array by the owner.
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
