// The documents in a folder and in the folders below it.
#pragma once

#include "cli/Input.h"

#include <functional>
#include <optional>
#include <string>

namespace quillow::cli {

/// Called with a document's path, or with a folder's and why it cannot be looked into.
using OnFound = std::function<void(std::string path, std::optional<InputFailure> failure)>;

/// Finds what has an extension that is read: files, and RTFD bundles, which are not looked into. Links to files and bundles count as
/// what they lead to; links to other folders are not followed, so no walk is endless or leaves the folder. Within a folder the
/// order is that of the names' bytes.
void walkFolder(const std::string& folder, const OnFound& onFound);

} // namespace quillow::cli
