// Columns of running text: what is in different ones is neither one row nor one table.
#pragma once

#include "engines/pdf/layout/Line.h"

#include <cstdint>
#include <span>
#include <vector>

namespace quillow::pdf {

/// Where columns are drawn line by line across the page, moves the lines of the left one before those of the right one.
void unweaveColumns(std::vector<Line>& lines);

/// For each line the number of its region. Lines of text columns that are side by side are in different regions, each
/// with what is above, below and inside its column. Lines of no column are in region 0.
[[nodiscard]] std::vector<std::uint32_t> columnsOf(std::span<const Line> lines);

} // namespace quillow::pdf
