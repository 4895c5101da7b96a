// Port: the operating system under the program, and whose it is.
#pragma once

#include <QString>

namespace quillow {

class SystemInfo {
public:
    virtual ~SystemInfo() = default;
    /// A human-readable name and version, "Debian GNU/Linux 12 (bookworm)".
    [[nodiscard]] virtual QString operatingSystemVersionString() const = 0;
    /// The user's home folder: absolute, so that no tilde is left in it, and without a slash at the end.
    [[nodiscard]] virtual QString homeDirectory() const = 0;
};

} // namespace quillow
