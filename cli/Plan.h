// Which documents a run converts and what their texts are called, settled before anything is written.
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
    std::optional<DocumentKind> kind;    ///< nothing: the name tells none, the content decides
    std::optional<std::string> textName; ///< below the output folder; nothing: standard output
    std::optional<InputFailure> failure; ///< known already: nothing is to be read
};

struct Plan {
    std::vector<PlannedDocument> documents;
    std::vector<std::string> notices; ///< lines that tell where texts are not where their documents' names say
};

/// What tells two files apart whatever their paths look like: the device and the file's number on it.
using FileIdentity = std::pair<std::uint64_t, std::uint64_t>;

/// What a plan has to know of the disk.
struct Surroundings {
    std::function<std::optional<FileIdentity>(const std::string& path)> identityOf; ///< nothing where there is no file
    std::string currentFolder;
};

/// One file as destination takes one input.
[[nodiscard]] Plan makePlan(const Arguments& arguments, const Destination& destination, std::vector<NamedInput> inputs,
                            const Surroundings& surroundings);

} // namespace quillow::cli
