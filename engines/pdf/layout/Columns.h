// Columns of running text: what is in different ones is neither one row nor one table.
#pragma once

#include "engines/pdf/layout/Evidence.h"
#include "engines/pdf/layout/Line.h"

#include <cstdint>
#include <span>
#include <vector>

namespace quillow::pdf {

/// Where columns are drawn line by line across the page, moves the lines of the left one before those of the right one.
/// What looks like such columns is added to `evidence`.
void unweaveColumns(std::vector<Line>& lines, Evidence* evidence = nullptr);

/// For each line the number of its region. Lines of text columns that are side by side are in different regions, each
/// with what is above, below and inside its column. Lines of no column are in region 0. The gutters are added to
/// `evidence`.
[[nodiscard]] std::vector<std::uint32_t> columnsOf(std::span<const Line> lines, Evidence* evidence = nullptr);

} // namespace quillow::pdf
