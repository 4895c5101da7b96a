// Takes paths apart as strings, without access to the disk.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quillow::cli {

[[nodiscard]] std::string withoutTrailingSlashes(std::string path);

/// The part after the last slash; the whole path if there is none.
[[nodiscard]] std::string_view lastPart(std::string_view path);
/// The part before the last slash; empty if there is none.
[[nodiscard]] std::string_view folderPart(std::string_view path);
/// "folder/name"; only the name if the folder is empty.
[[nodiscard]] std::string joined(std::string_view folder, std::string_view name);

/// The file's name without folders and without its last extension: "a/b.c.rtf" gives "b.c", ".rtf" gives ".rtf".
[[nodiscard]] std::string baseName(const std::string& path);
/// The extension in lower case, without the dot; empty if the name has none.
[[nodiscard]] std::string extensionOf(const std::string& path);

/// Converts ASCII letters to lower case; other bytes stay.
[[nodiscard]] std::string lowered(std::string_view text);

/// The folder of the path, relative to `root`: "" for "root/x.rtf", "b/c" for "root/b/c/x.rtf". std::nullopt if the
/// path is not below `root`. Relative paths begin at `currentFolder`. The result never contains "." or "..".
[[nodiscard]] std::optional<std::string> folderBelow(const std::string& root, const std::string& path,
                                                     const std::string& currentFolder);

} // namespace quillow::cli
