// Invisible text below visible text that says the same: born-digital pages that went through a recogniser have it.
#pragma once

#include "engines/pdf/content/Page.h"
#include "engines/pdf/layout/Evidence.h"

#include <vector>

namespace quillow::pdf {

/// For each run whether it is invisible and repeats visible text at its place. Empty if there is no such run. Invisible
/// runs beside visible ones are added to `evidence`, in the places of the page.
[[nodiscard]] std::vector<bool> repeatedHiddenRuns(const Page& page, Evidence* evidence = nullptr);

} // namespace quillow::pdf
