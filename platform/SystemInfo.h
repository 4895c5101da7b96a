// Port: the operating system and the user's home folder.
#pragma once

#include <QString>

namespace quillow {

class SystemInfo {
public:
    virtual ~SystemInfo() = default;
    /// A human-readable name and version, such as "Debian GNU/Linux 12 (bookworm)".
    [[nodiscard]] virtual QString operatingSystemVersionString() const = 0;
    /// The user's home folder: an absolute path, so without a tilde, and without a trailing slash.
    [[nodiscard]] virtual QString homeDirectory() const = 0;
};

} // namespace quillow
