// Port: keyed archives, files that hold one root object with all that it refers to.
#pragma once

#include "base/Boxed.h"

#include <QString>

namespace quillow {

class Archive {
public:
    virtual ~Archive() = default;

    /// Replaces the file at the path by an archive of the root, atomically: a failure leaves the old file. False when it could
    /// not be written, when the root holds what no archive can (a picture, very deep nesting), and for a path at which
    /// something stands that was to be put aside and could not be moved.
    virtual bool archiveRootObject(const Boxed& root, const QString& toFile) = 0;

    /// The root object; nil when there is no file, when it cannot be read, or when it is no whole archive within the
    /// adapter's bounds. Strings keep every UTF-16 unit, numbers their 64 bits.
    [[nodiscard]] virtual Boxed unarchiveObjectWithFile(const QString& path) = 0;

    /// Moves what stands at the path, of which nothing could be made, out of the way of the next write: to the path with
    /// ".damaged" behind it, and where something stands there already, with ".damaged-2" and so on. It tells so in one line
    /// for the one who looks after the system; the user is not asked.
    virtual void putAside(const QString& path) = 0;
};

} // namespace quillow
