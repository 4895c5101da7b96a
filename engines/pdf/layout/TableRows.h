// Which lines of a table are one row, although they are not at one height.
#pragma once

#include "engines/pdf/layout/Grid.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace quillow::pdf {

/// A line, or the part of a line that is in one column. A heading may reach over several columns.
struct Fragment {
    std::uint32_t line = 0;
    std::uint32_t band = 0; ///< counts heights from above: fragments at one height are a band
    std::uint32_t column = 0;
    std::uint32_t lastColumn = 0;
    float left = 0;
    float right = 0;
    float bottom = 0;
    float top = 0;
    float size = 0;
    bool isNumeric = false;

    [[nodiscard]] float height() const { return top - bottom; }
};

/// Whether each band is of the same row as the band above it, because its cells are centred: lines of other columns are
/// between the lines of a cell. `fragments` are sorted by bands.
[[nodiscard]] std::vector<bool> centredBands(std::span<const Fragment> fragments, std::size_t bands);

/// The row of each fragment of a table's head, counted from 0. What a column has below a heading over several columns
/// is in the next row; else the lines of a column are one cell. `fragments` are sorted by bands. `underlines` are the
/// horizontal rulings in the head. They show how far a heading reaches. Sets `lastColumn` to that.
[[nodiscard]] std::vector<std::uint32_t> rowsOfHead(std::span<Fragment> fragments, std::span<const Ruling> underlines,
                                                    std::span<const float> columnMiddles);

} // namespace quillow::pdf
