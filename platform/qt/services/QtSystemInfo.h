// The operating system from os-release(5), the home folder from $HOME.
#pragma once

#include "base/PathBytes.h"
#include "platform/SystemInfo.h"

#include <QDir>
#include <QSysInfo>

#include <pwd.h>
#include <unistd.h>

namespace quillow {

class QtSystemInfo final : public SystemInfo {
public:
    /// PRETTY_NAME of os-release.
    [[nodiscard]] QString operatingSystemVersionString() const override { return QSysInfo::prettyProductName(); }
    /// If $HOME is not an absolute path (such as "~"), the home folder from the user database.
    [[nodiscard]] QString homeDirectory() const override {
        const QByteArray home = qgetenv("HOME");
        if (home.startsWith('/')) return QDir::cleanPath(pathFromBytes(home));
        const passwd* user = ::getpwuid(::getuid());
        return user ? QDir::cleanPath(pathFromBytes(user->pw_dir)) : QDir::rootPath();
    }
};

} // namespace quillow
