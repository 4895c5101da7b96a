// Columns of a grid that no ruling separates.
#pragma once

#include "engines/pdf/layout/Grid.h"
#include "engines/pdf/layout/LineWords.h"

#include <span>

namespace quillow::pdf {

/// The grid with a ruling in each free stripe that goes through one of its columns. Not in the rows where a line is
/// across the stripe. `inside` are the lines whose middle is in the grid.
[[nodiscard]] Grid withFreeColumns(const Grid& grid, std::span<const std::uint32_t> inside, LineWords& words,
                                   const std::vector<Line>& lines);

} // namespace quillow::pdf
