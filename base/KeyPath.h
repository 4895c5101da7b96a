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

    /// Looks up each key in the result of the key before it. A dictionary gives its entry, or nil if it has none.
    /// An array gives an array: the entry of each dictionary in it, nil for other elements. All other values give
    /// nil.
    [[nodiscard]] Boxed valueIn(const Boxed& object) const;

private:
    QStringList keys_;
};

} // namespace quillow
