// The value of a form field that is longer than its field. Viewers clip or scroll it; a text has all of its words, and
// they stay where the field is.
#pragma once

#include "engines/pdf/content/Page.h"

#include <cstddef>

namespace quillow::pdf {

/// Compresses the runs from `firstRun` on, which are upright or turned by right angles, into the box, if a glyph of
/// theirs is wholly outside of it. Each direction is compressed by itself, and only if it is needed.
void fitRuns(Page& page, std::size_t firstRun, const Box& box);

} // namespace quillow::pdf
