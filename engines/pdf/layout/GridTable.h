// Tables whose cells the page draws with ruling lines.
#pragma once

#include "engines/pdf/layout/Grid.h"
#include "engines/pdf/layout/LineWords.h"
#include "engines/pdf/layout/Table.h"

#include <optional>
#include <span>
#include <vector>

namespace quillow::pdf {

/// The table of the lines in a grid; nothing if the grid is a frame, a form or a drawing. `inside` are the lines whose
/// middle is in the grid. Lines that reach over a ruling are cut there: their parts are added to `found`. Why it is a
/// table or none is added to `evidence`.
[[nodiscard]] std::optional<Table> tableIn(const Grid& grid, std::span<const std::uint32_t> inside, const Page& page,
                                           Orientation& orientation, LineWords& words, Lines& found,
                                           Evidence* evidence = nullptr);

} // namespace quillow::pdf
