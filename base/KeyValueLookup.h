// The interface of objects whose values are read by key: the frame's own objects, and those of an application.
#pragma once

#include "base/Boxed.h"

#include <QString>

namespace quillow {

class KeyValueLookup { // selector: none
public:
    KeyValueLookup() = default;
    KeyValueLookup(const KeyValueLookup&) = delete;
    KeyValueLookup& operator=(const KeyValueLookup&) = delete;
    virtual ~KeyValueLookup() = default;

    /// Nil if the object has no value for the key.
    [[nodiscard]] virtual Boxed valueForKey(const QString& key) const = 0;
};

} // namespace quillow
