// Lines that are written as one line of text: a line, or several side by side.
#pragma once

#include "engines/pdf/layout/Line.h"

#include <cstdint>
#include <vector>

namespace quillow::pdf {

struct Row {
    std::vector<std::uint32_t> lines; ///< indices of lines, from left to right
    float left = 0;
    float right = 0;
    float baseline = 0;
    float bottom = 0;
    float top = 0;
    float size = 0;
    bool isTableRow = false;         ///< its lines are cells
    bool beginsParagraph = false; ///< the page shows a break before it

    [[nodiscard]] float height() const { return top - bottom; }
    [[nodiscard]] float width() const { return right - left; }
};

/// A row of one line.
[[nodiscard]] Row rowOf(const Line& line, std::uint32_t index);

/// Adds a line to a row that is not empty.
void addLine(Row& row, const Line& line, std::uint32_t index);

} // namespace quillow::pdf
