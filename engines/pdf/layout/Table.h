// Tables: lines that stand in columns over several rows.
#pragma once

#include "engines/pdf/layout/Row.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quillow::pdf {

/// A ruling line in the frame of an orientation.
struct Ruling {
    float left = 0;
    float right = 0;
    float bottom = 0;
    float top = 0;
};

struct Table {
    std::vector<Row> rows;
    float left = 0;
    float right = 0;
    float bottom = 0;
    float top = 0;
};

/// The tables of a page. `texts` are those of the lines, in the same order.
[[nodiscard]] std::vector<Table> tablesOf(std::span<const Line> lines, std::span<const std::u32string_view> texts,
                                          std::span<const Ruling> rulings);

} // namespace quillow::pdf
