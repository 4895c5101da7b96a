#include "engines/pdf/layout/Row.h"

#include <algorithm>

namespace quillow::pdf {

Row rowOf(const Line& line, std::uint32_t index) {
    Row row;
    row.line = index;
    row.left = line.left;
    row.right = line.right;
    row.baseline = line.baseline;
    row.bottom = line.bottom;
    row.top = line.top;
    row.size = line.size;
    return row;
}

void extend(Row& row, const Line& line) {
    row.left = std::min(row.left, line.left);
    row.right = std::max(row.right, line.right);
    if (line.size <= row.size) return;
    row.size = line.size;
    row.baseline = line.baseline;
    row.bottom = line.bottom;
    row.top = line.top;
}

} // namespace quillow::pdf
