// Decides which documents a run converts and what names their texts get, before anything is written.
#pragma once

#include "cli/Arguments.h"
#include "cli/Destination.h"
#include "cli/InputList.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quillow::cli {

struct PlannedDocument {
    std::string path;                    ///< kStandardStream for standard input
    std::optional<DocumentKind> kind;    ///< std::nullopt: the name shows no kind, so the content decides
    std::optional<std::string> textName; ///< below the output folder; std::nullopt: standard output
    std::optional<InputFailure> failure; ///< already known: the document is not read
    unsigned threads = 1;                ///< that may read it
};

struct Plan {
    std::vector<PlannedDocument> documents;
    std::vector<std::string> notices; ///< lines for the user, such as about texts with other names than expected
};

/// Identifies a file whatever its path: the device and the inode number.
using FileIdentity = std::pair<std::uint64_t, std::uint64_t>;

/// What a plan needs to know of the file system.
struct Surroundings {
    std::function<std::optional<FileIdentity>(const std::string& path)> identityOf; ///< std::nullopt: no such file
    std::string currentFolder;
};

/// If the destination is one file, `inputs` has one element.
[[nodiscard]] Plan makePlan(const Arguments& arguments, const Destination& destination, std::vector<NamedInput> inputs,
                            const Surroundings& surroundings);

} // namespace quillow::cli
