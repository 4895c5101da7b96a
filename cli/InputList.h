// Collects the inputs of a run from the arguments, the input list and the folders.
#pragma once

#include "cli/Input.h"
#include "cli/options/Arguments.h"

#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace quillow::cli {

/// A document, or a folder that cannot be listed.
struct NamedInput {
    std::string path; ///< without trailing slashes; kStandardStream for standard input
    std::optional<InputFailure> failure;
};

/// Reads the list of names, if there is one, and walks the folders if the arguments request it. The inputs named as
/// arguments come first. Fails if the list cannot be read.
[[nodiscard]] std::variant<std::vector<NamedInput>, InputFailure> findInputs(const Arguments& arguments);

} // namespace quillow::cli
