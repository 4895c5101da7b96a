// Where the page shows that a paragraph begins: by spacing, by indent, by a short last line, by a heading's font, by
// the sign of a list.
#pragma once

#include "engines/pdf/layout/Evidence.h"
#include "engines/pdf/layout/Margins.h"
#include "engines/pdf/layout/Row.h"

#include <span>

namespace quillow::pdf {

/// Sets Row::beginsParagraph, Row::beginsLine, Row::room and Row::indent. `rows` are in reading order; lines begin at
/// that side. Why paragraphs begin is added to `evidence`.
void markParagraphs(std::span<Row> rows, Side beginning, Evidence* evidence = nullptr);

} // namespace quillow::pdf
