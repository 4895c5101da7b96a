// Tables that the document's structure tree names, where the page looks as the tree says.
#pragma once

#include "engines/pdf/layout/Table.h"

#include <vector>

namespace quillow::pdf {

/// The tables of Page::cells. One is left out if the page contradicts it: its rows do not follow one another downwards,
/// its cells are not beside one another, other text is between them, or it is too long or too small for a table.
/// Lines that are not taken are looked at; those that reach over cells are cut: their parts are added to `found`.
[[nodiscard]] std::vector<Table> taggedTablesOf(const Page& page, Orientation& orientation, Lines& found,
                                                const std::vector<bool>& isTaken);

} // namespace quillow::pdf
