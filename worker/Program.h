// Where the worker's executable is.
#pragma once

#include <optional>
#include <string>

namespace quillow::worker {

/// The path of quillow-worker: in the folder of the running program, as after a build, or in the folder for programs
/// that only programs start, as after an installation. No setting of the user or the environment changes it.
[[nodiscard]] std::optional<std::string> findWorkerProgram();

} // namespace quillow::worker
