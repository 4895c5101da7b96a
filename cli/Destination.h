// Where a run's texts go.
#pragma once

#include <functional>
#include <optional>
#include <string>

namespace quillow::cli {

enum class DestinationKind { standardOutput, file, folder };

struct Destination {
    DestinationKind kind = DestinationKind::standardOutput;
    std::string folder; ///< that the texts, or the one file, go into
    std::string file;   ///< its name in the folder
};

/// Takes what -o names: nothing or "-" is standard output; a path that ends in ".txt", in any letter case, and is no folder is one
/// file; any other is a folder.
[[nodiscard]] Destination destinationOf(const std::optional<std::string>& output,
                                        const std::function<bool(const std::string&)>& isFolder);

} // namespace quillow::cli
