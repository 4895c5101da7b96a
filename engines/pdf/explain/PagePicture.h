// Draws a page as layout sees it.
#pragma once

#include "engines/pdf/content/Page.h"
#include "engines/pdf/explain/SvgWriter.h"
#include "engines/pdf/layout/PageLayout.h"

#include <cstddef>
#include <string>

namespace quillow::pdf {

/// An SVG file: the page in points as it is displayed, in layers, and beside it a panel with the reasons. `title` says
/// which page it is. If the picture is larger than `mostBytes`, elements are left out, and the panel says so.
[[nodiscard]] std::string pictureOf(const Page& page, const PageLayout& layout, const Evidence& evidence,
                                    std::string_view title, std::size_t mostBytes = SvgWriter::kMostBytes);

} // namespace quillow::pdf
