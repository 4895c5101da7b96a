// A page as text that tests compare and people read.
#pragma once

#include "engines/pdf/content/Page.h"

#include <string>

namespace quillow::pdf {

enum class DumpDetail {
    runs,   ///< a line for each run and rule
    glyphs, ///< below each run a line for each of its glyphs
};

/// The first line is the page's size. A run: its origin, its direction unless it is to the right, its font and size,
/// its reach unless it is the font's own, its marks, its characters; a rule: its box. Numbers have at most two
/// decimals.
///
///     page 612x792
///     72,700 f0 12 "Hello"
///     72,680 up f1 9 #3 invisible,running "World"
///     line 72,690 540,690
[[nodiscard]] std::string dumpOf(const Page& page, DumpDetail detail = DumpDetail::runs);

} // namespace quillow::pdf
