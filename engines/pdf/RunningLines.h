// Running heads, feet and page numbers: lines at the edge of a page that its neighbours have at the same place, with
// the same words but for numbers.
#pragma once

#include "engines/pdf/PageOutcome.h"

#include <span>
#include <vector>

namespace quillow::pdf {

/// For each page, the rows that are running lines, in ascending order.
[[nodiscard]] std::vector<std::vector<std::uint32_t>> runningLines(std::span<const PageOutcome> pages);

} // namespace quillow::pdf
