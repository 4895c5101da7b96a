// Vertical writing that is drawn with a font for horizontal writing, and horizontal digits inside vertical writing.
#pragma once

#include "engines/pdf/content/Page.h"

#include <vector>

namespace quillow::pdf {

/// For each run whether its letters are upright and belong to a column of vertical writing, though the run is
/// horizontal.
[[nodiscard]] std::vector<bool> stackedRuns(const Page& page);

/// Where such a run is in its column.
struct StackedPlace {
    float middle = 0; ///< of the column
    float top = 0;
    float bottom = 0;
};
[[nodiscard]] StackedPlace stackedPlace(const Page& page, const Run& run);

} // namespace quillow::pdf
