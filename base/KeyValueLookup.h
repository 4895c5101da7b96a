// What answers key-value look-ups: objects of the frame, and an application's own that let themselves be read by key.
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

    /// Nil where the object has nothing under the key.
    [[nodiscard]] virtual Boxed valueForKey(const QString& key) const = 0;
};

} // namespace quillow
