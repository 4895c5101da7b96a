// The parts of a path, by its letters alone: nothing on disk is looked at.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quillow::cli {

[[nodiscard]] std::string withoutTrailingSlashes(std::string path);

/// What follows the last slash.
[[nodiscard]] std::string_view lastPart(std::string_view path);
/// What is before the last slash; empty where there is none.
[[nodiscard]] std::string_view folderPart(std::string_view path);
/// "folder/name"; the name alone where the folder is empty.
[[nodiscard]] std::string joined(std::string_view folder, std::string_view name);

/// The file's name without folders and without its last extension: "a/b.c.rtf" gives "b.c", ".rtf" gives ".rtf".
[[nodiscard]] std::string baseName(const std::string& path);
/// The extension in lower case, without the dot; empty where the name has none.
[[nodiscard]] std::string extensionOf(const std::string& path);

/// ASCII letters in lower case, everything else as it is.
[[nodiscard]] std::string lowered(std::string_view text);

/// The folder that the path is in, as it is called below `root`: "" for the root itself, "b/c" for "root/b/c/x.rtf". Nothing where
/// the path is not below it. Relative paths begin at `currentFolder`; the answer never holds "." or "..".
[[nodiscard]] std::optional<std::string> folderBelow(const std::string& root, const std::string& path,
                                                     const std::string& currentFolder);

} // namespace quillow::cli
