// The text of a page: its lines in reading order, with line ends and blank lines between paragraphs.
#pragma once

#include "engines/pdf/content/Page.h"

#include <string>

namespace quillow::pdf {

/// Appends the text of a page. It ends with a line end, or is empty.
void appendPageText(const Page& page, std::u32string& out);

} // namespace quillow::pdf
