// How a run shares the processor's cores among its documents.
#pragma once

#include "cli/Plan.h"
#include "cli/options/Arguments.h"

namespace quillow::cli {

/// The documents that are read at a time.
[[nodiscard]] unsigned jobsOf(const Arguments& arguments);

/// The most threads that read one document.
[[nodiscard]] unsigned maximumThreads(const Arguments& arguments);

/// Decides how many threads may read each document: as many as the user wants. By default each has one, and the last
/// documents of a run, fewer than the jobs, share the cores of the jobs that have nothing left to do.
void shareThreads(const Arguments& arguments, Plan& plan);

} // namespace quillow::cli
