// Which gaps between letters are blanks.
#pragma once

#include <span>

namespace quillow::pdf {

/// The gaps between neighbouring letters of a line, in ems. Gaps beside blanks that the document draws are not among them.
/// Returns the gap above which a blank is meant. It adapts to the line's own letter spacing.
[[nodiscard]] float blankThreshold(std::span<const float> gaps, bool drawsBlanks);

} // namespace quillow::pdf
