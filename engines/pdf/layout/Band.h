// Lines at one height: what may be a row of a table.
#pragma once

#include "engines/pdf/layout/Line.h"

#include <algorithm>
#include <cstdint>
#include <span>

namespace quillow::pdf {

/// Lines at one height, from left to right.
struct Band {
    std::span<const std::uint32_t> lines;
    float bottom = 0;
    float top = 0;
    float size = 0;

    [[nodiscard]] float height() const { return top - bottom; }
    [[nodiscard]] bool isMultiple() const { return lines.size() > 1; }
};

/// The free space between two bands, in ems of the larger one.
[[nodiscard]] inline float gapBetween(const Band& above, const Band& below) {
    const float size = std::max(above.size, below.size);
    return size > 0 ? (above.bottom - below.top) / size : 0;
}

} // namespace quillow::pdf
