// The rows of a layout as the joining of lines needs them.
#pragma once

#include "engines/pdf/PageOutcome.h"
#include "engines/pdf/layout/PageLayout.h"

namespace quillow::pdf {

/// The text and the rows of a laid out page.
void describeRows(const PageLayout& layout, PageOutcome& outcome);

} // namespace quillow::pdf
