#include "base/KeyPath.h"

#include <variant>

namespace quillow {
namespace {

Boxed valueForKey(const Boxed& object, const QString& key) {
    if (const auto* dictionary = std::get_if<Boxed::Dictionary>(&object.value())) return dictionary->value(key);
    const auto* array = std::get_if<Boxed::Array>(&object.value());
    if (!array) return {};
    Boxed::Array values;
    values.reserve(array->size());
    for (const Boxed& element : *array) {
        const auto* dictionary = std::get_if<Boxed::Dictionary>(&element.value());
        values.append(dictionary ? dictionary->value(key) : Boxed());
    }
    return values;
}

} // namespace

Boxed KeyPath::valueIn(const Boxed& object) const {
    Boxed value = object;
    for (const QString& key : keys_) {
        if (value.isNil()) break;
        value = valueForKey(value, key);
    }
    return value;
}

} // namespace quillow
