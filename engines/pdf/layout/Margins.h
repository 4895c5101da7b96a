// The margins of the columns of a page, and how far rows are from them.
#pragma once

#include "engines/pdf/layout/Row.h"

#include <span>

namespace quillow::pdf {

enum class Side { left, right };

/// Sets Row::room and Row::indent. `rows` are in reading order; lines begin at that side.
void measureMargins(std::span<Row> rows, Side beginning);

/// Whether two rows that follow one another in reading order are in one column.
[[nodiscard]] bool areInOneColumn(const Row& above, const Row& below);

/// Where a row begins and ends, along the direction in which it is read.
[[nodiscard]] inline float startOf(const Row& row, Side beginning) {
    return beginning == Side::left ? row.left : -row.right;
}
[[nodiscard]] inline float finishOf(const Row& row, Side beginning) {
    return beginning == Side::left ? row.right : -row.left;
}

} // namespace quillow::pdf
