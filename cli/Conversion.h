// One document from its planned path to its text.
#pragma once

#include "cli/OutputFolder.h"
#include "cli/Plan.h"
#include "cli/Result.h"

namespace quillow::cli {

/// Reads and extracts; with an output folder the text is written there, without one it comes back in the result. Never
/// throws; may be called from several threads at once.
[[nodiscard]] Result convert(const PlannedDocument& document, const Arguments& arguments,
                             const OutputFolder* outputFolder);

} // namespace quillow::cli
