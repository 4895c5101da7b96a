// The program's own pictures by their names, painted: those of the preferences' panes.
#pragma once

#include <QIcon>
#include <QString>

namespace quillow {

/// "generalPref" or "softwareUpdate"; any other name gives no picture.
[[nodiscard]] QIcon imageNamed(const QString& name);

} // namespace quillow
