// quillow-convert --merge-results: the results of a run's parts become one file, and are held against the list of the
// documents.
#pragma once

#include "cli/options/Arguments.h"

namespace quillow::cli {

/// Reads the files of results that are the inputs of the arguments, and writes one result for each document to the
/// merged file, in the order of the files. If there is a list of documents, each of them must have a result, and no
/// other one may have. Says on standard error what is missing or contradicts itself. Returns the exit code.
[[nodiscard]] int mergeResults(const Arguments& arguments);

} // namespace quillow::cli
