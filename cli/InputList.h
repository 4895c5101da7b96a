// Which documents a run is about: those named, those in lists, those in folders.
#pragma once

#include "cli/Arguments.h"
#include "cli/Input.h"

#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace quillow::cli {

/// A document, or a folder that cannot be looked into.
struct NamedInput {
    std::string path; ///< without trailing slashes; kStandardStream for standard input
    std::optional<InputFailure> failure;
};

/// Reads the list of names, if there is one, and walks the folders, if that is asked for. The inputs named as arguments come first.
/// Fails where the list cannot be read.
[[nodiscard]] std::variant<std::vector<NamedInput>, InputFailure> findInputs(const Arguments& arguments);

} // namespace quillow::cli
