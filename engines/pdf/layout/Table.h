// Tables: lines in columns over several rows.
#pragma once

#include "engines/pdf/layout/Evidence.h"
#include "engines/pdf/layout/Grid.h"
#include "engines/pdf/layout/Row.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quillow::pdf {

struct Table {
    std::vector<Row> rows;
    std::vector<std::uint32_t> lines; ///< the lines that it is made of, before they were cut
    float left = 0;
    float right = 0;
    float bottom = 0;
    float top = 0;
};

/// The tables of a page that has lines. Lines that reach over columns are cut: their parts are added to `found` and
/// their spans to the orientation. `texts` are those of the lines, in the same order; the parts have none yet. Which
/// areas are tables, and which look like tables but are text, is added to `evidence`.
[[nodiscard]] std::vector<Table> tablesOf(const Page& page, Orientation& orientation, Lines& found,
                                          std::span<const std::u32string_view> texts, const Rulings& rulings,
                                          Evidence* evidence = nullptr);

} // namespace quillow::pdf
