// The panel that asks for the destination folder.
#pragma once

#include "platform/Panels.h"

namespace quillow {

inline OpenPanel folderPanel() {
    OpenPanel panel;
    panel.canChooseDirectories = true;
    panel.canChooseFiles = false;
    panel.prompt = QStringLiteral("Select");
    panel.message = QStringLiteral("Please select the destination folder");
    return panel;
}

} // namespace quillow
