#include "util/CollectionTransformers.h"

#include <algorithm>
#include <cstdint>
#include <variant>

namespace quillow {

namespace {

bool isNumber(const Boxed& value) {
    return std::holds_alternative<bool>(value.value()) || std::holds_alternative<std::int64_t>(value.value()) ||
           std::holds_alternative<float>(value.value()) || std::holds_alternative<double>(value.value());
}

bool isFraction(const Boxed& value) {
    return std::holds_alternative<float>(value.value()) || std::holds_alternative<double>(value.value());
}

bool isEqualObject(const Boxed& left, const Boxed& right) {
    if (!isNumber(left) || !isNumber(right)) return left == right;
    if (isFraction(left) || isFraction(right)) return left.doubleValue() == right.doubleValue();
    return left.longValue() == right.longValue();
}

bool containsObject(const QList<Boxed>& list, const Boxed& value) {
    return std::any_of(list.begin(), list.end(), [&](const Boxed& element) { return isEqualObject(element, value); });
}

} // namespace

Boxed MWValueIsInSet::transformedValue(const Boxed& value) const {
    return value.isNil() ? Boxed() : Boxed(containsObject(myRefSet, value));
}

Boxed MWValueIsInArray::transformedValue(const Boxed& value) const {
    return value.isNil() ? Boxed() : Boxed(containsObject(myRefArray, value));
}

} // namespace quillow
