// How controls share a row that is too narrow for them, and how they are split into several rows. Widths only: the
// layouts do the placing.
#pragma once

#include <cstddef>
#include <vector>

namespace quillow {

/// A control of a row that keeps its place in one line. A part whose three widths are equal does not give way.
struct RowPart {
    int whole;       ///< the width that shows everything
    int comfortable; ///< a width that still shows enough
    int least;       ///< the smallest width that shows something useful
    int order = 0;   ///< parts of a lower number give way first
    bool mayVanish = false;
};

/// The parts' widths in a row of the width `room`, with a gap between neighbours. First the parts shrink to comfortable
/// widths, then those vanish that may, then the others shrink to their least widths. A part that has vanished has the
/// width 0 and no gap. The result may be wider than the room.
[[nodiscard]] std::vector<int> rowWidths(std::vector<RowPart> parts, int gap, int room);

/// Splits controls into as few rows as possible, in their order. The result has the index of the first control of
/// each row.
[[nodiscard]] std::vector<std::size_t> rowStarts(const std::vector<int>& widths, int gap, int room);

} // namespace quillow
