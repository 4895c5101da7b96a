// Files of the program's own that cannot be read are kept, not overwritten.
#pragma once

#include <QString>

#include <optional>

namespace quillow {

/// Moves what stands at the path, file or folder, to the path with ".damaged" behind it; where something stands there already,
/// with ".damaged-2" and so on up to 100. The new path, or nothing when it could not be moved.
[[nodiscard]] std::optional<QString> moveDamagedFileAside(const QString& path);

} // namespace quillow
