// The reading order of the lines of a page: that of the content stream, unless the page itself shows that it is not.
#pragma once

#include "engines/pdf/layout/Line.h"

#include <vector>

namespace quillow::pdf {

/// Puts lines that are in content order into reading order.
void putInReadingOrder(std::vector<Line>& lines);

} // namespace quillow::pdf
