// Which gaps between letters are blanks.
#pragma once

#include <cstdint>
#include <span>

namespace quillow::pdf {

/// What is between neighbouring characters of a line.
struct Gaps {
    std::span<const float> widths; ///< in ems
    /// For each of them 1 if it is between letters of an alphabet, else 0: punctuation and digits are not evidence of
    /// letter spacing.
    std::span<const std::uint8_t> areBetweenLetters;
};

/// Returns the gap, in ems, above which a blank is meant. It adapts to the line's own letter spacing. `gaps` are
/// those that are not beside a drawn blank; `drawnBlank` is the width of the blanks that the document draws in the
/// line, or 0.
[[nodiscard]] float blankThreshold(const Gaps& gaps, float drawnBlank);

} // namespace quillow::pdf
