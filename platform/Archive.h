// Port: keyed archives. Each is a file that holds one root object and everything that it refers to.
#pragma once

#include "base/Boxed.h"

#include <QString>

namespace quillow {

class Archive {
public:
    virtual ~Archive() = default;

    /// Atomically replaces the file at the path with an archive of the root; a failure leaves the old file. Returns
    /// false if the file could not be written, if the root holds something that an archive cannot (a picture, very
    /// deep nesting), or if `putAside` could not move the item at the path.
    virtual bool archiveRootObject(const Boxed& root, const QString& toFile) = 0;

    /// The root object; nil if the file does not exist, cannot be read, or is not a complete archive within the
    /// adapter's limits. Strings keep every UTF-16 unit, numbers their 64 bits.
    [[nodiscard]] virtual Boxed unarchiveObjectWithFile(const QString& path) = 0;

    /// Moves an unreadable item at the path out of the way of the next write: to the path with ".damaged" appended,
    /// or ".damaged-2" and so on if that name is taken. Reports this in one log line for the administrator; the user
    /// is not asked.
    virtual void putAside(const QString& path) = 0;
};

} // namespace quillow
