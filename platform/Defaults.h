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

    /// Sets the values that `objectForKey` returns for keys without a stored value. They are not stored.
    virtual void registerDefaults(const Boxed::Dictionary& registrationDictionary) = 0;

    /// Writes all stored values to disk before it returns.
    virtual void synchronize() = 0;
};

} // namespace quillow
