// The operating system by os-release(5), the home folder by $HOME.
#pragma once

#include "platform/SystemInfo.h"

#include <QDir>
#include <QSysInfo>

namespace quillow {

class QtSystemInfo final : public SystemInfo {
public:
    /// PRETTY_NAME of os-release.
    [[nodiscard]] QString operatingSystemVersionString() const override { return QSysInfo::prettyProductName(); }
    [[nodiscard]] QString homeDirectory() const override { return QDir::homePath(); }
};

} // namespace quillow
