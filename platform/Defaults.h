// Port: the per-user defaults store, one flat domain that outlives the program.
#pragma once

#include "base/Boxed.h"

#include <QString>

namespace quillow {

class Defaults {
public:
    virtual ~Defaults() = default;
    /// The stored value with the type it was stored with; nil when the key was never set. Empty strings and empty bytes
    /// are values.
    [[nodiscard]] virtual Boxed objectForKey(const QString& key) const = 0;
    /// Stores a value; nil removes the key.
    virtual void setObject(const Boxed& value, const QString& forKey) = 0;
};

} // namespace quillow
