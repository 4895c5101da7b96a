// Keeps unreadable files of the program instead of overwriting them.
#pragma once

#include <QString>

#include <optional>

namespace quillow {

/// Moves the file or folder at the path to the path with ".damaged" appended, or with ".damaged-2" and so on up to
/// 100 if that name is taken. Returns the new path, or std::nullopt if it could not be moved.
[[nodiscard]] std::optional<QString> moveDamagedFileAside(const QString& path);

} // namespace quillow
