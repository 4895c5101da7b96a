// Joins the lines of paragraphs, over the ends of columns and pages too.
#pragma once

#include "engines/pdf/PageOutcome.h"

#include <span>
#include <string>

namespace quillow::pdf {

/// The text of the pages with a paragraph on each line. Running heads, feet and page numbers are left out. Footnotes
/// and captions that cut a paragraph follow it. With page marks, pages are separated by a form feed, and no paragraph
/// goes on behind it.
[[nodiscard]] std::string reflowed(std::span<const PageOutcome> pages, PageMarks marks);

} // namespace quillow::pdf
