// Where the page shows that a paragraph begins: by spacing, by indent, by a short last line.
#pragma once

#include "engines/pdf/layout/Row.h"

#include <span>

namespace quillow::pdf {

/// Sets Row::beginsParagraph. `rows` are in reading order.
void markParagraphs(std::span<Row> rows);

} // namespace quillow::pdf
