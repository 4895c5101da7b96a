#include "base/KeyPath.h"

#include "base/KeyValueLookup.h"

#include <variant>

namespace quillow {
namespace {

/// Nil for what cannot be looked up in.
Boxed entryOf(const Boxed& object, const QString& key) {
    if (const auto* dictionary = std::get_if<Boxed::Dictionary>(&object.value())) return dictionary->value(key);
    if (const auto* lookup = std::get_if<Boxed::Object>(&object.value())) return (*lookup)->valueForKey(key);
    return {};
}

Boxed valueForKey(const Boxed& object, const QString& key) {
    const auto* array = std::get_if<Boxed::Array>(&object.value());
    if (!array) return entryOf(object, key);
    Boxed::Array values;
    values.reserve(array->size());
    for (const Boxed& element : *array)
        values.append(entryOf(element, key));
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
