// Finds the documents in a folder and in the folders below it.
#pragma once

#include "cli/Input.h"

#include <functional>
#include <optional>
#include <string>

namespace quillow::cli {

/// Called with the path of a document, or with the path of a folder that cannot be listed and the reason.
using OnFound = std::function<void(std::string path, std::optional<InputFailure> failure)>;

/// Finds the files and RTFD bundles with an extension that the program reads. It does not search bundles. Links to
/// files and bundles count as their targets. Links to other folders are not followed, so a walk always ends and stays
/// in the folder. Entries of a folder come in the byte order of their names.
void walkFolder(const std::string& folder, const OnFound& onFound);

} // namespace quillow::cli
