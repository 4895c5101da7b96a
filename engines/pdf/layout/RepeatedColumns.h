// Long tables that are folded: the same columns several times side by side.
#pragma once

#include "engines/pdf/layout/Row.h"

#include <span>
#include <string_view>
#include <vector>

namespace quillow::pdf {

/// If a table's first row says the same several times, its parts are side by side: they are read one after the other.
/// `texts` are those of the lines. Changes the rows.
void unfoldColumns(std::vector<Row>& rows, std::span<const std::u32string_view> texts);

} // namespace quillow::pdf
