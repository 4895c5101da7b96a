// Converts the documents of a plan, and says what becomes of each: in messages, in results, and by the exit code.
#pragma once

#include "cli/Destination.h"
#include "cli/DocumentReader.h"
#include "cli/Plan.h"
#include "cli/options/Arguments.h"
#include "cli/results/ResultsFile.h"

#include <string>

namespace quillow::cli {

struct Run {
    const Arguments& arguments;
    const Destination& destination;
    const Plan& plan;
    DocumentReader& reader;
    ResultsFile* results; ///< nullptr: none are wanted
};

/// Returns the exit code.
[[nodiscard]] int convertAll(const Run& run);

/// Says that standard output takes no more, and why. Returns the exit code.
[[nodiscard]] int failOnStandardOutput(const std::string& why);

} // namespace quillow::cli
