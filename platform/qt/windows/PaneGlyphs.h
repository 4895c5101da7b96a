// The program's own pictures by name: the painted icons of the preferences panes.
#pragma once

#include <QIcon>
#include <QString>

namespace quillow {

/// "generalPref" or "softwareUpdate"; any other name gives a null icon.
[[nodiscard]] QIcon imageNamed(const QString& name);

} // namespace quillow
