// Key paths: names joined by dots that lead from a value to one inside it.
#pragma once

#include "base/Boxed.h"

#include <QString>
#include <QStringList>

namespace quillow {

/// Taken apart once, looked up often.
class KeyPath { // selector: none
public:
    explicit KeyPath(const QString& path)
        : keys_(path.split(u'.')) {}

    /// Every key is looked up in what the one before it found. A dictionary answers its entry, or nil where it has none; an
    /// object what it answers itself; an array the array of what the dictionaries and objects in it answer, nil for its other
    /// elements; every other value answers nil.
    [[nodiscard]] Boxed valueIn(const Boxed& object) const;

private:
    QStringList keys_;
};

} // namespace quillow
