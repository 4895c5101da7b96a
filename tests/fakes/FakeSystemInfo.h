// An operating system that the test chooses.
#pragma once

#include "platform/SystemInfo.h"

namespace quillow {

class FakeSystemInfo final : public SystemInfo {
public:
    [[nodiscard]] QString operatingSystemVersionString() const override { return version; }
    [[nodiscard]] QString homeDirectory() const override { return QStringLiteral("/home/user"); }
    QString version = QStringLiteral("Debian GNU/Linux 12 (bookworm)");
};

} // namespace quillow
