// Transformers that look for the input in a collection fixed at construction. Numbers are compared by value,
// whatever their type: 1, true and 1.0 are equal.
#pragma once

#include "util/MWValueTransformer.h"

#include <QList>

namespace quillow {

/// Whether the set contains the input, as a boolean; nil gives nil. Duplicates in the list make no difference.
class MWValueIsInSet final : public MWValueTransformerOf<ValueClass::number, Reverse::notAllowed> {
public:
    explicit MWValueIsInSet(const QList<Boxed>& set)
        : myRefSet(set) {} // selector: initWithSet:
    [[nodiscard]] Boxed transformedValue(const Boxed& value) const override;

private:
    QList<Boxed> myRefSet;
};

/// Whether the array contains the input, as a boolean; nil gives nil.
class MWValueIsInArray final : public MWValueTransformerOf<ValueClass::number, Reverse::notAllowed> {
public:
    explicit MWValueIsInArray(const QList<Boxed>& array)
        : myRefArray(array) {} // selector: initWithArray:
    [[nodiscard]] Boxed transformedValue(const Boxed& value) const override;

private:
    QList<Boxed> myRefArray;
};

} // namespace quillow
