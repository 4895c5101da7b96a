// Spans that a reader sees as one line of one column.
#pragma once

#include "engines/pdf/layout/Span.h"

#include <cstdint>
#include <span>
#include <vector>

namespace quillow::pdf {

/// A line of text without a wide gap. Numbers are those of the frame of its orientation.
struct Line {
    std::uint32_t firstSpan = 0; ///< index in Lines::spans
    std::uint32_t spanCount = 0;
    float left = 0;
    float right = 0;
    float baseline = 0; ///< of the largest letters
    float bottom = 0;
    float top = 0;
    float size = 0; ///< the largest font size

    [[nodiscard]] float height() const { return top - bottom; }
    [[nodiscard]] float width() const { return right - left; }
};

struct Lines {
    std::vector<Line> lines; ///< in content order: where each of them begins
    std::vector<std::uint32_t>
        spans; ///< those of each line in succession: indices in Orientation::spans, in content order

    [[nodiscard]] std::span<const std::uint32_t> spansOf(const Line& line) const {
        return std::span(spans).subspan(line.firstSpan, line.spanCount);
    }
};

/// How much of the lower one's height two vertical extents have in common, from 0 (or below, if they are apart) to 1.
template <class A, class B>
[[nodiscard]] float verticalOverlap(const A& a, const B& b) {
    const float common = (a.top < b.top ? a.top : b.top) - (a.bottom > b.bottom ? a.bottom : b.bottom);
    const float lower = a.height() < b.height() ? a.height() : b.height();
    return lower > 0 ? common / lower : 0;
}

/// The lines of an orientation. Spans join the line before them, or an earlier one that they lie in.
[[nodiscard]] Lines linesOf(const Orientation& orientation);

} // namespace quillow::pdf
