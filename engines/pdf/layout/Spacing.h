// Which gaps between letters are blanks.
#pragma once

#include <span>

namespace quillow::pdf {

/// What is between two neighbouring characters of a line.
struct Gap {
    float width = 0; ///< in ems
    bool isBetweenLetters =
        false; ///< letters of an alphabet: punctuation and digits are not evidence of letter spacing
};

/// Returns the gap, in ems, above which a blank is meant. It adapts to the line's own letter spacing. `gaps` are
/// those that are not beside a drawn blank; `drawnBlank` is the width of the blanks that the document draws in the
/// line, or 0.
[[nodiscard]] float blankThreshold(std::span<const Gap> gaps, float drawnBlank);

} // namespace quillow::pdf
