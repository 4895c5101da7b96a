// Where a run's texts go.
#pragma once

#include <functional>
#include <optional>
#include <string>

namespace quillow::cli {

enum class DestinationKind { standardOutput, file, folder };

struct Destination {
    DestinationKind kind = DestinationKind::standardOutput;
    std::string folder; ///< the folder of the texts or of the one file
    std::string file;   ///< the file's name in the folder, for DestinationKind::file
};

/// Interprets the argument of -o. No argument or "-" is standard output. A path that ends in ".txt" (in any letter
/// case) and is not a folder is one file. Any other path is a folder.
[[nodiscard]] Destination destinationOf(const std::optional<std::string>& output,
                                        const std::function<bool(const std::string&)>& isFolder);

/// The same for the picture of a page: any path is one file.
[[nodiscard]] Destination destinationOfPicture(const std::optional<std::string>& output);

} // namespace quillow::cli
