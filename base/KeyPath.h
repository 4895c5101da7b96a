// Key paths: keys joined by dots that lead from a value to a value inside it.
#pragma once

#include "base/Boxed.h"

#include <QString>
#include <QStringList>

namespace quillow {

/// Parsed once, looked up often.
class KeyPath { // selector: none
public:
    explicit KeyPath(const QString& path)
        : keys_(path.split(u'.')) {}

    /// Looks up each key in the result of the key before it. A dictionary gives its entry, or nil if it has none. An
    /// object gives the result of its own look-up. An array gives an array: the value of each dictionary or object in
    /// it, nil for other elements. All other values give nil.
    [[nodiscard]] Boxed valueIn(const Boxed& object) const;

private:
    QStringList keys_;
};

} // namespace quillow
